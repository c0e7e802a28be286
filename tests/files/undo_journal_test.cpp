// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/undo_journal.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "files/journal_log.h"
#include "files/journaled_file.h"
#include "support/child_process.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

using Outcome = UndoJournal::RolledBack::Outcome;

std::string Letters(std::size_t count, char first = 'a') {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += static_cast<char>(first + i % 20);
  return text;
}

/// A program's folder, a file of music beside it, and what a kill leaves: a journal object that
/// never ends its group, while another one starts again in the same folder.
struct UndoJournalTest : testing::Test {
  TempFolder folder;
  std::string old_bytes = Letters(100'000);
  std::string path = folder.Write("music/a.mp3", old_bytes);
  UndoJournal journal{folder.Path()};

  [[nodiscard]] std::string Rewrite(const std::vector<FilePiece>& pieces, std::int64_t length) {
    JournaledFile file(journal);
    const std::string fault = file.Open(path);
    return fault.empty() ? file.Rewrite(pieces, length) : fault;
  }

  [[nodiscard]] std::string Bytes() const { return folder.Read("music/a.mp3"); }

  struct KilledWriter {
    explicit KilledWriter(const TempFolder& folder, const RunIdentity& run = ThisRun())
        : journal(folder.Path(), run) {
      journal.BeginGroup();
    }
    void Prepare(std::initializer_list<std::string> paths, std::int64_t growth = 0) {
      for (const std::string& path : paths) journal.Prepare(path, head, growth);
      ASSERT_TRUE(journal.SyncPrepared());
    }
    void Write(const std::string& path, const std::vector<FilePiece>& pieces,
               std::int64_t length = 100'000) {
      ASSERT_EQ(file.Open(path), "");
      ASSERT_EQ(file.Rewrite(pieces, length), "");
    }

    const std::vector<ByteRange> head = {{0, 1000}};
    UndoJournal journal;
    JournaledFile file{journal};
  };

  [[nodiscard]] std::vector<UndoJournal::RolledBack> StartAnew() const {
    return UndoJournal(folder.Path()).RollBack();
  }

  /// After the power was cut.
  [[nodiscard]] std::vector<UndoJournal::RolledBack> StartTheMachineAnew() const {
    return UndoJournal(folder.Path(), AnotherRun(0)).RollBack();
  }

  /// A run of the machine that began so many seconds ago.
  static RunIdentity AnotherRun(std::int64_t ago) {
    return {.machine_run = "another run", .machine_began = time(nullptr) - ago};
  }
};

TEST_F(UndoJournalTest, AfterARewriteTheFileIsNewAndNothingIsLeftToUndo) {
  const std::string head = "HEAD";
  ASSERT_EQ(Rewrite({{0, head}, {100'000, "TAIL"}}, 100'004), "");
  EXPECT_EQ(Bytes(), "HEAD" + old_bytes.substr(4) + "TAIL");
  EXPECT_EQ(std::filesystem::file_size(folder.Path("undo.journal")), 0U);
  EXPECT_TRUE(StartAnew().empty());
  EXPECT_EQ(Bytes(), "HEAD" + old_bytes.substr(4) + "TAIL");
}

TEST_F(UndoJournalTest, WhatIsNotEndedIsUndoneWhateverItDidToTheFile) {
  const std::string whole = Letters(150'000, 'A');
  const std::vector<std::pair<std::vector<FilePiece>, std::int64_t>> rewrites = {
      {{{0, "HEAD"}}, 100'000},
      {{{99'990, "over the end of the file"}}, 100'014},
      {{{0, whole}}, 150'000},
      {{}, 5},
      {{{0, std::string_view(whole).substr(0, 70)}}, 70},
  };
  struct stat before {};
  ASSERT_EQ(stat(path.c_str(), &before), 0);
  for (const auto& [pieces, length] : rewrites) {
    KilledWriter killed(folder);
    killed.Write(path, pieces, length);
    // A second rewrite in the same group goes further than the first.
    ASSERT_EQ(killed.file.Rewrite(std::vector<FilePiece>{{2, "xyz"}}, length - 1), "");
    ASSERT_NE(Bytes(), old_bytes);

    const auto files = StartAnew();
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].outcome, Outcome::kUndone);
    EXPECT_EQ(files[0].path, path);
    EXPECT_EQ(Bytes(), old_bytes);
    struct stat after {};
    ASSERT_EQ(stat(path.c_str(), &after), 0);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec) << "the old time is back as well";
    EXPECT_TRUE(StartAnew().empty()) << "it is undone once";
  }
}

TEST_F(UndoJournalTest, InAGroupOneSyncServesManyFilesAndADoneFileStaysNew) {
  const std::string second = folder.Write("music/b.mp3", old_bytes);
  KilledWriter killed(folder);
  killed.Prepare({path, second, folder.Path("music"), folder.Path("missing.mp3")}, 128);
  const std::int64_t prepared = killed.journal.GroupBytes();
  const std::string tail = Letters(128);
  for (const std::string& each : {path, second}) {
    killed.Write(each, {{500, "new"}, {100'000, tail}}, 100'128);
  }
  EXPECT_LT(killed.journal.GroupBytes(), prepared + 1000)
      << "what was prepared is not journaled again";
  killed.journal.Done(path);
  const std::string done = Bytes();

  const auto files = StartAnew();
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files[0].path, second);
  EXPECT_EQ(folder.Read("music/b.mp3"), old_bytes);
  EXPECT_EQ(Bytes(), done);
}

TEST_F(UndoJournalTest, ADoneFileWhoseBytesNeverReachedTheDiskIsUndone) {
  KilledWriter killed(folder);
  killed.Write(path, {{0, "HEAD"}});
  killed.journal.Done(path);
  folder.Write("music/a.mp3", "HE" + old_bytes.substr(2));  // what a power cut made of it

  ASSERT_EQ(StartTheMachineAnew().size(), 1U);
  EXPECT_EQ(Bytes(), old_bytes);
}

TEST_F(UndoJournalTest, WhatAnotherProgramWritesAfterAKillStaysUnlessTheFileWasInTheMiddle) {
  const std::string second = folder.Write("music/b.mp3", old_bytes);
  KilledWriter killed(folder);
  killed.Prepare({path, second});
  killed.Write(path, {{0, "HEAD"}});
  killed.journal.Done(path);
  const std::string foreign = "ANOTHER" + old_bytes.substr(7);
  folder.Write("music/a.mp3", foreign);  // done
  folder.Write("music/b.mp3", foreign);  // not begun
  EXPECT_TRUE(StartAnew().empty());
  EXPECT_EQ(Bytes(), foreign);
  EXPECT_EQ(folder.Read("music/b.mp3"), foreign);
}

TEST_F(UndoJournalTest, AfterAPowerCutWhatSomebodyElseHasWrittenStaysButNotWhatARollBackHas) {
  const std::string foreign = "ANOTHER" + old_bytes.substr(7);
  struct Case {
    const char* what;
    bool begun;
    std::int64_t up_for;   ///< seconds since the machine was started
    const char* noted_in;  ///< the run in which a roll-back had begun
    bool stays;
  };
  for (const Case& row : {Case{"written since", true, 3600, nullptr, true},
                          Case{"written since, never begun", false, 3600, nullptr, true},
                          Case{"written before", true, 0, nullptr, false},
                          Case{"a roll-back of this run", true, 3600, "another run", false},
                          Case{"a roll-back of a run before", true, 3600, "a third run", true}}) {
    folder.Write("music/a.mp3", old_bytes);
    std::filesystem::last_write_time(
        path, std::filesystem::file_time_type::clock::now() - std::chrono::hours(2));
    KilledWriter killed(folder);
    killed.Prepare({path});
    if (row.begun) killed.Write(path, {{0, "HEAD"}});
    folder.Write("music/a.mp3", foreign);
    if (row.noted_in != nullptr) {
      std::string log = folder.Read("undo.journal");
      AppendRecord(RollBackRecord(path, {.machine_run = row.noted_in}), {}, log);
      folder.Write("undo.journal", log);
    }
    const auto files = UndoJournal(folder.Path(), AnotherRun(row.up_for)).RollBack();
    ASSERT_EQ(files.size(), 1U) << row.what;
    EXPECT_EQ(files[0].outcome, row.stays ? Outcome::kChanged : Outcome::kUndone) << row.what;
    EXPECT_EQ(Bytes(), row.stays ? foreign : old_bytes) << row.what;
    EXPECT_EQ(std::filesystem::exists(files[0].kept), row.stays) << row.what;
  }
}

TEST_F(UndoJournalTest, WhatARunningProcessWritesIsLeftAlone) {
  WaitingChild child([&] {
    auto* const running = new KilledWriter(folder);
    running->Write(path, {{0, "HEAD"}});
    return !HasFailure();
  });
  EXPECT_TRUE(journal.RollBack().empty());
  EXPECT_EQ(Bytes(), "HEAD" + old_bytes.substr(4));
  EXPECT_NE(Rewrite({{0, "x"}}, 100'000), "") << "the file is in use";
  child.Kill();
  EXPECT_EQ(journal.RollBack().size(), 1U);
  EXPECT_EQ(Bytes(), old_bytes);
}

TEST_F(UndoJournalTest, AJournalThatNamesNoProcessIsRolledBackInTheSameRun) {
  KilledWriter killed(folder, {.machine_run = ThisRun().machine_run});
  killed.Write(path, {{0, "HEAD"}});
  ASSERT_EQ(StartAnew().size(), 1U);
  EXPECT_EQ(Bytes(), old_bytes);
}

TEST_F(UndoJournalTest, BytesThatMoveGoBlockByBlockAndCanBeUndone) {
  const std::string big = Letters(1'700'001);  // some blocks and a rest
  const auto length = static_cast<std::int64_t>(big.size());
  for (const auto& [from, to] : std::vector<std::pair<std::int64_t, std::int64_t>>{
           {10, 17}, {0, 900'000}, {900'000, 5}, {17, 10}, {10, 10}}) {
    folder.Write("music/a.mp3", big);
    KilledWriter killed(folder);
    ASSERT_EQ(killed.file.Open(path), "");
    const std::string head(static_cast<std::size_t>(to), '#');
    const FilePiece piece{0, head};
    ASSERT_EQ(killed.file.Rewrite({&piece, 1}, to + length - from, {from, to, length - from}), "");
    EXPECT_TRUE(Bytes() == head + big.substr(static_cast<std::size_t>(from))) << from << ' ' << to;
    ASSERT_EQ(StartAnew().size(), 1U);
    EXPECT_TRUE(Bytes() == big) << from << ' ' << to;
  }
}

TEST_F(UndoJournalTest, ATornEndOfTheJournalUndoesNothingAndHidesNothing) {
  KilledWriter killed(folder);
  killed.Write(path, {{0, "HEAD"}});
  const std::string first = folder.Read("undo.journal");
  ASSERT_EQ(killed.file.Rewrite(std::vector<FilePiece>{{5000, "MORE"}}, 100'000), "");
  const std::string both = folder.Read("undo.journal");
  // The second record never got whole to the disk, so its write never began.
  folder.Write("music/a.mp3", "HEAD" + old_bytes.substr(4));
  for (const std::size_t size :
       {first.size(), first.size() + 1, first.size() + 24, both.size() - 1}) {
    folder.Write("music/a.mp3", "HEAD" + old_bytes.substr(4));
    folder.Write("undo.journal", both.substr(0, size));
    ASSERT_EQ(StartAnew().size(), 1U) << size;
    EXPECT_EQ(Bytes(), old_bytes) << size;
  }
  std::string flipped = both;
  flipped[200] ^= 1;
  folder.Write("undo.journal", flipped);
  EXPECT_TRUE(StartAnew().empty()) << "a record that is not what was written is not believed";
}

TEST_F(UndoJournalTest, AFileThatSomebodyElseHasChangedOrRemovedIsLeftAndTheJournalKept) {
  for (const bool removed : {false, true}) {
    folder.Write("music/a.mp3", old_bytes);
    KilledWriter killed(folder);
    killed.Write(path, {{0, "HEAD"}});
    if (removed) {
      std::filesystem::remove(path);
    } else {
      folder.Write("music/a.mp3", "another song");
    }
    const auto files = StartAnew();
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].outcome, removed ? Outcome::kUnreachable : Outcome::kChanged);
    if (!removed) {
      EXPECT_EQ(Bytes(), "another song");
    }
    EXPECT_TRUE(StartAnew().empty()) << "it is told once";
  }
  EXPECT_TRUE(std::filesystem::exists(folder.Path("undo-kept-1.journal")));
  EXPECT_TRUE(std::filesystem::exists(folder.Path("undo-1.journal"))) << "the file may come back";
}

TEST_F(UndoJournalTest, AFileOnAnAbsentVolumeIsUndoneWhenItIsBackAndNotWrittenBefore) {
  // A process of its own: an object that goes out of scope ends its group.
  ASSERT_EQ(StatusOfChild([&] {
              journal.BeginGroup();
              return Rewrite({{0, "HEAD"}}, 100'000).empty() ? 0 : 1;
            }),
            0);
  std::filesystem::rename(folder.Path("music"), folder.Path("absent"));
  const auto files = journal.RollBack();
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files[0].outcome, Outcome::kUnreachable);

  EXPECT_NE(Rewrite({{1, "x"}}, 100'000), "");
  EXPECT_TRUE(journal.RollBack().empty()) << "still absent, which was told";
  std::filesystem::rename(folder.Path("absent"), folder.Path("music"));
  // The next save of this file finds it back, and undoes what was cut short before it begins.
  ASSERT_EQ(Rewrite({{10, "x"}}, 100'000), "");
  EXPECT_EQ(Bytes(), old_bytes.substr(0, 10) + "x" + old_bytes.substr(11));
  EXPECT_EQ(journal.TakeRolledBack().size(), 1U);
  EXPECT_TRUE(StartAnew().empty());
}

TEST_F(UndoJournalTest, AFileThatIsReplacedBetweenPreparingAndWritingIsNotWritten) {
  const std::vector<ByteRange> head = {{0, 1000}};
  journal.BeginGroup();
  journal.Prepare(path, head, 0);
  ASSERT_TRUE(journal.SyncPrepared());
  std::filesystem::remove(path);
  folder.Write("music/a.mp3", std::string(100'000, 'z'));
  EXPECT_NE(Rewrite({{0, "HEAD"}}, 100'000), "");
  EXPECT_EQ(journal.EndGroup(), "");
  EXPECT_EQ(Bytes(), std::string(100'000, 'z'));
}

TEST_F(UndoJournalTest, AFileOfTwoNamesIsJournaledOnce) {
  std::filesystem::create_directory_symlink(folder.Path("music"), folder.Path("linked"));
  const std::string other = folder.Path("linked/a.mp3");
  for (const bool prepared : {false, true}) {
    KilledWriter killed(folder);
    if (prepared) killed.Prepare({path, other});
    for (const std::string& name : {path, other}) {
      const std::string head_of_name = name.substr(name.size() - 12);
      killed.Write(name, {{0, head_of_name}, {2000, "x"}}, 90'000);
    }
    EXPECT_EQ(StartAnew().size(), 1U);
    EXPECT_EQ(Bytes(), old_bytes);
  }
}

TEST_F(UndoJournalTest, OnlyAFileThatIsThereIsOpened) {
  JournaledFile file(journal);
  EXPECT_NE(file.Open(folder.Path("missing.mp3")), "");
  EXPECT_FALSE(std::filesystem::exists(folder.Path("missing.mp3")));
  EXPECT_NE(file.Open(folder.Path("music")), "");
  ASSERT_EQ(file.Open(path), "");
  EXPECT_EQ(file.Length(), 100'000);
  EXPECT_EQ(file.Read(99'998, 2), old_bytes.substr(99'998));
  EXPECT_EQ(file.Read(99'999, 2), std::nullopt);
  EXPECT_EQ(file.Read(-1, 2), std::nullopt);
}

TEST(RollBackSentence, NamesTheFileAndWhatBecameOfIt) {
  EXPECT_EQ(RollBackSentence({}), "");
  const std::vector<UndoJournal::RolledBack> files = {{"/m/a.mp3", Outcome::kUndone},
                                                      {"/m/b.mp3", Outcome::kUndone},
                                                      {"/m/c.mp3", Outcome::kUnreachable}};
  EXPECT_EQ(RollBackSentence(files),
            "/m/b.mp3 and 1 other: their saves were cut short; the files are as they were before. "
            "/m/c.mp3: a save was cut short and cannot be undone now; it is tried again.");
  const std::vector<UndoJournal::RolledBack> changed = {
      {"/m/d.mp3", Outcome::kChanged, "/p/undo-kept-1.journal"}};
  EXPECT_EQ(RollBackSentence(changed),
            "/m/d.mp3: a save was cut short, but the file has changed since and was left. "
            "The old bytes are in undo-kept-1.journal.");
}

}  // namespace
}  // namespace tunemeadow
