// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/import.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

#include "core/dates.h"
#include "support/mp3_builder.h"
#include "support/other_program.h"
#include "views/catalogue_test.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum Answer;

/// A file of one frame, long enough to be analysed.
Mp3File Plain() { return Mp3File().Frames(1); }

class Import : public CatalogueTest {
 protected:
  Import() { session_.preferences.lblScan = music_.Path() + "/"; }

  /// Three files in one folder: the walk yields once, the loop before each file and at its end.
  void WriteThree() {
    for (const char* name : {"a.mp3", "b.mp3", "c.mp3"}) music_.Write(name, Plain());
  }

  ImportEnd Click(std::initializer_list<Answer> answers) {
    for (const Answer answer : answers) interaction_.WillAnswer(answer);
    return Command1_Click(bench_);
  }

  /// Imports all files of the folder.
  void ImportAll() { EXPECT_EQ(Click({kOk, kOk}), ImportEnd::kComplete); }

  /// One column of all rows, in the order of their keys.
  Texts Column(const std::string& name) {
    return Rows("select " + name + " from mp3sTabelle order by uid");
  }

  /// What only another program does to the catalogue.
  void RunBeside(const char* sql) { const OtherProgram other(folder_.Path("mp3s.mdb"), sql); }

  TempFolder music_;
};

TEST_F(Import, TellsEachStepAndPutsEverythingBackBeforeItsBoxes) {
  music_.Write("a.mp3", Plain());
  music_.Write("sub/b.mp3", Plain());
  music_.Write(".hidden/c.mp3", Plain());
  interaction_.WillAnswer(Answer::kOk);
  interaction_.WillAnswer(Answer::kOk);
  interaction_.on_box = [&](const MessageBox&) { interaction_.ExpectPutBack(); };
  std::vector<bool> enabled;
  interaction_.on_yield = [&](std::size_t) { enabled.push_back(interaction_.main_window_enabled); };
  EXPECT_EQ(Command1_Click(bench_), ImportEnd::kComplete);
  EXPECT_THAT(interaction_.BoxTexts(), ElementsAre("Tunemeadow: Import 2 File(s)?",
                                                   "Import: 2 File(s) successfully imported."));
  EXPECT_EQ(interaction_.boxes[0].buttons, Buttons::kOkCancel);
  EXPECT_THAT(interaction_.loading_lines, ElementsAre("searching files...", "Found: 0 Files.",
                                                      "Found: 1 Files.", "importing..."));
  interaction_.statuses.resize(6);
  EXPECT_THAT(interaction_.statuses,
              ElementsAre(music_.Path(""), music_.Path("sub/"), "Ready.", music_.Path("a.mp3"),
                          music_.Path("sub/b.mp3"), "Ready."));
  interaction_.progress.resize(3);
  EXPECT_THAT(interaction_.progress, ElementsAre(0, 1, 2));
  enabled.resize(5);
  EXPECT_THAT(enabled, ElementsAre(false, false, false, false, false));
  EXPECT_FALSE(session_.busy);
  EXPECT_EQ(session_.track_count, 2);
  EXPECT_EQ(bench_.ListView1.RowCount(), 2U) << "the search ran";
}

TEST_F(Import, SaysThatNothingWasFoundOrThatTheSearchWasCancelled) {
  EXPECT_EQ(Click({kOk}), ImportEnd::kNothingDone);
  interaction_.on_yield = [&](std::size_t) { session_.CancelRequested = true; };
  EXPECT_EQ(Click({kOk}), ImportEnd::kNothingDone);
  EXPECT_THAT(interaction_.BoxTexts(),
              ElementsAre("Tunemeadow: No File(s) found", "Tunemeadow: Search was cancelled!"));
  EXPECT_EQ(interaction_.boxes[0].icon, Icon::kExclamation);
  EXPECT_EQ(interaction_.boxes[1].icon, Icon::kInformation);
}

TEST_F(Import, AsksForAFolderWhereNoneIsSetAndDoesNothingWithoutOne) {
  WriteThree();
  session_.preferences.lblScan.clear();
  interaction_.WillChoose(std::nullopt);
  EXPECT_EQ(Command1_Click(bench_), ImportEnd::kNothingDone);
  interaction_.WillChoose(music_.Path());
  EXPECT_EQ(Click({kCancel}), ImportEnd::kNothingDone);
  EXPECT_EQ(session_.preferences.lblScan, music_.Path() + "/");
  EXPECT_THAT(interaction_.BoxTexts(), ElementsAre("Tunemeadow: Import 3 File(s)?"));
  EXPECT_THAT(Column("location"), IsEmpty());
}

TEST_F(Import, ACancelKeepsTheRowsSoFarAndIsAlwaysTold) {
  WriteThree();
  session_.success_messages = false;
  interaction_.on_yield = [&](std::size_t n) { session_.CancelRequested = n == 3; };
  EXPECT_EQ(Click({kOk, kOk}), ImportEnd::kCancelled);
  EXPECT_THAT(Column("location"), ElementsAre(music_.Path("a.mp3")));
  EXPECT_EQ(bench_.ListView1.RowCount(), 1U);
  // After the last file too: the loop goes one step further than there are files.
  const std::size_t before = interaction_.yields;
  interaction_.on_yield = [&](std::size_t n) { session_.CancelRequested = n == before + 5; };
  EXPECT_EQ(Click({kOk, kOk}), ImportEnd::kCancelled);
  EXPECT_THAT(interaction_.BoxTexts(),
              ElementsAre("Tunemeadow: Import 3 File(s)?",
                          "Import was cancelled!: 1/3 Files successfully imported.",
                          "Tunemeadow: Import 3 File(s)?",
                          "Import was cancelled!: 3/3 Files successfully imported."));
}

TEST_F(Import, TakesAGivenListOnceAndCountsItsEmptyEntries) {
  WriteThree();
  bench_.ImportList = {music_.Path("b.mp3"), "", music_.Path("nothing there.mp3")};
  bench_.ImportGivenFiles = true;
  session_.preferences.lblScan.clear();
  EXPECT_EQ(Click({kOk, kOk}), ImportEnd::kComplete);
  EXPECT_THAT(interaction_.BoxTexts(), ElementsAre("Tunemeadow: Import 3 File(s)?",
                                                   "Import: 3 File(s) successfully imported."));
  EXPECT_THAT(Column("location"),
              ElementsAre(music_.Path("b.mp3"), music_.Path("nothing there.mp3")));
  EXPECT_FALSE(bench_.ImportGivenFiles);
  EXPECT_THAT(bench_.ImportList, IsEmpty());

  bench_.ImportList = {music_.Path("b.mp3")};
  bench_.ImportGivenFiles = true;
  EXPECT_EQ(Click({kCancel}), ImportEnd::kNothingDone);
  EXPECT_FALSE(bench_.ImportGivenFiles) << "also where the person did not want it";
}

TEST_F(Import, NeitherAsksNorTellsForTheMonitorButForACancel) {
  WriteThree();
  session_.preferences.lblScan.clear();
  const auto import = [&](std::vector<std::string> list) {
    bench_.ImportList = std::move(list);
    bench_.ImportFromMonitor = true;
    const ImportEnd end = Command1_Click(bench_);
    EXPECT_FALSE(bench_.ImportFromMonitor);
    EXPECT_THAT(bench_.ImportList, IsEmpty());
    return end;
  };
  EXPECT_EQ(import({}), ImportEnd::kNothingDone);
  EXPECT_EQ(import({music_.Path("c.mp3"), music_.Path("a.mp3")}), ImportEnd::kComplete);
  EXPECT_THAT(Column("location"), ElementsAre(music_.Path("c.mp3"), music_.Path("a.mp3")));
  EXPECT_THAT(interaction_.boxes, IsEmpty());
  interaction_.on_yield = [&](std::size_t) { session_.CancelRequested = true; };
  interaction_.WillAnswer(Answer::kOk);
  EXPECT_EQ(import({music_.Path("b.mp3")}), ImportEnd::kCancelled);
  EXPECT_THAT(interaction_.BoxTexts(),
              ElementsAre("Import was cancelled!: 0/1 Files successfully imported."));
}

TEST_F(Import, ShowsWhatTheStoreRefusesAndGoesOn) {
  WriteThree();
  RunBeside(
      "create trigger refuse before insert on mp3sTabelle when new.location like '%b.mp3' "
      "begin select raise(abort, 'not this one'); end");
  session_.success_messages = false;
  interaction_.on_box = [&](const MessageBox&) { EXPECT_FALSE(interaction_.loading_shown); };
  EXPECT_EQ(Click({kOk, kOk}), ImportEnd::kComplete);
  ASSERT_EQ(interaction_.boxes.size(), 2U);
  EXPECT_TRUE(
      interaction_.boxes[1].text.starts_with("not this one\ninsert into mp3sTabelle (genrereal,"))
      << interaction_.boxes[1].text;
  EXPECT_THAT(Column("location"), ElementsAre(music_.Path("a.mp3"), music_.Path("c.mp3")));
  EXPECT_EQ(interaction_.loading_lines.back(), "importing...") << "its Cancel is there again";
  EXPECT_EQ(interaction_.Status(), "Ready.") << "a refused file is no known file";
}

TEST_F(Import, AKnownFileKeepsItsRowAndItsKey) {
  WriteThree();
  ImportAll();
  const auto before = Column("uid");
  Run("update mp3sTabelle set Mood='mine'");
  music_.Write("d.mp3", Plain());
  ImportAll();
  EXPECT_THAT(Column("mood"), ElementsAre("mine", "mine", "mine", ""));
  auto after = Column("uid");
  ASSERT_EQ(after.size(), 4U);
  after.pop_back();
  EXPECT_EQ(after, before);
  EXPECT_EQ(interaction_.boxes.back().text, "4 File(s) successfully imported.");
  EXPECT_EQ(interaction_.Status(), "3 File(s) already known.");
}

TEST_F(Import, KeepsEveryByteOfAPathAndEscapesOnlyTagText) {
  const std::string names[] = {"A \"live\".mp3", "O'Neil.mp3", "\xFF\xE9;|.mp3"};
  for (const std::string& name : names) {
    music_.Write(name, Mp3File().Id3v2({{"TPE1", "O'Neil"}, {"TIT2", "\"Album\""}}).Frames(1));
  }
  ImportAll();
  EXPECT_THAT(Column("location"),
              ElementsAre(music_.Path(names[0]), music_.Path(names[1]), music_.Path(names[2])));
  EXPECT_THAT(Column("artist"), ElementsAre("O''Neil", "O''Neil", "O''Neil"));
  EXPECT_THAT(bench_.search_items.lists[0].values, ElementsAre("O''Neil")) << "renewed";
  EXPECT_THAT(Column("Songname"), ElementsAre("''Album''", "''Album''", "''Album''"));
}

TEST_F(Import, PutsEverythingBackWhenSomethingFailsInTheMiddle) {
  bench_.ImportList = {music_.Write("a.mp3", Plain()), music_.Write("b.mp3", Plain())};
  bench_.ImportGivenFiles = bench_.ImportFromMonitor = true;
  interaction_.on_yield = [](std::size_t n) {
    if (n == 2) throw std::runtime_error("the sky fell");
  };
  interaction_.WillAnswer(Answer::kOk);
  interaction_.on_box = [&](const MessageBox&) {
    interaction_.ExpectPutBack();
    EXPECT_FALSE(bench_.ImportFromMonitor || bench_.ImportGivenFiles || session_.busy);
  };
  EXPECT_FALSE(RunAndTell(interaction_, [this] { Command1_Click(bench_); }));
  EXPECT_THAT(interaction_.BoxTexts(), ElementsAre("Tunemeadow: the sky fell"));
  EXPECT_THAT(Column("location"), ElementsAre(music_.Path("a.mp3")));
}

TEST_F(Import, ShowsALongSearchForAFrameAndThenThePathAgain) {
  const std::string path = music_.Write("a.mp3", std::string(250000, '\0'));
  ImportAll();
  const auto at = std::find(interaction_.statuses.begin(), interaction_.statuses.end(), path);
  ASSERT_GE(interaction_.statuses.end() - at, 4);
  EXPECT_THAT(std::vector(at, at + 4),
              ElementsAre(path, "Searching fileheader at position 100000/250000",
                          "Searching fileheader at position 200000/250000", path));
}

TEST_F(Import, ADropOfFilesTakesThoseThatThePatternHolds) {
  WriteThree();
  std::filesystem::create_directory(music_.Path("folder.mp3"));
  interaction_.WillAnswer(Answer::kOk);
  interaction_.WillAnswer(Answer::kOk);
  EXPECT_EQ(
      ImportDropped(bench_, {{music_.Path("c.mp3"), music_.Path("a.txt"), music_.Path("A.MP3"),
                              music_.Path("folder.mp3"), music_.Path("no extension")}}),
      ImportEnd::kComplete);
  EXPECT_THAT(Column("location"), ElementsAre(music_.Path("c.mp3"), music_.Path("A.MP3")));
  interaction_.WillAnswer(Answer::kCancel);
  EXPECT_EQ(ImportDropped(bench_, {{music_.Path("b.mp3")}}), ImportEnd::kNothingDone);
  interaction_.WillAnswer(Answer::kOk);
  EXPECT_EQ(ImportDropped(bench_, std::nullopt), ImportEnd::kNothingDone);
  EXPECT_THAT(
      interaction_.BoxTexts(),
      ElementsAre("Tunemeadow: Import 2 file(s)?", "Import: 2 File(s) successfully imported.",
                  "Tunemeadow: Import 1 file(s)?",
                  "Tunemeadow: This is not a supported OLE DataObject"));
  EXPECT_EQ(Column("location").size(), 2U);
}

TEST_F(Import, ADropOfOneFolderBecomesTheFolderToScan) {
  music_.Write("best.mp3/a.mp3", Plain());
  interaction_.WillAnswer(Answer::kOk);
  interaction_.WillAnswer(Answer::kOk);
  EXPECT_EQ(ImportDropped(bench_, {{music_.Path("best.mp3")}}), ImportEnd::kComplete);
  EXPECT_EQ(session_.preferences.lblScan, music_.Path("best.mp3"));
  EXPECT_THAT(Column("location"), ElementsAre(music_.Path("best.mp3/a.mp3")));
  EXPECT_EQ(interaction_.boxes[0].text, "Import 1 File(s)?");
}

TEST_F(Import, ADropWithoutAFileOfThePatternFindsNone) {
  music_.Write("one/a.mp3", Plain());
  music_.Write("two/b.mp3", Plain());
  const std::string picture = music_.Write("cover.jpg", "JPEG");
  const std::string before = session_.preferences.lblScan;
  for (const Texts& paths : {Texts{music_.Path("one"), music_.Path("two")}, Texts{picture}}) {
    interaction_.WillAnswer(Answer::kOk);
    EXPECT_EQ(ImportDropped(bench_, paths), ImportEnd::kNothingDone);
    EXPECT_EQ(interaction_.boxes.back().text, "No File(s) found");
    EXPECT_EQ(session_.preferences.lblScan, before);
  }
}

TEST_F(Import, TellsBehindItsClosingBoxWhatWasLeftOut) {
  music_.Write("a.mp3", Plain());
  music_.Write("a.ogg");
  ImportAll();
  EXPECT_EQ(interaction_.Status(), "Left out: ogg 1.");
  ImportAll();
  EXPECT_EQ(interaction_.Status(), "1 File(s) already known. Left out: ogg 1.");
  std::filesystem::remove(music_.Path("a.mp3"));
  EXPECT_EQ(Click({kOk}), ImportEnd::kNothingDone);
  EXPECT_EQ(interaction_.boxes.back().text, "No File(s) found");
  EXPECT_EQ(interaction_.Status(), "Left out: ogg 1.");
}

}  // namespace
}  // namespace tunemeadow
