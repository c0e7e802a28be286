// SPDX-License-Identifier: GPL-3.0-or-later
// Lets the window paint in the middle of long statements, for the life of the object.
#pragma once

#include "views/workbench.h"

namespace tunemeadow {

class PaintWhileWorking {
 public:
  explicit PaintWhileWorking(Workbench& bench) : connection_(bench.session.connection) {
    connection_.SetWorking([&bench] { bench.interaction.KeepPainting(); });
  }
  ~PaintWhileWorking() { connection_.SetWorking({}); }
  PaintWhileWorking(const PaintWhileWorking&) = delete;
  PaintWhileWorking& operator=(const PaintWhileWorking&) = delete;

 private:
  Connection& connection_;
};

}  // namespace tunemeadow
