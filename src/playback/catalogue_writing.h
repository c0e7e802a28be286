// SPDX-License-Identifier: GPL-3.0-or-later
// The time in which a command of playlists or archives writes many rows, without a window of
// progress: the pointer is busy, no other command starts, the rows are synced together at the end.
// The object undoes it on every way out.
#pragma once

#include <string>

#include "run/busy.h"
#include "views/workbench.h"

namespace tunemeadow {

class CatalogueWriting {
 public:
  explicit CatalogueWriting(Workbench& bench) : bench_(bench) {}

  /// Runs one statement. Throws DatabaseError. The window paints now and then.
  void Run(const std::string& statement) {
    if (++statements_ % kStatementsPerPainting == 0) bench_.interaction.KeepPainting();
    bench_.session.connection.Execute(statement);
  }

 private:
  static constexpr int kStatementsPerPainting = 64;

  Workbench& bench_;
  Busy busy_{bench_.session, bench_.interaction, {.batch = true}};
  int statements_ = 0;
};

}  // namespace tunemeadow
