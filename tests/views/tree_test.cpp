// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tree.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/list_rows.h"
#include "views/catalogue_test.h"

namespace tunemeadow {
namespace {

struct TreeWatcher : WorkbenchWatcher {
  int trees = 0, chosen = 0, in_view = 0;
  void TreeChanged() override { ++trees; }
  void TreeNodeSelected() override { ++chosen; }
  void ListInViewChanged() override { ++in_view; }
};

class Tree : public CatalogueTest {
 protected:
  Tree() { bench_.watcher = &watcher_; }

  void AddTrack(const std::string& location, const std::string& columns = "Artist",
                const std::string& values = "'A'") {
    Run("insert into mp3sTabelle (location," + columns + ") values ('" + location + "'," + values +
        ")");
  }
  void AddTo(const char* table, const std::string& name, const std::string& location) {
    Run("insert into " + std::string(table) + " select '" + name +
        "',uid from mp3sTabelle where location='" + location + "'");
  }
  void AddToPlaylist(const std::string& name, const std::string& location) {
    AddTo("playlists (Playlist,UID)", name, location);
  }
  void AddToArchive(const std::string& name, const std::string& location) {
    AddTo("cdarchives (CDArchive,UID)", name, location);
  }

  /// What stands in the tree, each node behind as many blanks as it has parents.
  Texts Shown() {
    Texts texts;
    if (!bench_.tree.nodes->empty()) ShowBelow(0, 0, texts);
    return texts;
  }
  void ShowBelow(std::int32_t index, std::size_t depth, Texts& texts) {
    const TreeNode& node = (*bench_.tree.nodes)[static_cast<std::size_t>(index)];
    texts.push_back(std::string(depth, ' ') + node.text);
    for (std::int32_t i = 0; i < node.child_count; ++i) {
      EXPECT_EQ((*bench_.tree.nodes)[static_cast<std::size_t>(node.first_child + i)].parent, index);
      ShowBelow(node.first_child + i, depth + 1, texts);
    }
  }
  /// The groups alone.
  Texts Groups() {
    Texts texts;
    for (const TreeNode& node : *bench_.tree.nodes) {
      if (node.kind == NodeKind::kGroup) texts.push_back(node.key + " = " + node.text);
    }
    return texts;
  }
  void ClickOn(const std::string& key) {
    const std::int32_t index = IndexOfKey(*bench_.tree.nodes, key);
    ASSERT_GE(index, 0) << key;
    const TreeNode& node = (*bench_.tree.nodes)[static_cast<std::size_t>(index)];
    TreeView1_NodeClick(bench_, {node.kind, node.key, node.name});
  }
  Texts Locations() { return ColumnOf(bench_.ListInView(), TrackField::location); }

  TreeWatcher watcher_;
};

TEST_F(Tree, AnEmptyCatalogueHasItsParentsAndNoGroups) {
  updatetreeview(bench_);
  EXPECT_EQ(Shown(), (Texts{"MyMP3s", " CDArchive [0]", " Database [0 Files]", " Playlists [0]"}));
}

TEST_F(Tree, ListsFoldersPlaylistsAndArchivesSortedBelowTheirParents) {
  AddTrack("/music/Rock/b.mp3");
  AddTrack("/music/abba/One/x.mp3");
  AddTrack("/music/ROCK/a.mp3");
  AddTrack("C:\\Music\\b.mp3");
  AddTrack(R"(\\server\share\c.mp3)");
  AddTrack("/in_the_root.mp3");
  AddTrack("MP3-CD01/Jazz/d.mp3");
  AddToPlaylist("b", "/music/Rock/b.mp3");
  AddToPlaylist("A|x", "/music/Rock/b.mp3");
  AddToPlaylist("A|x", "MP3-CD01/Jazz/d.mp3");
  AddToArchive("O''Neil", "MP3-CD01/Jazz/d.mp3");
  UpdateTrackCount(bench_);
  EXPECT_EQ(Shown(), (Texts{"MyMP3s", " CDArchive [1]", "  O'Neil", "   MP3-CD01", "    Jazz",
                            " Database [7 Files]", "  /music", "   abba", "    One", "   ROCK",
                            "  \\\\server", "   share", "  C:", "   Music", " Playlists [2]",
                            "  A|x [2 Files]", "  b [1 Files]"}));
  EXPECT_GE(IndexOfKey(*bench_.tree.nodes, "MainArchive\\/music/ROCK/"), 0);
  EXPECT_GE(IndexOfKey(*bench_.tree.nodes, R"(MainArchive\C:\Music\)"), 0);
  EXPECT_GE(IndexOfKey(*bench_.tree.nodes, "CDArchive|O'Neil\\MP3-CD01/Jazz/"), 0);
  EXPECT_EQ(bench_.tree.playlist_counts, (std::vector<std::int64_t>{2, 1}));
}

TEST_F(Tree, GroupsByEveryKindWithItsKeys) {
  AddTrack("/a.mp3", "Artist,album,genrereal,[year]", "'Zoë','Blue','17','1999'");
  AddTrack("/b.mp3", "Artist,album,genrereal,[year]", "'abba','','Folk \\ Pop','2001'");
  AddTrack("/c.mp3", "Artist", "'Édith'");
  const std::vector<std::pair<TreeKind, Texts>> kinds = {
      {TreeKind::kArtist,
       {"MainArchive\\Artist\\abba = abba", "MainArchive\\Artist\\Édith = Édith",
        "MainArchive\\Artist\\Zoë = Zoë"}},
      {TreeKind::kAlbum, {"MainArchive\\Album\\Blue = Blue"}},
      {TreeKind::kGenre,
       {R"(MainArchive\Genrereal\Folk \ Pop = Folk \ Pop)", "MainArchive\\Genrereal\\17 = Rock"}},
      {TreeKind::kYear, {"MainArchive\\Year\\1999 = 1999", "MainArchive\\Year\\2001 = 2001"}},
      {TreeKind::kLocation, {}}};
  for (const auto& [kind, groups] : kinds) {
    cboTreeSelector_Click(bench_, kind);
    EXPECT_EQ(Groups(), groups) << kTreeKinds[static_cast<std::size_t>(kind)];
  }
}

TEST_F(Tree, WithoutATagForDiscsNoFolderStaysOut) {
  AddTrack("MP3-CD01/a.mp3");
  updatetreeview(bench_);
  EXPECT_EQ(Groups(), Texts{});
  session_.preferences.txtCDTag = "";
  updatetreeview(bench_);
  EXPECT_EQ(Groups(), Texts{"MainArchive\\MP3-CD01/ = MP3-CD01"});
}

TEST_F(Tree, IsReadAnewOnlyAfterAWriteOrForAnotherKind) {
  AddTrack("/m/a.mp3");
  UpdateTrackCount(bench_);
  const auto nodes = bench_.tree.nodes;
  watcher_.trees = 0;
  updatetreeview(bench_);
  EXPECT_EQ(watcher_.trees, 0) << "nothing has changed";
  bench_.search.texts[TrackField::Songname] = "no such title";
  cmdSuchen(bench_);
  EXPECT_EQ(watcher_.trees, 1);
  EXPECT_EQ(bench_.tree.nodes, nodes) << "the same nodes with another count";
  EXPECT_EQ(Shown()[2], " Database [0/1 Files]");
  cboTreeSelector_Click(bench_, TreeKind::kArtist);
  EXPECT_EQ(Groups(), Texts{"MainArchive\\Artist\\A = A"});
  AddTrack("/m/b.mp3", "Artist", "'B'");
  updatetreeview(bench_);
  EXPECT_EQ(Groups().size(), 2U);
}

TEST_F(Tree, HiddenItKeepsItsNodesButTheNamesAreRenewed) {
  updatetreeview(bench_);
  bench_.tree.visible = false;
  AddTrack("/m/a.mp3");
  AddToPlaylist("New", "/m/a.mp3");
  updatetreeview(bench_);
  EXPECT_EQ(Groups(), Texts{});
  EXPECT_EQ(bench_.tree.playlists, Texts{"New"});
  bench_.tree.visible = true;
  updatetreeview(bench_);
  EXPECT_EQ(Groups(), Texts{"MainArchive\\/m/ = /m"});
}

TEST_F(Tree, AClickOnAGroupFillsItsFieldAloneAndSearches) {
  AddTrack("/m/O\"Neil/a.mp3", "Artist,album,genrereal,[year]", "'Anna','Blue','17','1999'");
  AddTrack("/m/b.mp3", "Artist,album,genrereal,[year]", "'Berta','Red','Pop','2001'");
  struct Case {
    TreeKind kind;
    const char* key;
    TrackField field;
    const char* text;
  };
  const Case cases[] = {
      {TreeKind::kLocation, "MainArchive\\/m/O\"Neil/", TrackField::location, "/m/O_Neil/"},
      {TreeKind::kArtist, "MainArchive\\Artist\\Anna", TrackField::Artist, "Anna"},
      {TreeKind::kAlbum, "MainArchive\\Album\\Blue", TrackField::album, "Blue"},
      {TreeKind::kGenre, "MainArchive\\Genrereal\\17", TrackField::genrereal, "17"},
      {TreeKind::kYear, "MainArchive\\Year\\1999", TrackField::year, "1999"}};
  for (const Case& one : cases) {
    SCOPED_TRACE(one.key);
    cboTreeSelector_Click(bench_, one.kind);
    bench_.search.texts[TrackField::Comment] = "left over";
    ClickOn(one.key);
    SearchFields expected;
    expected.texts[one.field] = one.text;
    EXPECT_EQ(bench_.search, expected);
    EXPECT_EQ(Locations(), Texts{"/m/O\"Neil/a.mp3"});
    EXPECT_EQ(bench_.tree.selected.key, one.key);
  }
  ClickOn("Database");
  EXPECT_EQ(Locations().size(), 2U);
}

TEST_F(Tree, AFolderWhoseNameIsNoTextFindsItsTracks) {
  AddTrack(
      "/m\xFF/"
      "a.mp3");
  updatetreeview(bench_);
  ClickOn("MainArchive\\/m\xFF/");
  EXPECT_EQ(Locations(), Texts{"/m\xFF/"
                               "a.mp3"});
}

TEST_F(Tree, TheThreeParentsSearchNothing) {
  updatetreeview(bench_);
  for (const char* key : {"MYMP3S", "ROOTPlaylist", "ROOTCDArchives"}) {
    ClickOn(key);
    EXPECT_EQ(bench_.tree.selected.key, key);
  }
  EXPECT_TRUE(bench_.history.Entries().empty());
}

TEST_F(Tree, EachKindOfNodeBringsItsViewAndLeavesNoField) {
  AddTrack("/m/a.mp3");
  AddTrack("MP3-CD01/Jazz/d.mp3");
  AddTrack("MP3-CD01/Rock/e.mp3");
  AddToPlaylist("Database", "/m/a.mp3");
  AddToArchive("MP3-CD01", "MP3-CD01/Jazz/d.mp3");
  AddToArchive("MP3-CD01", "MP3-CD01/Jazz/d.mp3");
  AddToArchive("MP3-CD01", "MP3-CD01/Rock/e.mp3");
  UpdateTrackCount(bench_);
  bench_.search.texts[TrackField::Artist] = "left over";
  TreeView1_NodeClick(bench_, {NodeKind::kPlaylist, "Database|1", "Database"});
  EXPECT_TRUE(bench_.playlist_in_view);
  EXPECT_EQ(bench_.current_playlist, "Database");
  EXPECT_EQ(Locations(), Texts{"/m/a.mp3"});
  EXPECT_FALSE(NameCombosShown(bench_));
  FollowRowInTree(bench_, 0);
  EXPECT_EQ(bench_.tree.selected.key, "Database|1") << "the node of the playlist in view";

  ClickOn("CDArchive|MP3-CD01");
  EXPECT_FALSE(bench_.playlist_in_view);
  EXPECT_EQ(bench_.current_view, "CDArchive");
  EXPECT_EQ(bench_.search.cboCDArchive, "MP3-CD01");
  EXPECT_EQ(Locations(),
            (Texts{"MP3-CD01/Jazz/d.mp3", "MP3-CD01/Jazz/d.mp3", "MP3-CD01/Rock/e.mp3"}));
  EXPECT_FALSE(NameCombosShown(bench_));

  ClickOn("CDArchive|MP3-CD01\\MP3-CD01/Jazz/");
  EXPECT_EQ(bench_.search.texts[TrackField::location], "MP3-CD01/Jazz/");
  EXPECT_EQ(Locations(), Texts{"MP3-CD01/Jazz/d.mp3"}) << "each track once";

  EXPECT_FALSE(ArchivesTakeRows(bench_));
  ClickOn("Database");
  EXPECT_EQ(bench_.current_view, "Database");
  EXPECT_TRUE(ArchivesTakeRows(bench_));
  EXPECT_EQ(bench_.search, SearchFields{});
  EXPECT_EQ(Locations().size(), 3U);
  EXPECT_TRUE(NameCombosShown(bench_));
}

TEST_F(Tree, ARowFindsItsNodeAndOpensItsParents) {
  AddTrack("/m/Rock/a.mp3", "Artist,album,genrereal,[year]", "'Anna','','17','1999'");
  AddTrack("MP3-CD01/Jazz/d.mp3");
  AddToArchive("Disc", "MP3-CD01/Jazz/d.mp3");
  cmdSuchen(bench_);
  const std::vector<std::pair<TreeKind, const char*>> kinds = {
      {TreeKind::kLocation, "MainArchive\\/m/Rock/"},
      {TreeKind::kArtist, "MainArchive\\Artist\\Anna"},
      {TreeKind::kGenre, "MainArchive\\Genrereal\\17"},
      {TreeKind::kYear, "MainArchive\\Year\\1999"},
      {TreeKind::kAlbum, "Database"}};  // it has none
  for (const auto& [kind, key] : kinds) {
    cboTreeSelector_Click(bench_, kind);
    bench_.tree.selected = {NodeKind::kDatabase, "Database", {}};
    FollowRowInTree(bench_, 0);
    EXPECT_EQ(bench_.tree.selected.key, key);
  }
  EXPECT_TRUE(bench_.tree.expanded.contains("MainArchive\\/m/"));
  EXPECT_EQ(watcher_.chosen, 4);
  cboTreeSelector_Click(bench_, TreeKind::kLocation);
  bench_.track_selection = false;
  bench_.ListView1.SelectOnly(1);
  ListView1_ItemClick(bench_, 1);
  EXPECT_EQ(bench_.tree.selected.key, "Database") << "it is switched off";
  cmdSeekto_Click(bench_);
  EXPECT_EQ(bench_.tree.selected.key, "CDArchive|Disc\\MP3-CD01/Jazz/");
  EXPECT_EQ(bench_.tree.selected.name, "Disc");
  EXPECT_GE(SelectedNode(bench_.tree), 0);
  bench_.tree.visible = false;
  bench_.details.uid = bench_.ListView1.Uid(0);
  cmdSeekto_Click(bench_);
  EXPECT_EQ(bench_.tree.selected.name, "Disc") << "a hidden tree keeps its node";
}

TEST_F(Tree, APlaylistIsFoundByItsNameWhateverItsNumber) {
  AddTrack("/m/a.mp3");
  AddToPlaylist("b", "/m/a.mp3");
  updatetreeview(bench_);
  ClickOn("b|1");
  AddToPlaylist("a", "/m/a.mp3");
  updatetreeview(bench_);
  const std::int32_t index = SelectedNode(bench_.tree);
  ASSERT_GE(index, 0);
  EXPECT_EQ((*bench_.tree.nodes)[static_cast<std::size_t>(index)].key, "b|2");
}

}  // namespace
}  // namespace tunemeadow
