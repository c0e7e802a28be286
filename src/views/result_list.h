// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of the current search: cells, order, selection. The working copy that every command on a
// selection reads; the window's list is a view of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "core/cell_table.h"
#include "tracks/track_fields.h"
#include "views/list_columns.h"

namespace tunemeadow {

/// Rows and columns count from 0; a row number is a place in the shown order.
class ResultList {
 public:
  ResultList();

  /// Takes the rows of a search (29 columns, or 30 with `position`). Selection, focus and sort mark
  /// go.
  void Fill(CellTable rows);
  void Clear();

  [[nodiscard]] std::size_t RowCount() const noexcept { return order_.size(); }

  /// Text of a cell: UTF-8, but for `location` and the file name, which are bytes. Lives until the
  /// row is changed.
  [[nodiscard]] std::string_view Cell(std::size_t row, std::size_t column) const noexcept;
  [[nodiscard]] std::string_view Cell(std::size_t row, TrackField field) const noexcept;
  void SetCell(std::size_t row, TrackField field, std::string_view text);
  void SetCells(std::size_t row, std::span<const FieldText> texts);

  /// Key of the row; 0 if it is no number.
  [[nodiscard]] std::int64_t Uid(std::size_t row) const noexcept;
  [[nodiscard]] std::optional<std::size_t> RowOfUid(std::int64_t uid) const noexcept;

  /// Takes rows out of the list, whatever their place in the order. The focus of a row that goes
  /// passes to the one that comes into its place.
  void RemoveRows(const std::vector<std::size_t>& rows);

  /// Sorts by a column: ascending, or the other way round where it is the sorted one already.
  /// Equal rows keep their order. Empty numbers stand first; a cell that its kind cannot read
  /// sorts as the text it is. The selection stays with its rows.
  void Sort(std::size_t column, SortKind kind);

  /// The order that sorting by the location gives, without its mark: that of a new result.
  void ArrangeByLocation();
  [[nodiscard]] std::optional<std::size_t> SortColumn() const noexcept { return sort_column_; }
  [[nodiscard]] bool SortAscending() const noexcept { return ascending_; }
  void ClearSortMark() noexcept { sort_column_.reset(); }

  /// Takes a row to another place; those between move up or down by one. Its selection and focus go
  /// with it, the sort mark goes. Nothing happens outside the list.
  void MoveRow(std::size_t from, std::size_t to) noexcept;

  // Selection, kept by row of the table, so that a sort leaves it where it belongs.
  [[nodiscard]] bool IsSelected(std::size_t row) const noexcept;
  void SetSelected(std::size_t first, std::size_t last, bool selected);  ///< `last` included
  void SelectOnly(std::size_t row);
  void ClearSelection() noexcept;
  [[nodiscard]] std::size_t SelectedCount() const noexcept { return selected_count_; }
  [[nodiscard]] std::vector<std::size_t> SelectedRows() const;  ///< ascending

  /// The row that has the focus; nullopt in an empty list.
  [[nodiscard]] std::optional<std::size_t> FocusedRow() const noexcept;
  void SetFocusedRow(std::optional<std::size_t> row);

  /// Whether the file of a track holds what its row says. False stays by the key, whatever rows
  /// come, until it is told otherwise: such a row is not to look like a saved one.
  void SetFileWritten(std::int64_t uid, bool written);
  [[nodiscard]] bool IsFileWritten(std::size_t row) const noexcept {
    return unwritten_.empty() || !unwritten_.contains(Uid(row));
  }

  /// The texts of one record; those that the list does not hold are empty.
  [[nodiscard]] TrackTexts Record(std::size_t row) const;

  /// Bytes held.
  [[nodiscard]] std::size_t MemoryUsed() const noexcept;

 private:
  [[nodiscard]] std::string_view TableCell(std::uint32_t table_row,
                                           std::size_t column) const noexcept;

  CellTable rows_;
  std::vector<std::uint32_t> order_;  ///< shown row -> table row
  std::vector<bool> selected_;        ///< by table row
  std::size_t selected_count_ = 0;
  std::unordered_set<std::int64_t> unwritten_;  ///< keys
  std::optional<std::uint32_t> focused_;        ///< table row
  std::optional<std::size_t> sort_column_;
  bool ascending_ = true;
};

/// Sort by the column `column` (from 1) and the SortKind `kind`; nothing outside 1 to 30 and 0
/// to 5.
void mLVSort(ResultList& list, int column, int kind);

}  // namespace tunemeadow
