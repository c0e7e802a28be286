// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/column_layout.h"

#include <gtest/gtest.h>

#include <set>

#include "support/temp_folder.h"
#include "views/row_icons.h"

namespace tunemeadow {
namespace {

TEST(ColumnLayout, SurvivesTheSettingsFileWithItsHiddenColumns) {
  const TempFolder folder;
  cINI ini(folder.Path("x.INI"));
  EXPECT_EQ(ReadColumnLayout(ini), StandardColumnLayout()) << "nothing is stored";
  ColumnLayout layout = StandardColumnLayout();
  layout[3].width = 0;
  layout[4].width = 1234;
  std::swap(layout[0].place, layout[29].place);
  ASSERT_EQ(ini.SaveStrings(kConfigSection, ColumnLayoutPairs(layout)), 1);
  EXPECT_EQ(ReadColumnLayout(ini), layout);
  EXPECT_EQ(ini.GetString(kConfigSection, "ColumnHeaderCount", "", 0), "30");
  EXPECT_EQ(ini.GetString(kConfigSection, "ColumnHeader5", "", 0), "1234");
  EXPECT_EQ(ini.GetString(kConfigSection, "ColumnHeaderPosition1", "", 0), "30");
}

TEST(ColumnLayout, ReadsWhatItCanOfABrokenOne) {
  const std::vector<std::pair<std::string, std::string>> settings = {
      {"columnheader1", "1500,5"},
      {"ColumnHeader2", "wide"},
      {"ColumnHeader3", "-20"},
      {"ColumnHeader4", "1e300"},
      {"ColumnHeader5", "0"},
      {"ColumnHeaderPosition1", "2"},
      {"ColumnHeaderPosition2", "2"},
      {"ColumnHeaderPosition3", "1"},
      {"ColumnHeaderPosition30", "0.5"},
      {"ColumnHeaderPosition4", "31"},
  };
  const ColumnLayout layout = ReadColumnLayout(settings);
  EXPECT_EQ(layout[0].width, 1500);
  for (const std::size_t standard : {1U, 2U, 3U}) {
    EXPECT_EQ(layout[standard].width, ListColumn(standard).standard_width);
  }
  EXPECT_EQ(layout[4].width, 0);
  std::set<std::size_t> places;
  for (const ColumnPlace& column : layout) places.insert(column.place);
  EXPECT_EQ(places.size(), kListColumns) << "each place once";
  EXPECT_EQ(*places.rbegin(), kListColumns - 1);
  EXPECT_EQ(layout[29].place, 0U);
  EXPECT_EQ(layout[2].place, 1U);
  EXPECT_EQ(layout[0].place, 2U);
  EXPECT_EQ(layout[1].place, 3U);
}

TEST(ColumnLayout, OkOfTheDialogHidesAndShows) {
  ColumnLayout layout = StandardColumnLayout();
  layout[1].width = 0;
  layout[2].width = 77;
  std::array<bool, kListColumns> checked = ShownColumns(layout);
  EXPECT_FALSE(checked[1]);
  EXPECT_TRUE(checked[2]);
  checked[1] = true;
  checked[5] = false;
  ShowColumns(layout, checked);
  EXPECT_EQ(layout[1].width, ListColumn(1).standard_width);
  EXPECT_EQ(layout[2].width, 77);
  EXPECT_EQ(layout[5].width, 0);
  ShowColumns(layout, {});
  EXPECT_EQ(ShownColumns(layout), (std::array<bool, kListColumns>{}));
}

TEST(RowIcons, GatherEachExtensionOnce) {
  RowIcons icons;
  for (const char* location :
       {"/a.mp3", "/b.MP3", "/c.ogg", "/d.Mp3", "/e.jpég", "/f", "", "/c.ogg"}) {
    icons.Add(location);
  }
  EXPECT_EQ(icons.Keys(), (std::vector<std::string>{"MP3O", "OGG", "PÉG", "/F", ""}));
}

}  // namespace
}  // namespace tunemeadow
