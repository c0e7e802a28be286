// SPDX-License-Identifier: GPL-3.0-or-later
// Backup and compact copy: what stands in place of the catalogue after whatever went wrong.
#include "store/backup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "core/dates.h"
#include "files/file_facts.h"
#include "store/compact_copy.h"
#include "store/database.h"
#include "support/catalogue.h"
#include "support/child_process.h"
#include "support/other_program.h"

namespace tunemeadow {
namespace {

namespace fs = std::filesystem;

void RunOn(const std::string& path, const std::string& statement) {
  Connection connection;
  connection.Open(path);
  connection.Execute(statement);
}

std::string ValueIn(const std::string& path, const std::string& statement) {
  Connection connection;
  connection.Open(path);
  const CellTable rows = connection.Execute(statement).GetRows();
  return rows.Empty() ? "(none)" : std::string(rows.Cell(0, 0));
}

std::string TitleIn(const std::string& path) {
  return ValueIn(path, "select Songname from mp3sTabelle where uid=1");
}

/// Sets the title of the demonstration row.
void Retitle(const std::string& path, const std::string& title) {
  RunOn(path, "update mp3sTabelle set Songname='" + title + "' where uid=1");
}

/// Runs `work` in a child and kills it: what it left open stays as a crash leaves it.
template <typename Work>
void InAProcessThatDies(Work work) {
  StatusOfChild([&] {
    work();
    return raise(SIGKILL);
  });
}

void RetitleAndCrash(const std::string& path, const std::string& title) {
  InAProcessThatDies([&] {
    auto* const left_open = new Connection;
    left_open->Open(path);
    left_open->Execute("update mp3sTabelle set Songname='" + title + "' where uid=1");
  });
  ASSERT_TRUE(fs::exists(path + "-wal"));
}

class CareTest : public testing::Test {
 protected:
  TempFolder folder_;
  std::string catalogue_ = ProvideCatalogue(folder_);
  std::string backup_ = folder_.Path("mp3s.bak");
  std::string compact_ = folder_.Path("compact.mdb");
};

using MakeBackupTest = CareTest;

TEST_F(MakeBackupTest, HoldsWhatWasWrittenUpToACrashAndReplacesTheOldOne) {
  Retitle(catalogue_, "first");
  EXPECT_TRUE(MakeBackup(catalogue_, folder_.Path()));
  RetitleAndCrash(catalogue_, "second");
  EXPECT_TRUE(MakeBackup(catalogue_, folder_.Path()));
  EXPECT_EQ(TitleIn(backup_), "second");
  EXPECT_EQ(folder_.Count(), 2) << "something else was left in the folder";
}

TEST_F(MakeBackupTest, WhateverGoesWrongTheOldBackupStays) {
  Retitle(catalogue_, "good");
  ASSERT_TRUE(MakeBackup(catalogue_, folder_.Path()));
  RunOn(catalogue_, "insert into playlists (Playlist) values ('" + std::string(300000, 'x') + "')");
  const auto expect_refused = [&](const char* why) {
    EXPECT_FALSE(MakeBackup(catalogue_, folder_.Path())) << why;
    EXPECT_EQ(TitleIn(backup_), "good") << why;
    EXPECT_FALSE(fs::exists(backup_ + ".new")) << why;
  };
  // A disk that is full in the middle of the copy.
  InAProcessThatDies([&] {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {100000, 100000};
    setrlimit(RLIMIT_FSIZE, &limit);
    folder_.Write("refused", MakeBackup(catalogue_, folder_.Path()) ? "no" : "yes");
  });
  EXPECT_EQ(folder_.Read("refused"), "yes");
  EXPECT_EQ(TitleIn(backup_), "good");
  // A catalogue with a page of noise in its middle, one that lost a table, one that is gone.
  const std::string sound = folder_.Read("mp3s.mdb");
  std::string damaged = sound;
  damaged.replace(damaged.size() / 2, 20000, std::string(20000, '\x5a'));
  folder_.Write("mp3s.mdb", damaged);
  expect_refused("damaged");
  folder_.Write("mp3s.mdb", sound);
  RunOn(catalogue_, "drop table cdarchives");
  expect_refused("a table less");
  fs::remove(catalogue_);
  expect_refused("missing");
}

class TakeOverTest : public CareTest {
 protected:
  void MakeCopy() { ASSERT_EQ(MakeCompactCopy(catalogue_, compact_), ""); }

  void ExpectRefusedAndRemoved(const std::string& title) {
    EXPECT_FALSE(TakeOverCompactCopy(catalogue_, folder_.Path()));
    EXPECT_FALSE(fs::exists(compact_));
    EXPECT_EQ(TitleIn(catalogue_), title);
    EXPECT_EQ(folder_.Count(), 1);
  }
};

TEST_F(TakeOverTest, ACopyOfTheCatalogueAsItIsTakesItsPlace) {
  RunOn(catalogue_, "insert into playlists (Playlist) values ('" + std::string(300000, 'x') + "')");
  RunOn(catalogue_, "delete from playlists");
  const auto before = fs::file_size(catalogue_);
  fs::permissions(catalogue_, fs::perms::owner_read | fs::perms::owner_write);
  MakeCopy();
  EXPECT_EQ(fs::last_write_time(compact_), fs::last_write_time(catalogue_));
  // A look into the catalogue is not a write.
  EXPECT_EQ(TitleIn(catalogue_), "Monster");
  EXPECT_TRUE(TakeOverCompactCopy(catalogue_, folder_.Path()));
  EXPECT_LT(fs::file_size(catalogue_), before);
  EXPECT_EQ(fs::status(catalogue_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(folder_.Count(), 1);
  EXPECT_EQ(ValueIn(catalogue_, "select count(name) from sqlite_schema where name like 'compact%'"),
            "0");
  RunOn(catalogue_, "insert into playlists (Playlist) values ('y')");
  EXPECT_EQ(ValueIn(catalogue_, "select max(UIDPLaylist) as m from playlists"), "2");
  EXPECT_FALSE(TakeOverCompactCopy(catalogue_, folder_.Path()));
}

TEST_F(TakeOverTest, ACopyFromBeforeTheLastWriteIsRemoved) {
  MakeCopy();
  Retitle(catalogue_, "later");
  fs::last_write_time(compact_, fs::file_time_type::clock::now() + std::chrono::hours(1));
  ExpectRefusedAndRemoved("later");
}

TEST_F(TakeOverTest, AWriteThatACrashLeftInTheLogCounts) {
  MakeCopy();
  RetitleAndCrash(catalogue_, "crashed");
  ExpectRefusedAndRemoved("crashed");
}

TEST_F(TakeOverTest, ARestoredBackupWinsHoweverOldItIs) {
  Retitle(catalogue_, "old");
  fs::copy_file(catalogue_, folder_.Path("saved"));
  Retitle(catalogue_, "new");
  MakeCopy();
  fs::rename(folder_.Path("saved"), catalogue_);
  fs::last_write_time(catalogue_, fs::last_write_time(compact_));
  ExpectRefusedAndRemoved("old");
}

TEST_F(TakeOverTest, ACopyThatIsNoSoundCatalogueIsRemoved) {
  const auto stamp_and_expect = [&] {
    fs::last_write_time(compact_, fs::file_time_type::clock::now());
    ExpectRefusedAndRemoved("Monster");
  };
  MakeCopy();
  RunOn(compact_, "drop table playlists");
  stamp_and_expect();
  MakeCopy();
  std::string bytes = folder_.Read("compact.mdb");
  folder_.Write("compact.mdb", bytes.substr(0, bytes.size() / 2));
  stamp_and_expect();
  folder_.Write("compact.mdb", "no database");
  stamp_and_expect();
  folder_.Write("compact.mdb");
  stamp_and_expect();
}

TEST_F(TakeOverTest, ACopyFromElsewhereMustNotBeOlderThanTheCatalogue) {
  fs::copy_file(catalogue_, compact_);
  Retitle(compact_, "elsewhere");
  fs::last_write_time(compact_, fs::last_write_time(catalogue_) - std::chrono::seconds(1));
  const std::string refused = folder_.Read("compact.mdb");
  ExpectRefusedAndRemoved("Monster");
  folder_.Write("compact.mdb", refused);
  fs::last_write_time(compact_, fs::last_write_time(catalogue_));
  EXPECT_TRUE(TakeOverCompactCopy(catalogue_, folder_.Path()));
  EXPECT_EQ(TitleIn(catalogue_), "elsewhere");
}

TEST_F(TakeOverTest, NothingMovesWhileTheCatalogueIsMissingDamagedOrInUse) {
  MakeCopy();
  const auto expect_untouched = [&](const char* why) {
    EXPECT_FALSE(TakeOverCompactCopy(catalogue_, folder_.Path())) << why;
    EXPECT_TRUE(fs::exists(compact_)) << why;
  };
  {
    Connection other;
    other.Open(catalogue_);
    EXPECT_EQ(other.Execute("select uid from mp3sTabelle").GetRows().RowCount(), 1U);
    expect_untouched("in use");
  }
  const std::string sound = folder_.Read("mp3s.mdb");
  folder_.Write("mp3s.mdb", "junk");
  expect_untouched("damaged");
  fs::remove(catalogue_);
  expect_untouched("missing");
  folder_.Write("mp3s.mdb", sound);
  EXPECT_TRUE(TakeOverCompactCopy(catalogue_, folder_.Path()));
}

TEST_F(TakeOverTest, NoCopyIsMadeOfACatalogueThatIsWrittenToMeanwhile) {
  {
    // What is written stays in the log as long as the other program reads.
    const OtherProgram reader(catalogue_, "begin; select uid from mp3sTabelle");
    { const OtherProgram writer(catalogue_, "update mp3sTabelle set Songname='meanwhile'"); }
    EXPECT_EQ(MakeCompactCopy(catalogue_, compact_), "The catalogue is being written to.");
    EXPECT_FALSE(fs::exists(compact_) || fs::exists(compact_ + ".part"));
  }
  EXPECT_EQ(MakeCompactCopy(catalogue_, compact_), "");
  EXPECT_EQ(TitleIn(compact_), "meanwhile");
}

TEST_F(TakeOverTest, ALinkToTheCatalogueStaysALink) {
  const TempFolder program;
  fs::create_symlink(catalogue_, program.Path("mp3s.mdb"));
  ASSERT_EQ(MakeCompactCopy(program.Path("mp3s.mdb"), program.Path("compact.mdb")), "");
  const ino_t before = [&] {
    struct stat status {};
    return stat(catalogue_.c_str(), &status) == 0 ? status.st_ino : 0;
  }();
  EXPECT_TRUE(TakeOverCompactCopy(program.Path("mp3s.mdb"), program.Path()));
  EXPECT_TRUE(fs::is_symlink(program.Path("mp3s.mdb")));
  struct stat status {};
  ASSERT_EQ(stat(catalogue_.c_str(), &status), 0);
  EXPECT_NE(status.st_ino, before);
}

}  // namespace
}  // namespace tunemeadow
