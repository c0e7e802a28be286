// SPDX-License-Identifier: GPL-3.0-or-later
// The hourglass for the time of a scope.
#pragma once

#include "run/interaction.h"

namespace tunemeadow {

class BusyPointer {
 public:
  explicit BusyPointer(Interaction& interaction) : interaction_(interaction) {
    interaction_.SetBusyPointer(true);
  }
  ~BusyPointer() { interaction_.SetBusyPointer(false); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;

 private:
  Interaction& interaction_;
};

}  // namespace tunemeadow
