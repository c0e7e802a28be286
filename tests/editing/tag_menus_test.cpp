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
  void ShowFour() {
    Run("delete from mp3sTabelle");
    Add("all.mp3", v2_ + audio_ + lyrics_ + v1_);
    Add("none.MP3", audio_);
    Add("v2.mp3", v2_ + audio_);
    Add("song.ogg", v2_ + audio_ + v1_);
    ShowAll();
  }
};

struct MenuCase {
  void (*click)(Workbench&);
  std::string tags, result;
  std::string all, v2;  ///< pieces of the files all.mp3 and v2.mp3 that stay
  std::string cells;    ///< of the four rows afterwards
  std::vector<std::size_t> changed;
};

TEST_F(TagMenus, EachTakesItsTagsFromTheMp3FilesAndCorrectsTheirRows) {
  const MenuCase cases[] = {
      {mnuKillID3v11Tag_Click, "ID3v1", "ID3v1.x Tags of 1/4", "2aL", "2a", "011 111 111 111", {0}},
      {mnuKillID3v2xTag_Click,
       "ID3v2",
       "ID3v2.x Tags of 2/4",
       "aL1",
       "a",
       "100 111 100 111",
       {0, 2}},
      {mnuKillLyrics3_Click, "LYRICS3", "LYRICS3 Tags of 1/4", "2a1", "2a", "111 111 111 111", {0}},
      {mnuKillAllTags_Click, "All", " Tags of 2/4", "a", "a", "000 111 100 111", {0, 0, 0, 2}}};
  for (const MenuCase& menu : cases) {
    SCOPED_TRACE(menu.tags);
    watcher_.rows.clear();
    interaction_.boxes.clear();
    ShowFour();
    const auto pieces = [&](const std::string& letters) {
      std::string bytes;
      for (const char letter : letters) {
        bytes += letter == '1' ? v1_ : letter == '2' ? v2_ : letter == 'L' ? lyrics_ : audio_;
      }
      return bytes;
    };
    Run(menu.click, {Answer::kYes, Answer::kOk});
    EXPECT_EQ(
        Boxes(),
        (Texts{"Tag Remover: Are you sure to remove the " + menu.tags + " tags of  4 items(s)?",
               "Tunemeadow: " + menu.result + " file(s) successfully removed.\nElapsed Time: #"}));
    EXPECT_EQ(Bytes("all.mp3"), pieces(menu.all));
    EXPECT_EQ(Bytes("v2.mp3"), pieces(menu.v2));
    EXPECT_EQ(Bytes("none.MP3"), audio_);
    EXPECT_EQ(Bytes("song.ogg"), v2_ + audio_ + v1_);
    Texts cells;
    for (const std::string_view row : Split(menu.cells, ' ')) cells.emplace_back(row);
    EXPECT_EQ(Cells(), cells);
    for (std::string& row : cells) row += " old";
    for (const std::size_t row : menu.changed) cells[row].replace(4, 3, "new");
    EXPECT_EQ(Flags(), cells);
    EXPECT_EQ(watcher_.rows, menu.changed);
    EXPECT_EQ(interaction_.Status(), "Ready.");
    EXPECT_FALSE(session_.journal.InGroup());
  }
  EXPECT_TRUE(interaction_.SawStatus("Updating file (removing ID3v2Tag), please wait..."));
  EXPECT_EQ(interaction_.loading_lines.front(), "working...");
}

TEST_F(TagMenus, NothingIsDoneWithoutAYesNothingAskedWithoutRowsNothingToldWhereSilent) {
  ShowFour();
  Run(mnuKillAllTags_Click, {Answer::kNo});
  EXPECT_EQ(Bytes("all.mp3"), v2_ + audio_ + lyrics_ + v1_);
  session_.success_messages = false;
  Run(mnuKillID3v11Tag_Click, {Answer::kYes});
  EXPECT_EQ(Flags().front(), "011 new");
  bench_.ListView1.ClearSelection();
  Run(mnuKillAllTags_Click, {});
}

TEST_F(TagMenus, RetryRemovesAgainIgnoreEndsTheBoxes) {
  const std::string late = Add("late.mp3", "");
  Add("gone.mp3", "");
  Add("lost.mp3", "");
  Add("there.mp3", audio_ + v1_);
  ShowAll();
  interaction_.on_box = [&](const MessageBox& box) {
    EXPECT_FALSE(session_.journal.InGroup()) << "nothing is left open behind a box";
    if (box.title == "Error" && !std::filesystem::exists(late)) {
      folder_.Write("music/late.mp3", audio_ + v1_);
    }
  };
  Run(mnuKillID3v11Tag_Click,
      {Answer::kYes, Answer::kRetry, Answer::kRetry, Answer::kIgnore, Answer::kOk});
  const std::string failure = "Error: \nTag can't be removed!!\n\nClick Ignore to ignore all";
  const std::string end =
      "Tunemeadow: ID3v1.x Tags of 2/4 file(s) successfully removed.\nElapsed Time: #";
  EXPECT_EQ(Boxes(), (Texts{"Tag Remover: Are you sure to remove the ID3v1 tags of  4 items(s)?",
                            failure, failure, failure, end}));
  EXPECT_EQ(Flags(), (Texts{"011 new", "111 old", "111 old", "011 new"}));
  EXPECT_EQ(Bytes("late.mp3"), audio_);
}

TEST_F(TagMenus, AbortLeavesTheLoopWithWhatIsDone) {
  Add("torn.mp3", torn_ + lyrics_ + v1_);
  Add("there.mp3", v2_ + audio_ + v1_);
  ShowAll();
  Run(mnuKillAllTags_Click, {Answer::kYes, Answer::kAbort, Answer::kOk});
  const std::string failure = Boxes().at(1);
  const std::string end = "\n Tag can't be removed!!\n\nClick Ignore to ignore all";
  EXPECT_TRUE(failure.ends_with(end)) << failure;
  EXPECT_GT(failure.size(), end.size() + 10) << "the reason is told first: " << failure;
  EXPECT_EQ(Boxes().back().substr(0, 24), "Tunemeadow:  Tags of 1/2");
  EXPECT_EQ(Bytes("torn.mp3"), torn_ + lyrics_) << "only the ID3v1 record, which came first";
  EXPECT_EQ(Bytes("there.mp3"), v2_ + audio_ + v1_);
  EXPECT_EQ(Flags(), (Texts{"011 new", "111 old"}));
}

TEST_F(TagMenus, CancelEndsTheLoopAndTellsTheCount) {
  for (const char* name : {"a.mp3", "b.mp3", "c.mp3"}) Add(name, audio_ + v1_);
  ShowAll();
  interaction_.on_yield = [&](std::size_t yield) { session_.CancelRequested = yield == 3; };
  session_.CancelRequested = true;  // of a command before
  Run(mnuKillID3v11Tag_Click, {Answer::kYes, Answer::kOk});
  EXPECT_EQ(Boxes().back(),
            "Tunemeadow: ID3v1.x Tags of 2/3 file(s) successfully removed.\nElapsed Time: #");
  EXPECT_EQ(Flags(), (Texts{"011 new", "011 new", "111 old"}));
}

TEST_F(TagMenus, TheEditorAndItsPictureFollow) {
  Add("a.mp3", Id3v2Tag(PictureFrame(FakeJpeg())) + audio_ + v1_);
  DetailEditor& details = Edit();
  details.texts[TrackField::hasid3v1] = details.texts[TrackField::hasid3v2] = "1";
  ASSERT_FALSE(details.picture.data.empty());
  Run(mnuKillAllTags_Click, {Answer::kYes, Answer::kOk});
  EXPECT_EQ(details.texts[TrackField::hasid3v1] + details.texts[TrackField::hasid3v2], "00");
  EXPECT_TRUE(details.picture.data.empty());
}

TEST_F(TagMenus, APlaylistThatHoldsATrackTwiceShowsItAlike) {
  Add("a.mp3", audio_ + v1_);
  Show();
  bench_.playlist_in_view = true;
  bench_.ListView3.Fill(RowsOf({0, 0}));
  bench_.ListView3.SetSelected(0, 1, true);
  Run(mnuKillID3v11Tag_Click, {Answer::kYes, Answer::kOk});
  EXPECT_EQ(Cells(), (Texts{"011", "011"}));
  EXPECT_EQ(bench_.ListView1.Cell(0, TrackField::hasid3v1), "0") << "the search result behind it";
  EXPECT_EQ(Boxes().back().substr(0, 31), "Tunemeadow: ID3v1.x Tags of 1/2");
}

TEST_F(TagMenus, TheRowIsToldOnceTheFileHasLostAllItsTags) {
  Add("a.mp3", v2_ + audio_ + v1_);
  ShowAll();
  Run("drop table mp3sTabelle");
  interaction_.on_box = [&](const MessageBox& box) {
    if (box.text.starts_with("no such table")) {
      EXPECT_EQ(Bytes("a.mp3"), audio_);
    }
  };
  Run(mnuKillAllTags_Click, {Answer::kYes, Answer::kOk, Answer::kOk, Answer::kOk});
  EXPECT_EQ(Boxes().size(), 4U) << "the question, two refused statements, the count";
}

TEST_F(TagMenus, AStatementThatFailsIsToldAndTheCellsStay) {
  Add("a.mp3", audio_ + v1_);
  ShowAll();
  Run("drop table mp3sTabelle");
  Run(mnuKillID3v11Tag_Click, {Answer::kYes, Answer::kOk, Answer::kOk});
  const std::string start =
      "Tunemeadow: no such table: MP3sTabelle\n"
      "Update MP3sTabelle set hasid3v1=0,datetimeoffile ='";
  EXPECT_EQ(Boxes().at(1).substr(0, start.size()), start);
  EXPECT_EQ(Cells(), Texts{"111"});
  EXPECT_EQ(Boxes().back().substr(0, 31), "Tunemeadow: ID3v1.x Tags of 1/1");
}

}  // namespace
}  // namespace tunemeadow
