// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/cell_table.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>

namespace tunemeadow {
namespace {

constexpr std::size_t kChunkBytes = std::size_t{1} << 18;

/// End of cell `column` in the text of the block. Blocks are not aligned: they are packed.
std::uint32_t EndOf(const char* block, std::size_t column) noexcept {
  std::uint32_t end = 0;
  std::memcpy(&end, block + column * sizeof end, sizeof end);
  return end;
}

}  // namespace

CellTable::CellTable(CellTable&& other) noexcept : columns_(other.columns_) {
  *this = std::move(other);
}

CellTable& CellTable::operator=(CellTable&& other) noexcept {
  if (this == &other) return *this;
  columns_ = other.columns_;
  rows_ = std::exchange(other.rows_, {});
  chunks_ = std::exchange(other.chunks_, {});
  chunk_free_ = std::exchange(other.chunk_free_, 0);
  chunk_bytes_ = std::exchange(other.chunk_bytes_, 0);
  next_ = std::exchange(other.next_, nullptr);
  return *this;
}

std::string_view CellTable::Cell(std::size_t row, std::size_t column) const noexcept {
  const char* block = rows_[row];
  const std::uint32_t begin = column == 0 ? 0 : EndOf(block, column - 1);
  return {block + columns_ * sizeof(std::uint32_t) + begin, EndOf(block, column) - begin};
}

char* CellTable::NewBlock(std::size_t bytes) {
  if (bytes > chunk_free_) {
    const std::size_t size = bytes > kChunkBytes / 4 ? bytes : kChunkBytes;
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(size));
    chunk_bytes_ += size;
    if (size != kChunkBytes) return chunks_.back().get();  // the open chunk stays open
    next_ = chunks_.back().get();
    chunk_free_ = size;
  }
  chunk_free_ -= bytes;
  return std::exchange(next_, next_ + bytes);
}

char* CellTable::BuildRow(std::span<const std::string_view> cells) {
  std::size_t text_bytes = 0;
  for (const std::string_view cell : cells) text_bytes += cell.size();
  if (text_bytes > std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("a row of the list is over 4 GiB");
  }
  const std::size_t head = columns_ * sizeof(std::uint32_t);
  char* const block = NewBlock(head + text_bytes);
  std::uint32_t end = 0;
  for (std::size_t column = 0; column < columns_; ++column) {
    const std::string_view cell = column < cells.size() ? cells[column] : std::string_view();
    if (!cell.empty()) std::memcpy(block + head + end, cell.data(), cell.size());
    end += static_cast<std::uint32_t>(cell.size());
    std::memcpy(block + column * sizeof end, &end, sizeof end);
  }
  return block;
}

void CellTable::AppendRow(std::span<const std::string_view> cells) {
  rows_.push_back(BuildRow(cells.first(std::min(cells.size(), columns_))));
}

void CellTable::SetCell(std::size_t row, std::size_t column, std::string_view text) {
  const CellText one{column, text};
  SetCells(row, {&one, 1});
}

void CellTable::SetCells(std::size_t row, std::span<const CellText> texts) {
  std::vector<std::string_view> cells(columns_);
  for (std::size_t i = 0; i < columns_; ++i) cells[i] = Cell(row, i);
  bool changed = false;
  for (const CellText& each : texts) {
    changed = changed || cells[each.column] != each.text;
    cells[each.column] = each.text;
  }
  if (changed) rows_[row] = BuildRow(cells);
}

void CellTable::RemoveRows(const std::vector<bool>& remove) {
  std::size_t kept = 0;
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    if (row >= remove.size() || !remove[row]) rows_[kept++] = rows_[row];
  }
  rows_.resize(kept);
}

void CellTable::Clear() noexcept { *this = CellTable(columns_); }

std::size_t CellTable::MemoryUsed() const noexcept {
  return chunk_bytes_ + rows_.capacity() * sizeof(char*);
}

}  // namespace tunemeadow
