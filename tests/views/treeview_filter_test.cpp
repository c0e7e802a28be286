// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/treeview_filter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "views/catalogue_test.h"

namespace tunemeadow {
namespace {

class Filter : public CatalogueTest {
 protected:
  Filter() {
    for (const char* row :
         {"'Anna','Blue','Rock','/m/Rock/a.mp3'", "'anna','Red','Rock','/m/rock/b.mp3'",
          "'Berta','Blue','Pop','C:\\Pop\\c.mp3'", "'Carla','','','/m/d.mp3'"}) {
      Run("insert into mp3sTabelle (Artist,album,genrereal,location) values (" + std::string(row) +
          ")");
    }
  }

  /// "key = text" of what is below the group.
  Texts Below(const std::string& group) {
    Texts texts;
    const TreeNodes& nodes = *filter_.Nodes();
    for (const TreeNode& node : nodes) {
      std::int32_t above = node.parent;
      while (above > 0 && nodes[static_cast<std::size_t>(above)].parent > 0) {
        above = nodes[static_cast<std::size_t>(above)].parent;
      }
      if (above > 0 && nodes[static_cast<std::size_t>(above)].key == group) {
        texts.push_back(node.key + " = " + node.text);
      }
    }
    return texts;
  }

  TreeviewFilter filter_{interaction_};
};

TEST_F(Filter, FillsEachListOnceWithItsKeys) {
  ASSERT_TRUE(filter_.Form_Load(folder_.Path("mp3s.mdb")));
  const std::vector<std::pair<const char*, Texts>> lists = {
      {"Artist",
       {"ArtistLIST|1 = Anna", "ArtistLIST|2 = Berta", "ArtistAlbumLIST|1|1 = Blue",
        "ArtistAlbumLIST|1|2 = Red", "ArtistAlbumLIST|2|1 = Blue"}},
      {"Album",
       {"AlbumLIST|1 = Blue", "AlbumLIST|2 = Red", "AlbumArtistLIST|1|1 = Anna",
        "AlbumArtistLIST|1|2 = Berta", "AlbumArtistLIST|2|1 = anna"}},
      {"Genre", {"GenreLIST|1 = Pop", "GenreLIST|2 = Rock"}},
      {"Location",
       {"LocationLIST|/m/ = /m", "LocationLIST|C:\\ = C:", "LocationLIST|/m/Rock/ = Rock",
        "LocationLIST|C:\\Pop\\ = Pop"}}};
  for (const auto& [group, nodes] : lists) {
    EXPECT_EQ(Below(group), Texts{}) << group << " waits";
    EXPECT_TRUE(filter_.Load(group));
    EXPECT_EQ(Below(group), nodes);
    EXPECT_FALSE(filter_.Load(group)) << group << " is there";
  }
  EXPECT_FALSE(filter_.Load("ArtistLIST|1"));
  EXPECT_FALSE(filter_.Load("DATABASE"));
}

TEST_F(Filter, BothWaysToFillTheLocationsGiveTheSameNodes) {
  ASSERT_TRUE(filter_.Form_Load(folder_.Path("mp3s.mdb")));
  Texts keys[2];
  for (const bool walking : {false, true}) {
    TreeBuilder group;
    group.Add(-1, NodeKind::kDatabase, "Location", "Location");
    walking ? filter_.LoadView4ALT(group) : filter_.LoadView4(group);
    for (const TreeNode& node : group.Arrange()) keys[walking].push_back(node.key);
  }
  EXPECT_EQ(keys[0].size(), 5U);
  EXPECT_EQ(keys[0], keys[1]);
}

TEST_F(Filter, AStoppedLoadKeepsWhatItReadAndRunsAgain) {
  ASSERT_TRUE(filter_.Form_Load(folder_.Path("mp3s.mdb")));
  filter_.on_row = [&](std::size_t row, std::size_t rows) {
    EXPECT_TRUE(filter_.Loading());
    EXPECT_EQ(rows, 3U);
    EXPECT_FALSE(filter_.Load("Genre")) << "one load at a time";
    if (row == 1) filter_.Cancel();
  };
  EXPECT_TRUE(filter_.Load("Artist"));
  EXPECT_FALSE(filter_.Loading());
  EXPECT_EQ(Below("Artist"), (Texts{"ArtistLIST|1 = Anna", "ArtistAlbumLIST|1|1 = Blue"}));
  filter_.on_row = {};
  EXPECT_TRUE(filter_.Load("Artist"));
  EXPECT_EQ(Below("Artist").size(), 5U);
}

TEST_F(Filter, AFaultOfTheStoreIsTold) {
  interaction_.WillAnswer(Answer::kOk);
  EXPECT_FALSE(filter_.Form_Load(folder_.Path("missing.mdb")));
  ASSERT_TRUE(filter_.Form_Load(folder_.Path("mp3s.mdb")));
  Run("drop table mp3sTabelle");
  interaction_.WillAnswer(Answer::kOk);
  EXPECT_TRUE(filter_.Load("Genre"));
  ASSERT_EQ(interaction_.boxes.size(), 2U);
  EXPECT_EQ(interaction_.boxes[1].text, "1 no such table: mp3sTabelle");
  EXPECT_FALSE(filter_.Loading());
}

TEST_F(Filter, AClickFillsTheFieldsOfItsPrefixAndSearches) {
  ASSERT_TRUE(filter_.Form_Load(folder_.Path("mp3s.mdb")));
  for (const char* group : {"Artist", "Album", "Genre", "Location"})
    EXPECT_TRUE(filter_.Load(group));
  using enum TrackField;
  struct Case {
    const char* key;
    TrackTexts texts;
    std::size_t rows;
  };
  const Case cases[] = {{"ArtistAlbumLIST|1|1", {{Artist, "Anna"}, {album, "Blue"}}, 1},
                        {"ArtistLIST|1", {{Artist, "Anna"}}, 2},
                        {"AlbumLIST|1", {{album, "Blue"}}, 2},
                        {"AlbumArtistLIST|1|2", {{album, "Blue"}, {Artist, "Berta"}}, 1},
                        {"GenreLIST|2", {{genrereal, "Rock"}}, 2},
                        {"LocationLIST|/m/Rock/", {{location, "/m/Rock/"}}, 2}};
  for (const Case& one : cases) {
    SCOPED_TRACE(one.key);
    bench_.search.texts[TrackField::Comment] = "left over";
    bench_.playlist_in_view = true;
    bench_.tree.selected = {.kind = NodeKind::kPlaylist, .key = "Mix|1", .name = "Mix"};
    TreeviewFilter_NodeClick(bench_, *filter_.Nodes(), IndexOfKey(*filter_.Nodes(), one.key));
    EXPECT_EQ(bench_.search, SearchFields{.texts = one.texts});
    EXPECT_FALSE(bench_.playlist_in_view) << "the library is what is browsed";
    EXPECT_EQ(bench_.tree.selected.key, "Database");
    EXPECT_EQ(bench_.ListView1.RowCount(), one.rows);
  }
  const std::size_t searches = bench_.history.Entries().size();
  TreeviewFilter_NodeClick(bench_, *filter_.Nodes(), IndexOfKey(*filter_.Nodes(), "Artist"));
  EXPECT_EQ(bench_.history.Entries().size(), searches);
}

}  // namespace
}  // namespace tunemeadow
