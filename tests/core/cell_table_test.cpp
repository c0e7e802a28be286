// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/cell_table.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tunemeadow {
namespace {

using Model = std::vector<std::vector<std::string>>;

void ExpectCells(const CellTable& table, const Model& model) {
  ASSERT_EQ(table.RowCount(), model.size());
  for (std::size_t row = 0; row < model.size(); ++row) {
    for (std::size_t column = 0; column < table.ColumnCount(); ++column) {
      ASSERT_EQ(table.Cell(row, column), model[row][column]) << row << ", " << column;
    }
  }
}

TEST(CellTable, HoldsWhatAListOfTextsHolds) {
  constexpr std::size_t kColumns = 5;
  std::mt19937 random(7);
  const auto text = [&] {
    const std::size_t size =
        random() % 50 == 0 ? 100000 : random() % 40;  // over a chunk now and then
    return std::string(size, static_cast<char>(random() % 256));
  };
  CellTable table(kColumns);
  Model model;
  for (int step = 0; step < 4000; ++step) {
    if (model.empty() || random() % 3 != 0) {
      std::vector<std::string> row(kColumns);
      for (std::string& cell : row) cell = text();
      table.AppendRow(std::vector<std::string_view>(row.begin(), row.end()));
      model.push_back(std::move(row));
    } else {
      const std::size_t row = random() % model.size();
      const std::size_t column = random() % kColumns;
      model[row][column] = text();
      if (random() % 2 == 0) {
        table.SetCell(row, column, model[row][column]);
      } else {
        const std::size_t other = (column + 1) % kColumns;
        model[row][other] = text();
        table.SetCells(row, {{{column, model[row][column]}, {other, model[row][other]}}});
      }
    }
    if (step % 1000 == 999) {
      std::vector<bool> remove(model.size());
      Model kept;
      for (std::size_t row = 0; row < model.size(); ++row) {
        remove[row] = random() % 4 == 0;
        if (!remove[row]) kept.push_back(std::move(model[row]));
      }
      table.RemoveRows(remove);
      model = std::move(kept);
    }
  }
  ExpectCells(table, model);
  CellTable moved = std::move(table);
  ExpectCells(moved, model);
  moved.Clear();
  EXPECT_EQ(moved.ColumnCount(), kColumns);
  ExpectCells(moved, {});
}

TEST(CellTable, MissingCellsAreEmptyAndACellMayBeSetFromItsOwnRow) {
  CellTable table(3);
  table.AppendRow(std::vector<std::string_view>{"a"});
  table.SetCell(0, 2, table.Cell(0, 0));
  ExpectCells(table, {{"a", "", "a"}});
}

TEST(CellTable, TakesLittleMoreMemoryThanItsTexts) {
  CellTable table(29);
  const std::vector<std::string_view> row(29, "0123456789");
  for (int i = 0; i < 10000; ++i) table.AppendRow(row);
  EXPECT_LT(table.MemoryUsed(), 10000U * 29U * (10U + 4U) * 5U / 4U);
}

}  // namespace
}  // namespace tunemeadow
