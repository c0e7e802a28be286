// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/search_items.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "core/collation.h"
#include "views/catalogue_test.h"

namespace tunemeadow {
namespace {

class SearchItemsOf : public CatalogueTest {};

const std::vector<std::pair<std::string, std::string>> kStatements = {
    {"cboArtistSearch",
     "select Artist FROM mp3stabelle where Artist<>'' group by Artist order by Artist"},
    {"cboYearSearch", "select year FROM mp3stabelle where year<>'' group by year order by year"},
    {"cboSongname",
     "select Songname FROM mp3stabelle where Songname<>'' group by Songname order by Songname"},
    {"cboAlbum", "select album FROM mp3stabelle where album<>'' group by album order by album"},
    {"cboGenre",
     "select Genrereal FROM mp3stabelle where Genrereal<>'' group by Genrereal order by Genrereal"},
    {"cboSituation",
     "select Situation FROM mp3stabelle where Situation<>'' group by Situation order by Situation"},
    {"cboPreference",
     "select Preference FROM mp3stabelle where Preference<>'' group by Preference "
     "order by Preference"},
    {"cboMood", "select mood FROM mp3stabelle where mood<>'' group by mood order by mood"},
    {"cboTempo", "select tempo FROM mp3stabelle where tempo<>'' group by tempo order by tempo"},
};

TEST_F(SearchItemsOf, OnePassGivesWhatTheNineStatementsGive) {
  std::mt19937 random(5);
  const std::vector<std::string> pieces = {"a",  "A", "b", "B",  "_",
                                           " ",  "Z", "z", "ä",  "Ä",
                                           "''", "[", "1", "10", "long enough to pass "};
  const auto text = [&]() -> std::string {
    if (random() % 8 == 0) return "null";
    std::string made;
    for (auto n = random() % 5; n > 0; --n) made += pieces[random() % pieces.size()];
    return "'" + made + "'";
  };
  for (int row = 0; row < 3000; row += 50) {
    std::string insert =
        "insert into mp3sTabelle (Artist,[year],Songname,album,genrereal,Situation,preference,Mood,"
        "tempo) values ";
    for (int i = 0; i < 50; ++i) {
      insert += i == 0 ? "(" : ",(";
      for (int column = 0; column < 9; ++column) insert += (column == 0 ? "" : ",") + text();
      insert += ")";
    }
    Run(insert);
  }
  RefreshAllSearchitems(bench_);
  for (std::size_t i = 0; i < kStatements.size(); ++i) {
    const auto& [combo, statement] = kStatements[i];
    const SearchItemList& list = bench_.search_items.lists[i];
    EXPECT_EQ(list.combo, combo);
    EXPECT_EQ(SearchItemStatement(list.column), statement);
    const std::vector<std::string> rows = Rows(statement);
    EXPECT_EQ(list.values.size(), rows.size());
    EXPECT_EQ(std::set(list.values.begin(), list.values.end()), std::set(rows.begin(), rows.end()));
    EXPECT_TRUE(std::is_sorted(list.values.begin(), list.values.end(), CollatesBefore))
        << statement;
    EXPECT_GT(list.values.size(), 100U);
  }
}

TEST_F(SearchItemsOf, GenresThatTheTableLacksAreToldApart) {
  for (const char* genre : {"Rock", "rocksteady", "", "Blues", "Zouk"}) {
    Run(std::string("insert into mp3sTabelle (genrereal,location) values "
                    "('") +
        genre + "','/" + genre + "')");
  }
  RefreshAllSearchitems(bench_);
  EXPECT_EQ(bench_.search_items.further_genres, (std::vector<std::string>{"rocksteady", "Zouk"}));
}

TEST_F(SearchItemsOf, AColumnThatIsMissingEmptiesItsOwnListOnly) {
  Run("insert into mp3sTabelle (Artist,tempo) values ('Anna','Slow')");
  Run("alter table mp3sTabelle drop column Mood");
  bench_.search_items.lists[7].values = {"of before"};
  RefreshAllSearchitems(bench_);
  EXPECT_EQ(bench_.search_items.lists[0].values, (std::vector<std::string>{"Anna"}));
  EXPECT_TRUE(bench_.search_items.lists[7].values.empty());
  EXPECT_EQ(bench_.search_items.lists[8].values, (std::vector<std::string>{"Slow"}));
}

}  // namespace
}  // namespace tunemeadow
