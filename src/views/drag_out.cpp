// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/drag_out.h"

#include <string>
#include <vector>

#include "core/dates.h"
#include "views/workbench.h"

namespace tunemeadow {

void ListView1_OLECompleteDrag(Workbench& bench) {
  ResultList& list = bench.ListInView();
  const std::vector<std::size_t> rows = list.SelectedRows();
  if (rows.empty()) return;
  std::string keys;
  for (const std::size_t row : rows) {
    keys.append(keys.empty() ? "" : ",").append(std::to_string(list.Uid(row)));
  }
  const std::string now = Now();
  bench.session.connection.Execute("Update mp3sTabelle set lasttimeplayed='" + now +
                                   "' where UID in (" + keys + ")");
  for (const std::size_t row : rows) {
    list.SetCell(row, TrackField::lasttimeplayed, now);
    bench.Watcher().RowChanged(row);
  }
}

}  // namespace tunemeadow
