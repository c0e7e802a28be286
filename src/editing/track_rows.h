// SPDX-License-Identifier: GPL-3.0-or-later
// Where a track stands in the lists: several times in a playlist, and in the list of a search that
// crosses the archive.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "views/workbench.h"

namespace tunemeadow {

/// An index of the rows of both lists, good as long as no list is filled or sorted.
class TrackRows {
 public:
  explicit TrackRows(Workbench& bench);

  /// Sets the cells wherever a list shows the track, and tells the watcher of the rows in view.
  void SetCells(Workbench& bench, std::int64_t uid, std::span<const FieldText> cells) const;

 private:
  using RowOfUid = std::pair<std::int64_t, std::size_t>;  ///< uid, row
  [[nodiscard]] static std::vector<RowOfUid> RowsOf(const ResultList& list);

  std::vector<RowOfUid> rows1_, rows3_;  ///< ascending
};

}  // namespace tunemeadow
