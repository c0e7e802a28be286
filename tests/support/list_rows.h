// SPDX-License-Identifier: GPL-3.0-or-later
// Rows for a result list, made of the few cells that a test is about, and what a list shows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/cell_table.h"
#include "tracks/track_fields.h"
#include "views/result_list.h"

namespace tunemeadow {

using RowCells = std::initializer_list<std::pair<TrackField, std::string_view>>;

inline void AppendCells(CellTable& rows, RowCells row) {
  std::array<std::string_view, kSelectedFields> cells;
  for (const auto& [field, text] : row) cells[IndexOf(field)] = text;
  rows.AppendRow(cells);
}

inline CellTable ListRows(std::initializer_list<RowCells> rows) {
  CellTable table(kSelectedFields);
  for (const RowCells& row : rows) AppendCells(table, row);
  return table;
}

/// Rows with the uids 1 to `count`, titles that sort the other way round, and /music/<uid>.mp3.
inline CellTable NumberedRows(int count) {
  CellTable table(kSelectedFields);
  for (int uid = 1; uid <= count; ++uid) {
    const std::string number = std::to_string(uid);
    const std::string title = "t" + std::to_string(10'000'000 - uid);
    AppendCells(table, {{TrackField::uid, number},
                        {TrackField::Songname, title},
                        {TrackField::location, "/music/" + number + ".mp3"}});
  }
  return table;
}

/// The texts of a column, in the order of the rows.
template <typename Column>
std::vector<std::string> ColumnOf(const ResultList& list, Column column) {
  std::vector<std::string> cells;
  for (std::size_t row = 0; row < list.RowCount(); ++row) {
    cells.emplace_back(list.Cell(row, column));
  }
  return cells;
}

inline std::vector<std::int64_t> UidsOf(const ResultList& list) {
  std::vector<std::int64_t> uids;
  for (std::size_t row = 0; row < list.RowCount(); ++row) uids.push_back(list.Uid(row));
  return uids;
}

}  // namespace tunemeadow
