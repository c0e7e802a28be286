// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/result_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "core/collation.h"
#include "core/text.h"
#include "support/list_rows.h"
#include "views/sort_keys.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kSorted = IndexOf(TrackField::Comment);

/// A list whose `column` holds the cells, keys from 1 on.
ResultList ListOf(const std::vector<std::string>& cells, std::size_t column = kSorted) {
  CellTable rows(kSelectedFields);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    std::vector<std::string> row(kSelectedFields);
    row[0] = std::to_string(i + 1);
    row[column] = cells[i];
    rows.AppendRow(std::vector<std::string_view>(row.begin(), row.end()));
  }
  ResultList list;
  list.Fill(std::move(rows));
  return list;
}

TEST(Sort, EachKindKnowsItsOrder) {
  using Cells = std::vector<std::string>;
  const std::vector<std::pair<SortKind, Cells>> sorted = {
      {SortKind::kNumber,
       {"", "-1", "-5", "0", "2", "2.5", "10", "12345678901", "9999999999", "x"}},
      {SortKind::kText,
       {"", "10", "2", "abba", "Änne", "änne b", "Ärger", "ART", "Édith", "Zappa"}},
      {SortKind::kTime, {"", "0:59", "61", "1:05", "9:59", "10:00", "90:00", "1:02:03", "x:1"}},
      {SortKind::kLeadingNumber,
       {"", "64 kbps / 32 khz", "128 kbps", "187 kbps (VBR)", "320", "damaged header", "x 1"}},
      {SortKind::kDate,
       {"", "1.2.1999", "2024-13-01", "2024-01-02 03:04:05", "02.01.2024 03:04:06", "2024-02-29",
        "31.02.2020", "never"}},
      {SortKind::kSize, {"", "0.99 MB", "3,5 MB", "3.51 MB", "10.00 MB", "n/a MB"}},
  };
  for (const auto& [kind, cells] : sorted) {
    SCOPED_TRACE(static_cast<int>(kind));
    Cells shuffled = cells;
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(7));
    ResultList list = ListOf(shuffled);
    list.Sort(kSorted, kind);
    EXPECT_EQ(ColumnOf(list, kSorted), cells);
    list.Sort(kSorted, kind);
    EXPECT_EQ(ColumnOf(list, kSorted), Cells(cells.rbegin(), cells.rend()));
  }
}

/// The told form of a key, made the slow way.
std::string PlainKey(const std::string& cell, SortKind kind) {
  std::string text = kind == SortKind::kLeadingNumber ? cell.substr(0, cell.find(' ')) : cell;
  if (kind == SortKind::kSize && text.ends_with("MB")) text.resize(text.size() - 2);
  const std::size_t digits = text.find_first_of("0123456789");
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  const std::string rest = end;
  if (digits == std::string::npos || rest.find_first_not_of(' ') != std::string::npos) return text;
  std::array<char, 64> key{};
  std::snprintf(key.data(), key.size(), value < 0 ? "%017.5f" : "%016.5f", value);
  return key.data();
}

TEST(Sort, MixedCellsComeInTheOrderOfTheToldKeys) {
  std::mt19937 random(11);
  const auto odd = Split(
      "| |-|0|-0.5|00012|12abc|0000000012.00000|0000000012.00000 b|12|12.5|a|b "
      "c|zz|.5|/|:|1e3|1e11|"
      "12 kbps|7 MB|7MB|-7",
      '|');
  for (const SortKind kind : {SortKind::kNumber, SortKind::kLeadingNumber, SortKind::kSize}) {
    std::vector<std::string> cells;
    for (int i = 0; i < 600; ++i) {
      cells.push_back(random() % 2 == 0 ? std::string(odd[random() % odd.size()])
                                        : std::to_string(random() % 100000));
    }
    ResultList list = ListOf(cells);
    std::vector<std::int64_t> expected(cells.size());
    std::iota(expected.begin(), expected.end(), 1);
    std::stable_sort(expected.begin(), expected.end(), [&](std::int64_t a, std::int64_t b) {
      return PlainKey(cells[static_cast<std::size_t>(a - 1)], kind) <
             PlainKey(cells[static_cast<std::size_t>(b - 1)], kind);
    });
    list.Sort(kSorted, kind);
    EXPECT_EQ(UidsOf(list), expected);
  }
}

TEST(Sort, TellsTheKeyOfACell) {
  EXPECT_EQ(SortKey("12.5", SortKind::kNumber), "0000000012.50000");
  EXPECT_EQ(SortKey("0.000005", SortKind::kNumber), "0000000000.00001");
  EXPECT_EQ(SortKey("-5", SortKind::kNumber), "-0000000005.00000");
  EXPECT_EQ(SortKey("10:05", SortKind::kTime), "0000000605.00000");
  EXPECT_EQ(SortKey("128 kbps / 44.1 khz", SortKind::kLeadingNumber), "0000000128.00000");
  EXPECT_EQ(SortKey("damaged header", SortKind::kLeadingNumber), "damaged");
  EXPECT_EQ(SortKey("31.12.2023 23:59", SortKind::kDate), "2023/12/31 23:59:00");
  EXPECT_EQ(SortKey("3.50 MB", SortKind::kSize), "0000000003.50000");
  EXPECT_EQ(SortKey("ÄPFEL", SortKind::kText), CollationKey("äpfel"));
}

TEST(Sort, EqualRowsKeepTheirOrderInBothDirections) {
  ResultList list = ListOf({"b", "A", "B", "a"});
  list.Sort(kSorted, SortKind::kText);
  EXPECT_EQ(UidsOf(list), (std::vector<std::int64_t>{2, 4, 1, 3}));
  list.Sort(kSorted, SortKind::kText);
  EXPECT_EQ(UidsOf(list), (std::vector<std::int64_t>{1, 3, 2, 4}));
  EXPECT_FALSE(list.SortAscending());
  mLVSort(list, 1, 0);
  EXPECT_TRUE(list.SortAscending()) << "another column begins anew";
  EXPECT_EQ(list.SortColumn(), 0U);
  EXPECT_EQ(UidsOf(list), (std::vector<std::int64_t>{1, 2, 3, 4}));
  list.Fill(CellTable(kSelectedFields));
  EXPECT_EQ(list.SortColumn(), std::nullopt);
}

TEST(Sort, LeavesSelectionAndFocusWithTheirRows) {
  ResultList list = ListOf({"c", "a", "b"});
  list.SetSelected(0, 1, true);
  list.SetFocusedRow(0);
  list.Sort(kSorted, SortKind::kText);
  EXPECT_EQ(list.SelectedRows(), (std::vector<std::size_t>{0, 2}));
  EXPECT_EQ(list.FocusedRow(), 2U);
}

TEST(ResultList, ShowsTheFileNameOfALocationAndHidesThePosition) {
  CellTable rows(kPlaylistFields);
  std::vector<std::string> row(kPlaylistFields);
  row[IndexOf(TrackField::location)] = "/music/AC\\DC.mp3";
  row[IndexOf(TrackField::position)] = "7";
  rows.AppendRow(std::vector<std::string_view>(row.begin(), row.end()));
  ResultList list;
  list.Fill(std::move(rows));
  EXPECT_EQ(list.Cell(0, kFileColumn), "AC\\DC.mp3");
  EXPECT_EQ(list.Cell(0, TrackField::position), "7");
  list.SetCell(0, TrackField::location, "CD07\\Rock\\a.mp3");
  EXPECT_EQ(list.Cell(0, kFileColumn), "a.mp3");
  EXPECT_EQ(list.Record(0)[TrackField::position], "7");
  EXPECT_EQ(list.Cell(1, TrackField::uid), "");
}

TEST(ResultList, RemovedRowsTakeTheirSelectionAlongAndHandTheFocusOn) {
  ResultList list = ListOf({"e", "d", "c", "b", "a"});
  list.Sort(kSorted, SortKind::kText);  // a b c d e, keys 5 4 3 2 1
  list.SetSelected(1, 3, true);
  list.SetFocusedRow(1);
  list.RemoveRows({1, 2, 9});
  EXPECT_EQ(UidsOf(list), (std::vector<std::int64_t>{5, 2, 1}));
  EXPECT_EQ(list.SelectedRows(), (std::vector<std::size_t>{1}));
  EXPECT_EQ(list.SelectedCount(), 1U);
  EXPECT_EQ(list.FocusedRow(), 1U);
  EXPECT_EQ(list.RowOfUid(1), 2U);
  list.RemoveRows({2});
  EXPECT_EQ(list.FocusedRow(), 1U);
  list.RemoveRows({0, 1});
  EXPECT_EQ(list.FocusedRow(), std::nullopt);
  EXPECT_EQ(list.SelectedCount(), 0U);
}

TEST(ResultList, AMovedRowTakesItsSelectionAndFocusAlong) {
  ResultList list;
  list.Fill(NumberedRows(4));
  list.Sort(0, SortKind::kNumber);
  list.SelectOnly(1);
  list.SetFocusedRow(1);
  list.MoveRow(1, 3);
  EXPECT_EQ(UidsOf(list), (std::vector<std::int64_t>{1, 3, 4, 2}));
  EXPECT_EQ(list.SelectedRows(), std::vector<std::size_t>{3});
  EXPECT_EQ(list.FocusedRow(), 3U);
  EXPECT_EQ(list.SortColumn(), std::nullopt) << "this order is the person's own";
  list.MoveRow(3, 0);
  EXPECT_EQ(UidsOf(list), (std::vector<std::int64_t>{2, 1, 3, 4}));
  list.MoveRow(0, 4);
  list.MoveRow(9, 0);
  EXPECT_EQ(UidsOf(list), (std::vector<std::int64_t>{2, 1, 3, 4})) << "no such place";
}

TEST(ListColumns, TheKindIsToldByTheCaptionAlone) {
  const std::map<std::string_view, SortKind> told = {
      {"Trackno.", SortKind::kNumber},       {"UID", SortKind::kNumber},
      {"Playtime", SortKind::kTime},         {"Quality", SortKind::kLeadingNumber},
      {"Last time played", SortKind::kDate}, {"Filesize", SortKind::kSize},
  };
  for (std::size_t column = 0; column < kListColumns; ++column) {
    const auto found = told.find(ListColumn(column).playlist_caption);
    const SortKind kind = found == told.end() ? SortKind::kText : found->second;
    EXPECT_EQ(SortKindOf(ListColumn(column).playlist_caption), kind)
        << ListColumn(column).playlist_caption;
    EXPECT_EQ(ListColumn(column).kind, kind);
    EXPECT_GT(ListColumn(column).standard_width, 0);
  }
  EXPECT_EQ(ListColumn(21).playlist_caption, "Haspic");
  EXPECT_EQ(ListColumn(21).caption, "has picture?");
}

}  // namespace
}  // namespace tunemeadow
