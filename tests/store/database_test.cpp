// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/database.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "core/dates.h"
#include "core/text.h"
#include "store/statement.h"
#include "support/catalogue.h"
#include "support/other_program.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// What Execute reports; "" for success.
std::string FailureOf(Connection& connection, const std::string& statement) {
  try {
    connection.Execute(statement);
    return "";
  } catch (const DatabaseError& error) {
    return std::string("failed: ") + error.what();
  }
}

void InsertTrack(Connection& connection, const std::string& location) {
  connection.Execute("insert into mp3sTabelle (location,Songname) values (" +
                     Quoted(location, '"') + ",\"x\")");
}

class OpenFailure : public testing::Test {
 protected:
  void ExpectFailure(const std::string& path, const std::string& description) {
    const std::ptrdiff_t files = folder_.Count();
    Connection connection;
    try {
      connection.Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path);
      ADD_FAILURE() << path << " was opened";
    } catch (const DatabaseError& error) {
      EXPECT_THAT(error.what(), HasSubstr(description));
    }
    EXPECT_FALSE(connection.IsOpen());
    EXPECT_NE(FailureOf(connection, "select 1"), "");
    EXPECT_EQ(folder_.Count(), files) << "a file came or went";
  }

  TempFolder folder_;
};

TEST_F(OpenFailure, MissingFilesAreNotMade) {
  ExpectFailure(folder_.Path("missing.mdb"), "unable to open database file");
  ExpectFailure(folder_.Path("no folder/mp3s.mdb"), "unable to open database file");
  ExpectFailure("", "no database file");
}

TEST_F(OpenFailure, EmptyAndForeignFilesStayAsTheyAre) {
  ExpectFailure(folder_.Write("empty.mdb"), "not a catalogue");
  ExpectFailure(folder_.Write("junk.mdb", std::string(5000, 'x')), "file is not a database");
  ExpectFailure(folder_.Path(), "no database file");
  const std::string foreign = folder_.Path("foreign.mdb");
  { const OtherProgram other(foreign, "create table cookies (a)"); }
  const std::string before = folder_.Read("foreign.mdb");
  ExpectFailure(foreign, "not a catalogue");
  EXPECT_EQ(folder_.Read("foreign.mdb"), before);
}

TEST_F(OpenFailure, PipesDoNotHoldTheProgramUp) {
  ASSERT_EQ(mkfifo(folder_.Path("pipe.mdb").c_str(), 0600), 0);
  ExpectFailure(folder_.Path("pipe.mdb"), "no database file");
}

TEST_F(OpenFailure, AFileThatAnotherProgramHoldsIsReportedAndCanBeOpenedLater) {
  const std::string path = ProvideCatalogue(folder_);
  {
    const OtherProgram other(
        path, "pragma locking_mode=exclusive; update mp3sTabelle set url='' where uid=1");
    ExpectFailure(path, "database is locked");
  }
  Connection connection;
  EXPECT_NO_THROW(connection.Open(path));
}

TEST(ConnectionOpen, TakesTheFileOfTheConnectionString) {
  const TempFolder folder;
  const std::string plain = ProvideCatalogue(folder);
  const std::string odd = ProvideCatalogue(folder, "a;b=c.mdb");
  for (const std::string& text :
       {plain, "Data Source=" + plain, "Provider=X;data source=" + plain + ";Mode=1",
        "Data Source=" + odd}) {
    Connection connection;
    EXPECT_NO_THROW(connection.Open(text)) << text;
  }
}

TEST(ConnectionExecute, ATextIsNeverTakenForAColumn) {
  TestCatalogue catalogue;
  for (const std::string name : {"Playlist", "UID", "Artist", "position"}) {
    catalogue.connection.Execute("insert into playlists (Playlist,uid,[position]) values (\"" +
                                 name + "\",1,2)");
  }
  catalogue.connection.Execute(R"(delete from playlists where playlist="Playlist")");
  EXPECT_THAT(catalogue.Values("select playlist from playlists order by UIDPLaylist"),
              ElementsAre("UID", "Artist", "position"));
  catalogue.connection.Execute(
      R"(update mp3sTabelle set Artist="Songname" where Artist<>"Artist")");
  EXPECT_EQ(catalogue.Value("select Artist from mp3sTabelle"), "Songname");
  EXPECT_THAT(FailureOf(catalogue.connection, "select colour from mp3sTabelle"),
              HasSubstr("no such column"));
}

TEST(ConnectionExecute, GivesBackEveryByteAndEmptyTextForNulls) {
  TestCatalogue catalogue;
  const std::string hostile("a\0\"b'\xff\xc3(", 8);
  catalogue.connection.Execute("update mp3sTabelle set Comment=" + Quoted(hostile, '"') +
                               ",location='\xe4.mp3',Artist=\"" + EscapeTagText("O'Neil") +
                               "\",haspic=null where uid=1");
  const CellTable rows =
      catalogue.Rows("select Comment,location,Artist,haspic,uid,url from mp3sTabelle");
  ASSERT_EQ(rows.RowCount(), 1U);
  EXPECT_EQ(rows.Cell(0, 0), hostile);
  EXPECT_EQ(rows.Cell(0, 1), "\xe4.mp3");
  EXPECT_EQ(rows.Cell(0, 2), "O''Neil");
  EXPECT_EQ(rows.Cell(0, 3), "");
  EXPECT_EQ(rows.Cell(0, 4), "1");
  EXPECT_EQ(rows.Cell(0, 5), "");
}

TEST(ConnectionExecute, AKnownLocationKeepsItsRow) {
  TestCatalogue catalogue;
  Connection& connection = catalogue.connection;
  InsertTrack(connection, "/music/a.mp3");
  EXPECT_EQ(connection.Changes(), 1);
  EXPECT_EQ(connection.LastInsertedKey(), 2);
  connection.Execute("update mp3sTabelle set Mood='Wild' where uid=2");
  InsertTrack(connection, "/music/b.mp3");
  const std::int64_t writes = connection.WriteCount();
  InsertTrack(connection, "/music/a.mp3");
  EXPECT_EQ(connection.Changes(), 0);
  EXPECT_EQ(connection.WriteCount(), writes);
  EXPECT_EQ(catalogue.Value("select max(uid) as maxuid from mp3sTabelle"), "3");  // a stranger
  EXPECT_EQ(catalogue.Value("select uid from mp3sTabelle where Mood='wild'"), "2");
  // Not the same file: another case, a blank more. Not known at all: no location.
  for (const char* other : {"/music/A.mp3", "/music/a.mp3 ", "", ""}) {
    InsertTrack(connection, other);
    EXPECT_EQ(connection.Changes(), 1) << other;
  }
  connection.Execute("insert into mp3sTabelle (Songname) values ('n'),('n')");
  EXPECT_EQ(connection.Changes(), 2);
}

TEST(ConnectionExecute, AKeyIsNeverGivenOutTwice) {
  TestCatalogue catalogue;
  InsertTrack(catalogue.connection, "/a");
  catalogue.connection.Execute("delete from mp3sTabelle where UID in (1,2)");
  EXPECT_EQ(catalogue.connection.Changes(), 2);
  catalogue.connection.Close();
  catalogue.connection.Open(catalogue.path);
  InsertTrack(catalogue.connection, "/a");
  EXPECT_EQ(catalogue.connection.LastInsertedKey(), 3);
}

TEST(ConnectionExecute, TextsCompareWithoutCaseAndLocationsByTheByte) {
  TestCatalogue catalogue;
  InsertTrack(catalogue.connection, "/Music/Über.mp3");
  const auto count = [&](const std::string& condition) {
    return catalogue.Value("select count(uid) from mp3sTabelle where uid=2 and " + condition);
  };
  EXPECT_EQ(count("Songname='X'"), "1");
  EXPECT_EQ(count("location='/music/Über.mp3'"), "0");
  EXPECT_EQ(count("location like \"%/music/üBER%\""), "1");
  EXPECT_EQ(count("url like \"%\""), "0");  // null
  // One prepared statement, another pattern each time.
  EXPECT_EQ(count("location like \"%/music/öBER%\""), "0");
  EXPECT_EQ(count("location like \"%/_usic/%\""), "1");
}

TEST(ConnectionExecute, NumberColumnsCompareAsNumbers) {
  TestCatalogue catalogue;
  for (const char* bpm : {"100", "60", "9", "", "abc"}) {
    catalogue.connection.Execute("insert into mp3sTabelle (BPM) values ('" + std::string(bpm) +
                                 "')");
  }
  catalogue.connection.Execute("delete from mp3sTabelle where uid=1");
  const auto found = [&](const std::string& condition) {
    return catalogue.Values("select BPM from mp3sTabelle where " + condition + " order by uid");
  };
  EXPECT_THAT(found("BPM>= 60"), ElementsAre("100", "60"));
  EXPECT_THAT(found("(BPM>= 1 and BPM<= 60)"), ElementsAre("60", "9"));
  EXPECT_THAT(found("BPM between 9 and 60"), ElementsAre("60", "9"));
  EXPECT_THAT(found("BPM='60'"), ElementsAre("60"));
  catalogue.connection.Execute("update mp3sTabelle set BPM=77 where uid=3");
  EXPECT_THAT(found("uid=3"), ElementsAre("77"));
}

TEST(ConnectionExecute, TextsAreCutAndJoinedByCharacters) {
  TestCatalogue catalogue;
  catalogue.connection.Execute(
      "update mp3sTabelle set Location=\"CD 07\\Größe\\ä.mp3\" where uid=1");
  catalogue.connection.Execute(
      "Update mp3sTabelle set Location=\"/cdrom\" & right(Location,len(Location)-5) "
      "where left(location,5) =\"CD 07\"");
  EXPECT_EQ(catalogue.Value("select location from mp3sTabelle"), "/cdrom\\Größe\\ä.mp3");
  EXPECT_EQ(catalogue.Value("select right(location,5) from mp3sTabelle"), "ä.mp3");
  EXPECT_NE(FailureOf(catalogue.connection, "update mp3sTabelle set location=left(location,-1)"),
            "");
  EXPECT_EQ(catalogue.Value("select len(location) from mp3sTabelle"), "18");
  EXPECT_EQ(catalogue.Value("select len(url) from mp3sTabelle"), "");
}

TEST(ConnectionExecute, DatesAreMovedByTheCalendar) {
  TestCatalogue catalogue;
  const auto moved = [&](const std::string& arguments) {
    return catalogue.Value("select dateadd(" + arguments + ")");
  };
  EXPECT_EQ(moved("\"d\",-1,'2024-03-01 10:00:00'"), "2024-02-29 10:00:00");
  EXPECT_EQ(moved("\"D\",--1,'31.12.2023'"), "2024-01-01 00:00:00");
  EXPECT_EQ(moved("'m',1,'2024-01-31 01:02:03'"), "2024-02-29 01:02:03");
  EXPECT_EQ(moved("'m',-14,'2024-01-31 01:02:03'"), "2022-11-30 01:02:03");
  EXPECT_EQ(moved("'yyyy',-1,'2024-02-29 00:00:00'"), "2023-02-28 00:00:00");
  EXPECT_EQ(moved("'h',25,'2024-01-01 00:00:00'"), "2024-01-02 01:00:00");
  EXPECT_EQ(moved("'n',2.5,'2024-01-01 00:00:00'"), "2024-01-01 00:02:00");
  EXPECT_EQ(moved("'s',-1,'2024-01-01 00:00:00'"), "2023-12-31 23:59:59");
  EXPECT_EQ(moved("'s',978307200,'1990-01-01 00:00:00'"), "2021-01-01 00:00:00");
  EXPECT_EQ(moved("'d',1,'soon'"), "");
  for (const char* wrong : {"'x',1,now()", "'yyyy',20000,now()", "'d',1e300,now()",
                            "'d',-3e11,now()", "'h',3e11,now()"}) {
    EXPECT_NE(FailureOf(catalogue.connection, std::string("select dateadd(") + wrong + ")"), "");
  }
  EXPECT_LE(catalogue.Value("select now()"), Now());
  catalogue.connection.Execute("insert into mp3sTabelle (lasttimeplayed) values ('" + Now() + "')");
  EXPECT_EQ(
      catalogue.Value("select uid from mp3sTabelle where "
                      "(lasttimeplayed <  dateadd(\"d\",-3,now()) or isnull(lasttimeplayed))"),
      "1");
}

TEST(ConnectionExecute, OneStatementRunsAndLeavesNothingOpen) {
  TestCatalogue catalogue;
  for (const char* refused : {"delete from playlists; delete from mp3sTabelle", "begin", "", " ; ",
                              "selct 1", "select 1 from mp3sTabelle where a=?"}) {
    EXPECT_NE(FailureOf(catalogue.connection, refused), "") << refused;
  }
  EXPECT_EQ(catalogue.Value("select count(uid) as n from mp3sTabelle ; "), "1");
  // Another program can write between any two statements.
  EXPECT_EQ(FailureOf(catalogue.connection, "select uid from mp3sTabelle"), "");
  const OtherProgram other(catalogue.path, "update mp3sTabelle set url='o'");
  EXPECT_EQ(catalogue.Value("select url from mp3sTabelle"), "o");
}

TEST(ConnectionExecute, MoreStatementsThanAreKeptAndLongListsOfKeysRun) {
  TestCatalogue catalogue;
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(catalogue.Value("select " + std::to_string(i % 40)), std::to_string(i % 40));
  }
  std::string keys = "1";
  for (int i = 2; i < 100000; ++i) keys += "," + std::to_string(i);
  EXPECT_EQ(catalogue.Value("select uid from mp3sTabelle where uid in (" + keys + ")"), "1");
}

TEST(ConnectionExecute, RunsWhileAnotherStatementGivesASignOfLife) {
  TestCatalogue catalogue;
  const std::string slow =
      "with recursive n(i) as (select 1 union all select i+1 from n where i<60000) "
      "select count(i) from n";
  int signs = 0;
  bool nested = false;
  catalogue.connection.SetWorking([&] {
    ++signs;
    if (std::exchange(nested, true)) return;
    EXPECT_EQ(catalogue.Value(slow), "60000");
  });
  EXPECT_EQ(catalogue.Value(slow), "60000");
  EXPECT_GT(signs, 1);
}

TEST(Recordset, NamesColumnsWithoutCase) {
  TestCatalogue catalogue;
  Recordset records = catalogue.connection.Execute("select max(uid) as maxuid from mp3sTabelle");
  EXPECT_EQ(records.Fields("MaxUID"), "1");
  EXPECT_EQ(records.Fields("other"), "");
  EXPECT_FALSE(records.Eof());
  EXPECT_EQ(records.GetRows().RowCount(), 1U);
  EXPECT_EQ(catalogue.connection.Execute("select uid from mp3sTabelle where uid=9").Fields("uid"),
            "");
}

TEST(DatabaseError, CarriesTheStatementWhereverItFailed) {
  TestCatalogue catalogue;
  Connection closed;
  const std::pair<Connection*, const char*> cases[] = {
      {&closed, "select 1"},
      {&catalogue.connection, "select 'open"},           // in the translation
      {&catalogue.connection, "select x from nowhere"},  // as it is prepared
      {&catalogue.connection,
       "insert into mp3sTabelle (uid,location) values (1,'\xFF')"},  // as it runs
      {&catalogue.connection, "begin"},                              // after it
  };
  for (const auto& [connection, statement] : cases) {
    try {
      connection->Execute(statement);
      ADD_FAILURE() << statement << " did not fail";
    } catch (const DatabaseError& error) {
      EXPECT_EQ(error.Statement(), statement);
      EXPECT_EQ(error.WithStatement(), error.what() + ("\n" + ToValidUtf8(statement)));
    }
  }
}

TEST(ConnectionClose, FoldsTheLogInAndRemovesIt) {
  TestCatalogue catalogue;
  InsertTrack(catalogue.connection, "/a");
  EXPECT_TRUE(std::filesystem::exists(catalogue.path + "-wal"));
  catalogue.connection.Close();
  catalogue.connection.Close();
  EXPECT_EQ(catalogue.folder.Count(), 1);
}

TEST(Durability, RowsOfAKilledBatchAreAllThere) {
  TempFolder folder;
  const std::string path = ProvideCatalogue(folder);
  int pipe_ends[2] = {};
  ASSERT_EQ(pipe(pipe_ends), 0);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    Connection connection;
    connection.Open(path);
    connection.SetDurability(Durability::kBatch);
    for (int i = 0;; ++i) {
      InsertTrack(connection, "/music/" + std::to_string(i) + ".mp3");
      if (write(pipe_ends[1], "x", 1) != 1) _exit(1);
    }
  }
  close(pipe_ends[1]);
  char told = 0;
  for (int i = 0; i < 300; ++i) ASSERT_EQ(read(pipe_ends[0], &told, 1), 1);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  int committed = 300;
  while (read(pipe_ends[0], &told, 1) == 1) ++committed;
  close(pipe_ends[0]);
  Connection connection;
  connection.Open(path);
  const std::string count =
      connection.Execute("select count(uid) as n from mp3sTabelle where uid>1").Fields("n");
  EXPECT_GE(std::stoi(count), committed);
  EXPECT_EQ(connection.Execute("pragma integrity_check").GetRows().Cell(0, 0), "ok");
}

}  // namespace
}  // namespace tunemeadow
