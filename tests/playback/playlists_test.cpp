// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/playlists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "core/text.h"
#include "playback/lists_test.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;

constexpr char kMembers[] =
    "select Playlist || '/' || UID || '/' || coalesce([position],'-') from playlists "
    "order by UIDPLaylist";

class Playlists : public ListsTest {
 protected:
  Playlists() {
    for (const char* path : {"/m/a.mp3", "/m/b.mp3", "/m/c.mp3"}) uids_.push_back(AddTrack(path));
    ShowTracks(2);
  }

  void Save(const std::string& name) { mnuPlaylistSave_Click(bench_, name); }

  void Rename(const std::string& name, const std::optional<std::string>& typed,
              std::initializer_list<Answer> answers = {}) {
    ClickNode(NodeKind::kPlaylist, name);
    interaction_.WillAnswerText(typed);
    for (const Answer answer : answers) interaction_.WillAnswer(answer);
    mnuPlaylistUmbenennen_Click(bench_);
  }
  void DeleteRows(Answer answer) {
    interaction_.WillAnswer(answer);
    DeleteFromPlaylist(bench_);
  }
  void DeleteList(const std::string& name, Answer answer) {
    ClickNode(NodeKind::kPlaylist, name);
    interaction_.WillAnswer(answer);
    mnuPlaylistDelete_Click(bench_);
  }

  Texts Names() { return Rows("select Playlist from playlists group by Playlist order by 1"); }

  /// The tracks of the list in its stored order, by the last letter of their file names.
  std::string Order(const std::string& name) {
    std::string order;
    OpenPlaylist(name);
    for (const std::string& path : Locations(bench_.ListView3)) order += path[3];
    return order;
  }

  Texts uids_;
};

TEST_F(Playlists, TheSelectedRowsOfTheListInViewAreAddedWithoutAPosition) {
  interaction_.WillAnswerText("Mine");
  mnuPlaylistSave_Click(bench_);
  EXPECT_THAT(interaction_.prompts, ElementsAre("Playlist Name?"));
  EXPECT_THAT(Rows(kMembers), ElementsAre("Mine/" + uids_[0] + "/-", "Mine/" + uids_[1] + "/-"));
  EXPECT_THAT(bench_.tree.playlists, ElementsAre("Mine"));
  EXPECT_EQ(interaction_.Status(), "2 tracks added to the playlist \"Mine\".");
  OpenPlaylist("Mine", 1);
  Save("Other");
  EXPECT_THAT(Rows(kMembers), testing::Contains("Other/" + uids_[0] + "/-"));
  interaction_.ExpectPutBack();
  EXPECT_FALSE(session_.busy);
}

TEST_F(Playlists, NoNameMakesNoPlaylistAndEachProposalCounts) {
  for (const std::optional<std::string>& answer :
       {std::optional<std::string>(), std::optional<std::string>("")}) {
    interaction_.WillAnswerText(answer);
    mnuPlaylistSave_Click(bench_);
    interaction_.WillAnswerText(answer);
    mnuToolsRandomPlaylist_Click(bench_);
  }
  EXPECT_EQ(bench_.PlaylistCounter, 5);
  mnuPlaylistAddItems_Click(bench_, "");
  EXPECT_THAT(Rows(kMembers), ElementsAre());
  bench_.PlaylistCounter = 32767;
  interaction_.WillAnswerText("");
  mnuPlaylistSave_Click(bench_);
  EXPECT_EQ(bench_.PlaylistCounter, 1) << "the number has 16 bits";
}

TEST_F(Playlists, ANameThatIsTakenIsNotProposed) {
  for (const char* name : {"playlist 1", "Playlist 2", "Playlist 4"}) Save(name);
  for (const char* free : {"Playlist 3", "Playlist 5"}) {
    interaction_.WillAnswerText("");
    mnuPlaylistSave_Click(bench_);
    EXPECT_EQ(interaction_.offered.back(), free);
  }
}

TEST_F(Playlists, WhateverIsTypedAsANameIsTheName) {
  const std::vector<std::string> names = {
      "Rock 'n' \"Roll\"", "a|b",   "Playlist", "UID",  "position",  "x\\y/z; drop table playlists",
      "50% & more",        "Größe", "''",       "\"\"", "[position]"};
  for (const std::string& name : names) {
    SCOPED_TRACE(name);
    Run("delete from playlists");
    Save("Bystander");
    Save(name);
    EXPECT_THAT(PlaylistNames(bench_), testing::UnorderedElementsAre("Bystander", name));
    EXPECT_EQ(Order(name), "ab");
    MovePlaylistRow(bench_, 0, 1);
    EXPECT_EQ(Order(name), "ba");
    Rename(name, name + "\"2'");
    EXPECT_EQ(bench_.current_playlist, name + "\"2'") << "the open list goes by its new name";
    EXPECT_EQ(Order(name + "\"2'"), "ba");
    Select(bench_.ListView3, 1);
    DeleteRows(Answer::kYes);
    EXPECT_EQ(Order(name + "\"2'"), "a");
    DeleteList(name + "\"2'", Answer::kYes);
    EXPECT_EQ(interaction_.boxes.back().text,
              "Are you sure to delete playlist \"" + name + "\"2'\"?");
    EXPECT_THAT(Names(), ElementsAre("Bystander"));
    ShowTracks(2);
  }
}

TEST_F(Playlists, ANameIsCutToFiftyCharacters) {
  const std::string fifty = ReplaceEach(std::string(50, 'x'), "x", "ü");
  Save(fifty + "y");
  interaction_.WillAnswerText(fifty + std::string(250, 'y'));
  mnuToolsRandomPlaylist_Click(bench_);
  EXPECT_THAT(Names(), ElementsAre(fifty));
  Rename(fifty, std::string(300, 'z'));
  EXPECT_THAT(Names(), ElementsAre(std::string(50, 'z')));
}

TEST_F(Playlists, ARandomOneDrawsAPositionBelowTheNumberOfAllRows) {
  for (int i = 0; i < 60; ++i) AddTrack("/r/" + std::to_string(i) + ".mp3");
  ShowTracks(50);
  interaction_.WillAnswerText("Mixed");
  mnuToolsRandomPlaylist_Click(bench_);
  EXPECT_THAT(interaction_.prompts, ElementsAre("50 items selected."));
  EXPECT_THAT(
      Rows("select UID from playlists order by UIDPLaylist"),
      testing::ElementsAreArray(Rows("select uid from mp3sTabelle order by location limit 50")));
  const Texts positions = Rows("select [position] from playlists");
  EXPECT_GT(std::set<std::string>(positions.begin(), positions.end()).size(), 10U);
  EXPECT_THAT(Rows("select count(UID) from playlists where [position] between 0 and 62"),
              ElementsAre("50"));
}

TEST_F(Playlists, ARandomOneOfNothingIsRefused) {
  bench_.ListView1.ClearSelection();
  interaction_.WillAnswer(Answer::kOk);
  mnuToolsRandomPlaylist_Click(bench_);
  EXPECT_THAT(interaction_.BoxTexts(), ElementsAre("Tunemeadow: You view is empty!"));
}

TEST_F(Playlists, ARefusedRowIsToldOnceWithItsStatement) {
  Refuse("insert on playlists when new.UID=" + uids_[1], "no room");
  ShowTracks(3);
  interaction_.WillAnswer(Answer::kOk);
  Save("It's");
  EXPECT_THAT(interaction_.BoxTexts(),
              ElementsAre("Tunemeadow: no room\ninsert into playlists (Playlist,uid) values "
                          "(\"It's\"," +
                          uids_[1] + ")"));
  EXPECT_THAT(Rows(kMembers), ElementsAre("It's/" + uids_[0] + "/-"));
  interaction_.WillAnswer(Answer::kOk);
  Refuse("update on playlists", "locked");
  OpenPlaylist("It's");
  SavePlaylistOrder(bench_);
  EXPECT_EQ(interaction_.BoxTexts().back(), "Error!: locked");
  EXPECT_EQ(interaction_.Status(), "Ready.");
}

TEST_F(Playlists, OnlyAPlaylistsNodeIsDeletedOrRenamedAndOnlyOnYes) {
  Save("Mine");
  for (const NodeKind kind : {NodeKind::kRoot, NodeKind::kPlaylists, NodeKind::kArchive}) {
    ClickNode(kind, "Mine");
    mnuPlaylistDelete_Click(bench_);
    mnuPlaylistUmbenennen_Click(bench_);
  }
  DeleteList("Mine", Answer::kNo);
  for (const std::optional<std::string>& answer :
       {std::optional<std::string>(), std::optional<std::string>(""),
        std::optional<std::string>("Mine")}) {
    interaction_.WillAnswerText(answer);
    mnuPlaylistUmbenennen_Click(bench_);
  }
  EXPECT_THAT(interaction_.prompts, testing::Each("Neuer Name:"));
  EXPECT_THAT(Names(), ElementsAre("Mine"));
  OpenPlaylist("Mine");
  DeleteList("Mine", Answer::kYes);
  EXPECT_THAT(Names(), ElementsAre());
  EXPECT_FALSE(bench_.playlist_in_view) << "the library takes the place of the list in view";
  EXPECT_EQ(bench_.current_playlist, "");
  EXPECT_EQ(bench_.ListView1.RowCount(), 3U);
  EXPECT_THAT(Rows("select count(uid) from mp3sTabelle"), ElementsAre("3"));
  mnuPlaylistDelete_Click(bench_);
}

TEST_F(Playlists, TwoBecomeOneOnlyIfThePersonWantsIt) {
  Save("Mine");
  Save("Other");
  Rename("Mine", "OTHER", {Answer::kNo});
  EXPECT_THAT(Names(), ElementsAre("Mine", "Other"));
  interaction_.WillAnswerText("mine");
  mnuPlaylistUmbenennen_Click(bench_);
  EXPECT_THAT(Names(), ElementsAre("mine", "Other")) << "the same list in other letters";
  interaction_.WillAnswerText("other");
  interaction_.WillAnswer(Answer::kYes);
  mnuPlaylistUmbenennen_Click(bench_);
  EXPECT_EQ(Names().size(), 1U);
  EXPECT_EQ(Rows(kMembers).size(), 4U);
}

TEST_F(Playlists, EqualAndMissingPositionsFollowThePath) {
  ShowTracks(3);
  Save("Mine");
  EXPECT_EQ(Order("Mine"), "abc");
  Run("update playlists set [position]=1 where UID in (" + uids_[0] + "," + uids_[1] + ")");
  EXPECT_EQ(Order("Mine"), "cab") << "what never got a position stands first";
  SavePlaylistOrder(bench_);
  EXPECT_TRUE(interaction_.SawStatus("Saving Playlist..."));
  EXPECT_EQ(interaction_.Status(), "Ready.");
  EXPECT_THAT(Rows("select UID || ':' || [position] from playlists order by [position]"),
              ElementsAre(uids_[2] + ":1", uids_[0] + ":2", uids_[1] + ":3"));
}

TEST_F(Playlists, ATrackThatStandsTwiceGetsTheLastNumberAndGoesTwice) {
  Save("Mine");
  ShowTracks(1);
  Save("Mine");
  EXPECT_EQ(Order("Mine"), "aab");
  MovePlaylistRow(bench_, 1, 2);
  EXPECT_THAT(Rows("select UID || ':' || [position] from playlists order by UIDPLaylist"),
              ElementsAre(uids_[0] + ":3", uids_[1] + ":2", uids_[0] + ":3"));
  OpenPlaylist("Mine");
  Select(bench_.ListView3, 0);
  bench_.ListView3.SelectOnly(2);
  DeleteRows(Answer::kYes);
  EXPECT_EQ(Locations(bench_.ListView3), Texts{"/m/b.mp3"});
}

TEST_F(Playlists, AMovedRowStaysSelectedAndItsOrderIsStored) {
  ShowTracks(3);
  Save("Mine");
  OpenPlaylist("Mine");
  MovePlaylistRow(bench_, 0, 1);
  EXPECT_EQ(bench_.ListView3.SelectedRows(), std::vector<std::size_t>{1});
  EXPECT_EQ(Order("Mine"), "bac");
  MovePlaylistRow(bench_, 2, 0);
  MovePlaylistRow(bench_, 0, 3);
  EXPECT_EQ(Order("Mine"), "cba");
  bench_.search.texts[TrackField::file] = "b.mp3";
  OpenPlaylist("Mine");
  EXPECT_FALSE(ShowsWholePlaylist(bench_));
  MovePlaylistRow(bench_, 0, 0);
  bench_.search.texts[TrackField::file] = "m";
  bench_.search.texts[TrackField::Songname] = "t";
  OpenPlaylist("Mine");
  EXPECT_TRUE(ShowsWholePlaylist(bench_)) << "the search leaves nothing out";
}

TEST_F(Playlists, ASearchInAPlaylistNeverChangesItsOrder) {
  ShowTracks(3);
  Save("Mine");
  OpenPlaylist("Mine");
  MovePlaylistRow(bench_, 0, 2);
  Run("update mp3sTabelle set Artist='x' where uid<>" + uids_[1]);
  bench_.search.texts[TrackField::Artist] = "x";
  OpenPlaylist("Mine");
  ASSERT_EQ(bench_.ListView3.RowCount(), 2U);
  MovePlaylistRow(bench_, 0, 1);
  bench_.search = {};
  EXPECT_EQ(Order("Mine"), "bca");
}

TEST_F(Playlists, DeletingTakesTheRowsOutOfThisPlaylistAlone) {
  for (int i = 0; i < 40; ++i) AddTrack("/r/" + std::to_string(100 + i) + ".mp3");
  ShowTracks(43);
  Save("Mine");
  Save("Other");
  OpenPlaylist("Mine");
  DeleteRows(Answer::kOk);
  Select(bench_.ListView3, 2);
  DeleteRows(Answer::kNo);
  DeleteRows(Answer::kYes);
  EXPECT_EQ(bench_.ListView3.RowCount(), 41U);
  EXPECT_EQ(bench_.ListView3.SelectedRows(), std::vector<std::size_t>{0});
  Select(bench_.ListView3, 20);
  DeleteRows(Answer::kYes);
  EXPECT_EQ(bench_.ListView3.RowCount(), 21U);
  EXPECT_THAT(interaction_.BoxTexts(),
              ElementsAre("Tunemeadow: No Objects selected!",
                          "Delete: Are you sure to delete 2 item(s) of your selected playlist?",
                          "Delete: Are you sure to delete 2 item(s) of your selected playlist?",
                          "Delete: Are you sure to delete 20 item(s) of your selected playlist?"));
  EXPECT_EQ(interaction_.boxes.back().icon, Icon::kExclamation);
  EXPECT_THAT(Rows("select count(UID) from playlists group by Playlist order by Playlist"),
              ElementsAre("21", "43"));
  Select(bench_.ListView3, 21);
  DeleteRows(Answer::kYes);
  EXPECT_THAT(bench_.tree.playlists, ElementsAre("Other")) << "the last track takes the list along";
  EXPECT_FALSE(bench_.playlist_in_view);
  EXPECT_EQ(bench_.ListView1.RowCount(), 43U);
}

TEST_F(Playlists, AllRowsOfASearchInAPlaylistLeaveItOpen) {
  Save("Mine");
  OpenPlaylist("Mine");
  bench_.search.texts[TrackField::file] = "a.mp3";
  cmdSuchen(bench_);
  ASSERT_EQ(bench_.ListView3.RowCount(), 1U);
  Select(bench_.ListView3, 1);
  DeleteRows(Answer::kYes);
  EXPECT_TRUE(bench_.playlist_in_view);
  EXPECT_EQ(Order("Mine"), "") << "the search stays";
  bench_.search = {};
  EXPECT_EQ(Order("Mine"), "b");
}

TEST_F(Playlists, WhatGoesIntoTheOpenOneIsShownAndMayBeOrdered) {
  Save("Mine");
  Save("Other");
  OpenPlaylist("Mine", 1);
  const auto rows = [this] {
    EXPECT_TRUE(ShowsWholePlaylist(bench_));
    return bench_.ListView3.RowCount();
  };
  Save("Other");
  EXPECT_EQ(rows(), 2U);
  Save("MINE");
  EXPECT_EQ(rows(), 3U);
  interaction_.WillAnswerText("mine");
  mnuToolsRandomPlaylist_Click(bench_);
  EXPECT_EQ(rows(), 4U) << "one row was selected";
  Rename("Other", "mine", {Answer::kYes});
  EXPECT_EQ(rows(), 7U) << "another one merged into it";
  Save("Third");
  Rename("mine", "third", {Answer::kYes});
  EXPECT_EQ(rows(), 8U) << "it merged into another one";
}

}  // namespace
}  // namespace tunemeadow
