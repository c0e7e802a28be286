// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/tag_menus.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "editing/tag_files_test.h"

namespace tunemeadow {
namespace {

class TagMenus : public TagFilesTest {
 protected:
  void AddThree() {
    AddTrack("all.mp3", v2_ + audio_ + lyrics_ + v1_);
    AddTrack("none.MP3", audio_);
    AddTrack("v2.mp3", v2_ + audio_);
    AddTrack("song.ogg", v2_ + audio_ + v1_);
    ShowAll();
  }
};

struct MenuCase {
  const char* name;
  void (*click)(Workbench&);
  std::string question, result;
  std::string all, v2;            ///< pieces of the files all.mp3 and v2.mp3 that stay
  std::vector<std::string> rows;  ///< flags afterwards
  std::vector<std::size_t> changed;
};

const std::vector<MenuCase>& MenuCases() {
  static const std::vector<MenuCase> cases = {
      {"v1",
       mnuKillID3v11Tag_Click,
       "Are you sure to remove the ID3v1 tags of  4 items(s)?",
       "ID3v1.x Tags of 1/4",
       "2aL",
       "2a",
       {"011 new", "111 old", "111 old", "111 old"},
       {0}},
      {"v2",
       mnuKillID3v2xTag_Click,
       "Are you sure to remove the ID3v2 tags of  4 items(s)?",
       "ID3v2.x Tags of 2/4",
       "aL1",
       "a",
       {"100 new", "111 old", "100 new", "111 old"},
       {0, 2}},
      {"lyrics",
       mnuKillLyrics3_Click,
       "Are you sure to remove the LYRICS3 tags of  4 items(s)?",
       "LYRICS3 Tags of 1/4",
       "2a1",
       "2a",
       {"111 new", "111 old", "111 old", "111 old"},
       {0}},
      {"all",
       mnuKillAllTags_Click,
       "Are you sure to remove the All tags of  4 items(s)?",
       " Tags of 2/4",
       "a",
       "a",
       {"000 new", "111 old", "100 new", "111 old"},
       {0, 0, 0, 2}}};
  return cases;
}

TEST_F(TagMenus, EachTakesItsTagsFromTheMp3FilesAndCorrectsTheirRows) {
  for (const MenuCase& menu : MenuCases()) {
    SCOPED_TRACE(menu.name);
    Run("delete from mp3sTabelle");
    paths_.clear();
    watcher_.rows.clear();
    interaction_.boxes.clear();
    AddThree();
    const auto pieces = [&](const std::string& letters) {
      std::string bytes;
      for (const char letter : letters) {
        bytes += letter == '1' ? v1_ : letter == '2' ? v2_ : letter == 'L' ? lyrics_ : audio_;
      }
      return bytes;
    };
    interaction_.WillAnswer(Answer::kYes);
    interaction_.WillAnswer(Answer::kOk);
    menu.click(bench_);
    EXPECT_EQ(Boxes(), (Texts{"Tag Remover: " + menu.question,
                              "Tunemeadow: " + menu.result +
                                  " file(s) successfully removed.\nElapsed Time: #"}));
    EXPECT_EQ(Bytes("all.mp3"), pieces(menu.all));
    EXPECT_EQ(Bytes("v2.mp3"), pieces(menu.v2));
    EXPECT_EQ(Bytes("none.MP3"), audio_);
    EXPECT_EQ(Bytes("song.ogg"), v2_ + audio_ + v1_);
    EXPECT_EQ(Flags(), menu.rows);
    Texts cells;
    for (const std::string& row : menu.rows) cells.push_back(row.substr(0, 3));
    EXPECT_EQ(Cells(), cells);
    EXPECT_EQ(watcher_.rows, menu.changed);
    EXPECT_EQ(interaction_.Status(), "Ready.");
    EXPECT_FALSE(session_.journal.InGroup());
  }
  EXPECT_TRUE(interaction_.SawStatus("Updating file (removing ID3v2Tag), please wait..."));
  EXPECT_EQ(interaction_.loading_lines.front(), "working...");
}

TEST_F(TagMenus, NothingIsDoneWithoutAYesAndNothingAskedWithoutASelection) {
  AddThree();
  interaction_.WillAnswer(Answer::kNo);
  mnuKillAllTags_Click(bench_);
  bench_.ListView1.ClearSelection();
  mnuKillAllTags_Click(bench_);
  EXPECT_EQ(interaction_.boxes.size(), 1U);
  EXPECT_EQ(Bytes("all.mp3"), v2_ + audio_ + lyrics_ + v1_);
}

TEST_F(TagMenus, TheResultIsSilentWhereNoSuccessIsToBeTold) {
  AddThree();
  session_.success_messages = false;
  interaction_.WillAnswer(Answer::kYes);
  mnuKillID3v11Tag_Click(bench_);
  EXPECT_EQ(Flags().front(), "011 new");
}

TEST_F(TagMenus, RetryRemovesAgainIgnoreEndsTheBoxes) {
  AddTrack("late.mp3", "");
  AddTrack("gone.mp3", "");
  AddTrack("lost.mp3", "");
  AddTrack("there.mp3", audio_ + v1_);
  ShowAll();
  interaction_.on_box = [&](const MessageBox& box) {
    EXPECT_FALSE(session_.journal.InGroup()) << "nothing is left open behind a box";
    if (box.title == "Error" && !std::filesystem::exists(paths_[0])) {
      folder_.Write("music/late.mp3", audio_ + v1_);
    }
  };
  for (const Answer answer :
       {Answer::kYes, Answer::kRetry, Answer::kRetry, Answer::kIgnore, Answer::kOk}) {
    interaction_.WillAnswer(answer);
  }
  mnuKillID3v11Tag_Click(bench_);
  const std::string failure = "Error: \nTag can't be removed!!\n\nClick Ignore to ignore all";
  EXPECT_EQ(Boxes(), (Texts{"Tag Remover: Are you sure to remove the ID3v1 tags of  4 items(s)?",
                            failure, failure, failure,
                            "Tunemeadow: ID3v1.x Tags of 2/4 file(s) successfully removed.\n"
                            "Elapsed Time: #"}));
  EXPECT_EQ(Flags(), (Texts{"011 new", "111 old", "111 old", "011 new"}));
  EXPECT_EQ(Bytes("late.mp3"), audio_);
}

TEST_F(TagMenus, AbortLeavesTheLoopWithWhatIsDone) {
  const std::string torn = "ID3" + std::string("\3\0\0\0\0\x7F\x7F", 7) + audio_;
  AddTrack("torn.mp3", torn + lyrics_ + v1_);
  AddTrack("there.mp3", v2_ + audio_ + v1_);
  ShowAll();
  interaction_.WillAnswer(Answer::kYes);
  interaction_.WillAnswer(Answer::kAbort);
  interaction_.WillAnswer(Answer::kOk);
  mnuKillAllTags_Click(bench_);
  const std::string failure = Boxes().at(1);
  const std::string end = "\n Tag can't be removed!!\n\nClick Ignore to ignore all";
  ASSERT_GT(failure.size(), end.size() + 10) << "the reason is told first: " << failure;
  EXPECT_EQ(failure.substr(failure.size() - end.size()), end);
  EXPECT_EQ(Boxes().back().substr(0, 24), "Tunemeadow:  Tags of 1/2");
  EXPECT_EQ(Bytes("torn.mp3"), torn + lyrics_) << "only the ID3v1 record, which came first";
  EXPECT_EQ(Bytes("there.mp3"), v2_ + audio_ + v1_);
  EXPECT_EQ(Flags(), (Texts{"011 new", "111 old"}));
}

TEST_F(TagMenus, CancelEndsTheLoopAndTellsTheCount) {
  for (const char* name : {"a.mp3", "b.mp3", "c.mp3"}) AddTrack(name, audio_ + v1_);
  ShowAll();
  interaction_.on_yield = [&](std::size_t yield) { session_.CancelRequested = yield == 3; };
  interaction_.WillAnswer(Answer::kYes);
  interaction_.WillAnswer(Answer::kOk);
  mnuKillID3v11Tag_Click(bench_);
  EXPECT_EQ(Boxes().back(),
            "Tunemeadow: ID3v1.x Tags of 2/3 file(s) successfully removed.\nElapsed Time: #");
  EXPECT_EQ(Flags(), (Texts{"011 new", "011 new", "111 old"}));
}

TEST_F(TagMenus, TheEditorAndItsPictureFollow) {
  AddTrack("a.mp3", Id3v2Tag(PictureFrame(FakeJpeg())) + audio_ + v1_);
  AddTrack("b.mp3", audio_);
  ShowAll();
  Edit(0);
  bench_.details.hasid3v1 = bench_.details.hasid3v2 = "1";
  ASSERT_FALSE(bench_.details.picture.data.empty());
  interaction_.WillAnswer(Answer::kYes);
  interaction_.WillAnswer(Answer::kOk);
  mnuKillAllTags_Click(bench_);
  EXPECT_EQ(bench_.details.hasid3v1 + bench_.details.hasid3v2, "00");
  EXPECT_TRUE(bench_.details.picture.data.empty());
}

TEST_F(TagMenus, APlaylistThatHoldsATrackTwiceShowsItAlike) {
  AddTrack("a.mp3", audio_ + v1_);
  ShowAll();
  bench_.playlist_in_view = true;
  CellTable twice(kTrackFields);
  const std::string uid = Rows("select uid from mp3sTabelle").front();
  for (int i = 0; i < 2; ++i) {
    AppendCells(twice, {{Field::uid, uid}, {Field::location, paths_[0]}, {Field::hasid3v1, "1"}});
  }
  bench_.ListView3.Fill(std::move(twice));
  bench_.ListView3.SetSelected(0, 1, true);
  interaction_.WillAnswer(Answer::kYes);
  interaction_.WillAnswer(Answer::kOk);
  mnuKillID3v11Tag_Click(bench_);
  EXPECT_EQ(Cells(), (Texts{"0", "0"}));
  EXPECT_EQ(bench_.ListView1.Cell(0, Field::hasid3v1), "0") << "the search result behind it";
  EXPECT_EQ(Boxes().back().substr(0, 31), "Tunemeadow: ID3v1.x Tags of 1/2");
}

TEST_F(TagMenus, AStatementThatFailsIsToldAndTheCellsStay) {
  AddTrack("a.mp3", audio_ + v1_);
  ShowAll();
  Run("drop table mp3sTabelle");
  for (const Answer answer : {Answer::kYes, Answer::kOk, Answer::kOk}) {
    interaction_.WillAnswer(answer);
  }
  mnuKillID3v11Tag_Click(bench_);
  const std::string text = Boxes().at(1);
  EXPECT_NE(
      text.find("no such table: MP3sTabelle\nUpdate MP3sTabelle set hasid3v1=0,datetimeoffile ='"),
      std::string::npos)
      << text;
  EXPECT_EQ(Cells(), Texts{"111"});
  EXPECT_EQ(Boxes().back().substr(0, 31), "Tunemeadow: ID3v1.x Tags of 1/1");
}

}  // namespace
}  // namespace tunemeadow
