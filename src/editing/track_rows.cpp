// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/track_rows.h"

#include <algorithm>

namespace tunemeadow {

TrackRows::TrackRows(Workbench& bench)
    : rows1_(RowsOf(bench.ListView1)), rows3_(RowsOf(bench.ListView3)) {}

std::vector<TrackRows::RowOfUid> TrackRows::RowsOf(const ResultList& list) {
  std::vector<RowOfUid> rows;
  rows.reserve(list.RowCount());
  for (std::size_t row = 0; row < list.RowCount(); ++row) rows.emplace_back(list.Uid(row), row);
  std::sort(rows.begin(), rows.end());
  return rows;
}

void TrackRows::SetCells(Workbench& bench, std::int64_t uid,
                         std::span<const FieldText> cells) const {
  for (const auto& [list, rows] :
       {std::pair{&bench.ListView1, &rows1_}, std::pair{&bench.ListView3, &rows3_}}) {
    auto at = std::lower_bound(rows->begin(), rows->end(), RowOfUid{uid, 0});
    for (; at != rows->end() && at->first == uid; ++at) {
      const std::size_t row = at->second;
      if (row >= list->RowCount() || list->Uid(row) != uid) continue;
      list->SetCells(row, cells);
      if (list == &bench.ListInView()) bench.Watcher().RowChanged(row);
    }
  }
}

}  // namespace tunemeadow
