// SPDX-License-Identifier: GPL-3.0-or-later
// A table of texts, compact in memory: each row is one block of bytes (the ends of its cells, then
// their texts), blocks lie in large chunks. Cells can be changed; the block of a changed row moves,
// and the old one is given back only with the table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace tunemeadow {

/// A text and its column.
struct CellText {
  std::size_t column;
  std::string_view text;
};

/// Rows and columns count from 0. Movable, not copyable: a table may hold a million rows.
class CellTable {
 public:
  explicit CellTable(std::size_t columns = 0) noexcept : columns_(columns) {}
  CellTable(CellTable&& other) noexcept;
  CellTable& operator=(CellTable&& other) noexcept;
  CellTable(const CellTable&) = delete;
  CellTable& operator=(const CellTable&) = delete;
  ~CellTable() = default;

  [[nodiscard]] std::size_t RowCount() const noexcept { return rows_.size(); }
  [[nodiscard]] std::size_t ColumnCount() const noexcept { return columns_; }
  [[nodiscard]] bool Empty() const noexcept { return rows_.empty(); }

  /// Bytes of the cell; the view lives until the cell's row is changed or the table goes.
  [[nodiscard]] std::string_view Cell(std::size_t row, std::size_t column) const noexcept;

  /// Adds a row. `cells` holds one text per column; missing ones are empty. A cell keeps at most
  /// 4 GiB - 1 bytes less the rest of its row; std::length_error above that, table unchanged.
  void AppendRow(std::span<const std::string_view> cells);

  /// Replaces one text, or several of one row, which cost no more together than one does.
  void SetCell(std::size_t row, std::size_t column, std::string_view text);
  void SetCells(std::size_t row, std::span<const CellText> texts);

  /// Removes the rows whose flag is set, keeping the order of the others. One flag per row.
  void RemoveRows(const std::vector<bool>& remove);

  /// Drops all rows and the memory behind them.
  void Clear() noexcept;

  /// Memory held, in bytes.
  [[nodiscard]] std::size_t MemoryUsed() const noexcept;

 private:
  char* NewBlock(std::size_t bytes);
  char* BuildRow(std::span<const std::string_view> cells);

  std::size_t columns_;
  std::vector<char*> rows_;
  std::vector<std::unique_ptr<char[]>> chunks_;
  std::size_t chunk_free_ = 0;  ///< bytes left in the last chunk
  std::size_t chunk_bytes_ = 0;
  char* next_ = nullptr;
};

}  // namespace tunemeadow
