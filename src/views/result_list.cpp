// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/result_list.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

#include "core/numbers.h"
#include "core/paths.h"
#include "views/sort_keys.h"

namespace tunemeadow {

ResultList::ResultList() : rows_(kSelectedFields) {}

void ResultList::Fill(CellTable rows) {
  rows_ = std::move(rows);
  order_.resize(rows_.RowCount());
  std::iota(order_.begin(), order_.end(), 0U);
  selected_.assign(order_.size(), false);
  selected_count_ = 0;
  focused_.reset();
  ClearSortMark();
}

void ResultList::Clear() {
  order_ = {};
  Fill(CellTable(kSelectedFields));
}

std::string_view ResultList::TableCell(std::uint32_t table_row, std::size_t column) const noexcept {
  const bool is_file = column == kFileColumn;
  const std::size_t source = is_file ? IndexOf(TrackField::location) : column;
  if (source >= rows_.ColumnCount()) return {};
  const std::string_view cell = rows_.Cell(table_row, source);
  return is_file ? FileNamePart(cell) : cell;
}

std::string_view ResultList::Cell(std::size_t row, std::size_t column) const noexcept {
  return row < order_.size() ? TableCell(order_[row], column) : std::string_view();
}

std::string_view ResultList::Cell(std::size_t row, TrackField field) const noexcept {
  const std::size_t column = IndexOf(field);  // of the table: 29 is `position` there
  if (row >= order_.size() || column >= rows_.ColumnCount()) return {};
  return rows_.Cell(order_[row], column);
}

void ResultList::SetCell(std::size_t row, TrackField field, std::string_view text) {
  if (row >= order_.size() || IndexOf(field) >= rows_.ColumnCount()) return;
  rows_.SetCell(order_[row], IndexOf(field), text);
}

void ResultList::SetCells(std::size_t row, std::span<const FieldText> texts) {
  if (row >= order_.size()) return;
  std::vector<CellText> cells;
  cells.reserve(texts.size());
  for (const FieldText& each : texts) {
    if (IndexOf(each.field) >= rows_.ColumnCount()) continue;
    cells.push_back({IndexOf(each.field), each.text});
  }
  rows_.SetCells(order_[row], cells);
}

std::int64_t ResultList::Uid(std::size_t row) const noexcept {
  return ParseWhole(Cell(row, TrackField::uid)).value_or(0);
}

std::optional<std::size_t> ResultList::RowOfUid(std::int64_t uid) const noexcept {
  for (std::size_t row = 0; row < order_.size(); ++row) {
    if (Uid(row) == uid) return row;
  }
  return std::nullopt;
}

void ResultList::RemoveRows(const std::vector<std::size_t>& rows) {
  std::vector<bool> remove(order_.size(), false);  // by table row
  for (const std::size_t row : rows) {
    if (row < order_.size()) remove[order_[row]] = true;
  }
  const auto focused_row = FocusedRow();
  const bool focus_goes = focused_row && remove[order_[*focused_row]];
  const auto rows_above_focus = std::count_if(
      order_.begin(), order_.begin() + static_cast<std::ptrdiff_t>(focused_row.value_or(0)),
      [&](std::uint32_t table_row) { return !remove[table_row]; });

  std::vector<std::uint32_t> new_place(order_.size());
  std::uint32_t kept = 0;
  for (std::size_t i = 0; i < order_.size(); ++i) {
    new_place[i] = kept;
    if (remove[i]) continue;
    selected_[kept++] = selected_[i];
  }
  selected_.resize(kept);
  selected_count_ = static_cast<std::size_t>(std::count(selected_.begin(), selected_.end(), true));
  std::erase_if(order_, [&](std::uint32_t table_row) { return remove[table_row]; });
  for (std::uint32_t& table_row : order_) table_row = new_place[table_row];
  rows_.RemoveRows(remove);

  if (order_.empty()) {
    focused_.reset();
  } else if (focus_goes) {  // to the row that has come into its place
    SetFocusedRow(std::min(static_cast<std::size_t>(rows_above_focus), order_.size() - 1));
  } else if (focused_) {
    focused_ = new_place[*focused_];
  }
}

void ResultList::Sort(std::size_t column, SortKind kind) {
  ascending_ = sort_column_ != column || !ascending_;
  sort_column_ = column;
  SortOrder(
      order_, [&](std::uint32_t table_row) { return TableCell(table_row, column); }, kind,
      ascending_);
}

void ResultList::ArrangeByLocation() {
  SortOrder(
      order_,
      [&](std::uint32_t table_row) { return rows_.Cell(table_row, IndexOf(TrackField::location)); },
      SortKind::kText, true);
}

void ResultList::MoveRow(std::size_t from, std::size_t to) noexcept {
  if (from >= order_.size() || to >= order_.size() || from == to) return;
  const auto at = [this](std::size_t row) {
    return order_.begin() + static_cast<std::ptrdiff_t>(row);
  };
  if (from < to) {
    std::rotate(at(from), at(from + 1), at(to + 1));
  } else {
    std::rotate(at(to), at(from), at(from + 1));
  }
  ClearSortMark();
}

bool ResultList::IsSelected(std::size_t row) const noexcept {
  return row < order_.size() && selected_[order_[row]];
}

void ResultList::SetSelected(std::size_t first, std::size_t last, bool selected) {
  for (std::size_t row = first; row <= last && row < order_.size(); ++row) {
    const std::uint32_t table_row = order_[row];
    if (selected_[table_row] == selected) continue;
    selected_[table_row] = selected;
    if (selected) {
      ++selected_count_;
    } else {
      --selected_count_;
    }
  }
}

void ResultList::SelectOnly(std::size_t row) {
  ClearSelection();
  SetSelected(row, row, true);
}

void ResultList::ClearSelection() noexcept {
  std::fill(selected_.begin(), selected_.end(), false);
  selected_count_ = 0;
}

std::vector<std::size_t> ResultList::SelectedRows() const {
  std::vector<std::size_t> rows;
  rows.reserve(selected_count_);
  for (std::size_t row = 0; row < order_.size() && rows.size() < selected_count_; ++row) {
    if (selected_[order_[row]]) rows.push_back(row);
  }
  return rows;
}

std::optional<std::size_t> ResultList::FocusedRow() const noexcept {
  if (!focused_) return std::nullopt;
  const auto found = std::find(order_.begin(), order_.end(), *focused_);
  return static_cast<std::size_t>(found - order_.begin());
}

void ResultList::SetFocusedRow(std::optional<std::size_t> row) {
  focused_.reset();
  if (row && *row < order_.size()) focused_ = order_[*row];
}

void ResultList::SetFileWritten(std::int64_t uid, bool written) {
  if (written) {
    unwritten_.erase(uid);
  } else {
    unwritten_.insert(uid);
  }
}

TrackTexts ResultList::Record(std::size_t row) const {
  TrackTexts record;
  for (std::size_t i = 0; i < kPlaylistFields; ++i) {
    record.texts[i] = Cell(row, static_cast<TrackField>(i));
  }
  return record;
}

std::size_t ResultList::MemoryUsed() const noexcept {
  return rows_.MemoryUsed() + order_.capacity() * sizeof(std::uint32_t) + selected_.capacity() / 8;
}

void mLVSort(ResultList& list, int column, int kind) {
  if (column < 1 || column > static_cast<int>(kListColumns) || kind < 0 || kind > 5) return;
  list.Sort(static_cast<std::size_t>(column - 1), static_cast<SortKind>(kind));
}

}  // namespace tunemeadow
