// SPDX-License-Identifier: GPL-3.0-or-later
// The time in which a command of playlists or archives writes many rows, without a window of
// progress: the pointer is busy, no other command starts, the rows are synced together at the end.
// The object undoes it on every way out.
#pragma once

#include <string>

#include "views/workbench.h"

namespace tunemeadow {

class CatalogueWriting {
 public:
  explicit CatalogueWriting(Workbench& bench) : bench_(bench), outer_(!bench.session.busy) {
    bench_.session.busy = true;
    bench_.interaction.SetBusyPointer(true);
    if (outer_) bench_.session.connection.SetDurability(Durability::kBatch);
  }
  ~CatalogueWriting() {
    if (outer_) bench_.session.connection.SetDurability(Durability::kFull);
    bench_.interaction.SetBusyPointer(false);
    if (outer_) bench_.session.busy = false;
  }
  CatalogueWriting(const CatalogueWriting&) = delete;
  CatalogueWriting& operator=(const CatalogueWriting&) = delete;

  /// Runs one statement. Throws DatabaseError. The window paints now and then.
  void Run(const std::string& statement) {
    if (++statements_ % kStatementsPerPainting == 0) bench_.interaction.KeepPainting();
    bench_.session.connection.Execute(statement);
  }

 private:
  static constexpr int kStatementsPerPainting = 64;

  Workbench& bench_;
  bool outer_;  ///< no batch was running when this began
  int statements_ = 0;
};

}  // namespace tunemeadow
