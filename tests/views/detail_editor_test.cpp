// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/detail_editor.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/paths.h"
#include "files/file_facts.h"
#include "support/mp3_builder.h"
#include "support/scripted_interaction.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"
#include "views/workbench.h"

namespace tunemeadow {
namespace {

struct DetailWatcher : WorkbenchWatcher {
  int details = 0, pictures = 0, selections = 0;
  void DetailsChanged() override { ++details; }
  void PictureChanged() override { ++pictures; }
  void SelectionSet() override { ++selections; }
};

/// A list of tracks whose cells hold "<field>-<row>", over real files.
class Details : public testing::Test {
 protected:
  Details() { bench_.watcher = &watcher_; }

  void Fill(const std::vector<std::string>& locations, const std::string& haspic = "1") {
    CellTable rows(kSelectedFields);
    for (std::size_t i = 0; i < locations.size(); ++i) {
      std::array<std::string, kSelectedFields> cells;
      for (std::size_t field = 0; field < kSelectedFields; ++field) {
        cells[field] = std::string(kTrackFieldTable[field].name) + "-" + std::to_string(i);
      }
      cells[IndexOf(TrackField::uid)] = std::to_string(100 + i);
      cells[IndexOf(TrackField::location)] = locations[i];
      cells[IndexOf(TrackField::haspic)] = haspic;
      rows.AppendRow(std::vector<std::string_view>(cells.begin(), cells.end()));
    }
    bench_.ListInView().Fill(std::move(rows));
  }

  void Click(std::size_t row) {
    bench_.ListInView().SelectOnly(row);
    bench_.ListInView().SetFocusedRow(row);
    ListView1_ItemClick(bench_, row);
  }

  TempFolder folder_;
  Session session_{folder_.Path(), "tunemeadow"};
  ScriptedInteraction interaction_;
  ScriptedWorld world_;
  Workbench bench_{session_, interaction_, world_};
  DetailWatcher watcher_;
  DetailEditor& details_ = bench_.details;
};

TEST_F(Details, AClickCopiesTheRowIntoThePanels) {
  Fill({"/nowhere/a.mp3", "/nowhere/b.mp3"});
  Click(1);
  EXPECT_EQ(details_.uid, 101);
  EXPECT_TRUE(details_.enabled);
  using enum TrackField;
  for (const TrackField field :
       {Songname, Artist,   album,     genrereal, year,           trackno, BPM,  Playtime,
        quality,  Filesize, Comment,   Situation, preference,     tempo,   Mood, bios,
        Lyrics,   composer, copyright, encodedby, originalartist, url}) {
    const std::string name(kTrackFieldTable[IndexOf(field)].name);
    EXPECT_EQ(details_.texts[field], name + "-1");
  }
  EXPECT_EQ(details_.texts[location], "/nowhere/b.mp3");
  EXPECT_EQ(watcher_.details, 1);
}

TEST_F(Details, AutoCommentRulesTheCommentField) {
  Fill({"/nowhere/a.mp3"});
  for (const bool automatic : {true, false}) {
    session_.preferences.chkAutoComment = automatic;
    Click(0);
    EXPECT_EQ(details_.comment_enabled, !automatic);
  }
}

TEST_F(Details, SeveralRowsKeepTheTextsAndSwitchToSaveAll) {
  Fill({"/nowhere/a.mp3", "/nowhere/b.mp3"});
  Click(0);
  bench_.ListView1.SetSelected(1, 1, true);
  ListView1_ItemClick(bench_, 1);
  EXPECT_TRUE(details_.save_all);
  EXPECT_EQ(details_.uid, 100);
  details_.texts[TrackField::album] = details_.texts[TrackField::url] = "for many";
  ListView1_ItemClick(bench_, 0);
  ChangeDetailSaveNo(bench_);
  EXPECT_EQ(details_.texts[TrackField::album] + details_.texts[TrackField::url], "album-0url-0");
  ReloadDetails(bench_);
  EXPECT_EQ(details_.uid, 100);
  bench_.ListView1.SelectOnly(1);
  ReloadDetails(bench_);
  EXPECT_EQ(details_.uid, 101) << "a row that is not selected is not the one that is meant";
  Click(1);
  EXPECT_FALSE(details_.save_all);
  EXPECT_EQ(details_.uid, 101);
}

TEST_F(Details, ChangesAreAskedForBeforeAnotherRowComesInTheirPlace) {
  struct Case {
    bool keyed, changed;
    std::size_t clicked;
    std::optional<Answer> answer;  ///< none: nothing is asked
    const char* shown;
  };
  const std::vector<Case> cases = {
      {true, true, 1, Answer::kYes, "Songname-1"},   {true, true, 1, Answer::kNo, "Songname-1"},
      {true, false, 1, std::nullopt, "Songname-1"},  {false, true, 1, std::nullopt, "Songname-1"},
      {false, false, 0, std::nullopt, "Songname-0"}, {true, true, 0, std::nullopt, "mine"},
  };
  for (const Case& each : cases) {
    interaction_.boxes.clear();
    std::vector<std::string> saved;
    bench_.save_details = [&](Workbench& bench) {
      saved.push_back(bench.details.texts[TrackField::Songname]);
      bench.details.DetailsChanged = false;
    };
    Fill({"/nowhere/a.mp3", "/nowhere/b.mp3"});
    details_.DetailsKeyed = details_.DetailsChanged = false;
    Click(0);
    details_.texts[TrackField::Songname] = "mine";
    details_.DetailsKeyed = each.keyed;
    details_.DetailsChanged = each.changed;
    if (each.answer) interaction_.WillAnswer(*each.answer);
    Click(each.clicked);
    EXPECT_EQ(interaction_.BoxTexts(), each.answer
                                           ? std::vector<std::string>{"Save: Save your changes?"}
                                           : std::vector<std::string>{});
    EXPECT_EQ(saved, std::vector<std::string>(each.answer == Answer::kYes ? 1 : 0, "mine"));
    EXPECT_EQ(details_.texts[TrackField::Songname], each.shown);
    EXPECT_EQ(details_.DetailsChanged, details_.texts[TrackField::Songname] == "mine");
  }
}

TEST_F(Details, ARecordThatCouldNotBeSavedStaysWithItsRow) {
  Fill({"/nowhere/a.mp3", "/nowhere/b.mp3"});
  bench_.save_details = [](Workbench&) {};
  Click(0);
  details_.texts[TrackField::Songname] = "mine";
  details_.DetailsKeyed = details_.DetailsChanged = true;
  interaction_.WillAnswer(Answer::kYes);
  Click(1);
  EXPECT_EQ(details_.texts[TrackField::Songname], "mine");
  EXPECT_EQ(bench_.ListView1.SelectedRows(), std::vector<std::size_t>{0});
  EXPECT_EQ(bench_.ListView1.FocusedRow(), 0U);
  bench_.ListView1.RemoveRows({0});
  interaction_.WillAnswer(Answer::kYes);
  Click(0);
  EXPECT_EQ(details_.texts[TrackField::Songname], "mine") << "though a search has not found it";
  EXPECT_TRUE(details_.DetailsChanged);
  EXPECT_EQ(bench_.ListView1.SelectedCount(), 0U);
  EXPECT_EQ(watcher_.selections, 2);
}

TEST_F(Details, SeveralRowsAreNotAskedFor) {
  Fill({"/nowhere/a.mp3", "/nowhere/b.mp3"});
  bench_.save_details = [](Workbench&) { FAIL(); };
  Click(0);
  EXPECT_EQ(details_.texts[TrackField::hasid3v1], "hasid3v1-0");
  details_.DetailsKeyed = details_.DetailsChanged = true;
  bench_.ListView1.SetSelected(1, 1, true);
  ListView1_ItemClick(bench_, 1);
  EXPECT_TRUE(details_.DetailsChanged);
}

TEST_F(Details, AnotherSelectionBeginsAnewWithOneOfItsOwnRows) {
  Fill({"/nowhere/a.mp3", "/nowhere/b.mp3", "/nowhere/c.mp3"});
  for (const std::size_t row : {0U, 1U}) {
    bench_.ListView1.SetCell(row, TrackField::album, "the same");
    bench_.ListView1.SetCell(row, TrackField::url, "");
  }
  const auto select = [&](std::size_t first, std::size_t last) {
    bench_.ListView1.ClearSelection();
    bench_.ListView1.SetSelected(first, last, true);
    ListView1_ItemClick(bench_, last);
  };
  const auto tick = [&] {
    details_.chosen[IndexOf(TrackField::album)] = true;
    details_.texts[TrackField::album] = "for many";
  };
  const auto state = [&] {
    return std::to_string(details_.uid) + details_.texts[TrackField::album] +
           (details_.chosen[IndexOf(TrackField::album)] ? " ticked" : "") +
           (details_.many.differs[IndexOf(TrackField::album)] ? " differs" : "");
  };
  Click(2);
  select(0, 1);
  EXPECT_EQ(state(), "100the same") << "the loaded row is not among them";
  EXPECT_TRUE(details_.many.differs[IndexOf(TrackField::Artist)]);
  EXPECT_FALSE(details_.many.differs[IndexOf(TrackField::url)]);
  tick();
  select(0, 1);
  EXPECT_EQ(state(), "100for many ticked") << "the same rows";
  select(0, 2);
  EXPECT_EQ(state(), "100the same differs");
  tick();
  bench_.ListView1.ClearSelection();
  EndModeForMany(bench_);
  EXPECT_FALSE(details_.save_all);
  EXPECT_EQ(state(), "100the same");
}

TEST_F(Details, TheLyrics3BlockIsThatOfTheFileAlone) {
  const std::string with =
      folder_.Write("with.mp3", Mp3File().Frames(3).Lyrics3({{"LYR", "la la"}}).Id3v1({}).Build());
  const std::string without = folder_.Write("without.mp3", Mp3File().Frames(3).Id3v1({}).Build());
  Fill({with, without, "/nowhere/a.mp3"}, "0");
  Click(0);
  EXPECT_EQ(details_.lyrics3.Lyrics3Lyr, "la la");
  Click(1);
  EXPECT_EQ(details_.lyrics3.Lyrics3Lyr, "");
  EXPECT_EQ(details_.lyrics3.Lyrics3SizeText, "");
  Click(0);
  Click(2);
  EXPECT_EQ(details_.lyrics3.Lyrics3Lyr, "") << "a missing file has none";
}

TEST_F(Details, ThePictureIsReadKeptAsAFileAndClearedAgain) {
  const auto picture = [&](const std::string& description) {
    return Id3v2Tag(PictureFrame(FakeJpeg(), "image/jpeg", description)) +
           Mp3File().Frames(3).Build();
  };
  const std::string a = folder_.Write("a.mp3", picture("Fr\xFChling"));
  const std::string b = folder_.Write("b.mp3", picture(""));
  const std::string none = folder_.Write("c.mp3", Mp3File().Frames(3).Build());
  Fill({a, b, none, "/nowhere/a.mp3"});
  Click(0);
  EXPECT_EQ(details_.picture.data, FakeJpeg());
  EXPECT_EQ(details_.picture_path, a);
  EXPECT_EQ(details_.picture_file, folder_.Path("pic." + details_.picture.extension));
  EXPECT_EQ(folder_.Read("pic." + details_.picture.extension), FakeJpeg());
  EXPECT_EQ(PictureText(details_), "Frühling");
  Click(1);
  EXPECT_EQ(PictureText(details_), "no description");
  for (const std::size_t row : {2U, 3U}) {
    Click(0);
    Click(row);
    EXPECT_EQ(PictureText(details_), "no picture");
    EXPECT_EQ(details_.picture_file, "");
    EXPECT_FALSE(MyFileExists(folder_.Path("pic.jpeg"))) << "its copy goes with the picture";
  }
  bench_.show_picture = false;
  Click(0);
  EXPECT_TRUE(details_.picture.data.empty()) << "the pane is not shown";
  bench_.show_picture = true;
  Fill({a}, "0");
  Click(0);
  EXPECT_TRUE(details_.picture.data.empty()) << "the row has none";
}

TEST_F(Details, NextAndPreviousWalkTheListInViewToItsEnds) {
  bench_.playlist_in_view = true;
  Fill({"/nowhere/a.mp3", "/nowhere/b.mp3"});
  Click(0);
  bench_.ListView3.SetSelected(0, 1, true);
  cmdItemBlaetter_Click(bench_, 0);
  EXPECT_EQ(details_.uid, 101);
  EXPECT_EQ(bench_.ListView3.SelectedRows(), (std::vector<std::size_t>{1}));
  EXPECT_EQ(bench_.ListView3.FocusedRow(), 1U);
  EXPECT_EQ(watcher_.selections, 1);
  interaction_.WillAnswer(Answer::kOk);
  cmdItemBlaetter_Click(bench_, 0);
  cmdItemBlaetter_Click(bench_, 1);
  EXPECT_EQ(details_.uid, 100);
  interaction_.WillAnswer(Answer::kOk);
  cmdItemBlaetter_Click(bench_, 1);
  bench_.ListView3.Clear();
  interaction_.WillAnswer(Answer::kOk);
  cmdItemBlaetter_Click(bench_, 0);
  EXPECT_EQ(interaction_.BoxTexts(),
            (std::vector<std::string>{"Error: no next entry!", "Error: no previuos entry!",
                                      "Error: no next entry!"}));
}

}  // namespace
}  // namespace tunemeadow
