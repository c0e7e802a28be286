// SPDX-License-Identifier: GPL-3.0-or-later
// The tool itself, as the program starts it, and the copy that it makes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "files/journaled_file.h"
#include "files/kept_journals.h"
#include "store/compact_copy.h"
#include "store/database.h"
#include "support/catalogue.h"
#include "support/child_process.h"

namespace tunemeadow {
namespace {

namespace fs = std::filesystem;

/// Exit code of RepairDB.exe with these arguments.
int RunRepairTool(const std::vector<std::string>& arguments) {
  const int status = StatusOfChild([&] {
    std::vector<std::string> words = arguments;
    words.insert(words.begin(), TM_BINARY_DIR "/bin/RepairDB.exe");
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    if (freopen("/dev/null", "w", stderr) == nullptr) return 126;
    if (freopen("/dev/null", "w", stdout) == nullptr) return 126;
    return execv(argv[0], argv.data());
  });
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(RepairTool, TakesBlanksAsTheyStandAndAsPercentTwenty) {
  const TempFolder folder;
  fs::create_directory(folder.Path("a b"));
  fs::create_directory(folder.Path("a%20b"));
  const std::string plain = ProvideCatalogue(folder, "a b/my mp3s.mdb");
  EXPECT_EQ(RunRepairTool({"-i", plain, "-o", folder.Path("a%20b/compact.mdb")}), 0);
  EXPECT_TRUE(fs::exists(folder.Path("a%20b/compact.mdb")));
  fs::remove_all(folder.Path("a%20b"));
  EXPECT_EQ(RunRepairTool(
                {"-o", folder.Path("a%20b/compact.mdb"), "-i", folder.Path("a%20b/my%20mp3s.mdb")}),
            0);
  EXPECT_TRUE(fs::exists(folder.Path("a b/compact.mdb")));
  for (const std::vector<std::string>& wrong :
       {std::vector<std::string>{}, {"-i", plain}, {"-x", plain, "-o", plain}}) {
    EXPECT_EQ(RunRepairTool(wrong), 2);
  }
}

TEST(RepairTool, ListsWritesAndDropsTheOldBytesThatJournalsKeep) {
  const TempFolder folder;
  const std::string song = folder.Write("music/a.mp3", "old head, and the rest");
  EXPECT_EQ(InChildProcess([&]() -> std::string {
              // Left as a kill leaves it: nobody ends the group.
              auto* const killed = new UndoJournal(folder.Path());
              killed->BeginGroup();
              JournaledFile file(*killed);
              const std::string fault = file.Open(song);
              return fault + file.Rewrite(std::vector<FilePiece>{{0, "NEW"}}, 22);
            }),
            "");
  folder.Write("music/a.mp3", "somebody else's, and longer");
  ASSERT_EQ(UndoJournal(folder.Path()).RollBack().size(), 1U);
  const std::string journal = folder.Path("undo-kept-1.journal");
  fs::create_directory(folder.Path("out"));
  EXPECT_EQ(RunRepairTool({"list", folder.Path()}), 0);
  const std::vector<KeptJournal> kept = KeptJournals(folder.Path());
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_FALSE(kept[0].waiting);
  ASSERT_EQ(kept[0].files.size(), 1U);
  EXPECT_EQ(kept[0].files[0].kept_bytes, 3);
  EXPECT_EQ(kept[0].files[0].state, KeptFile::State::kOther);

  EXPECT_EQ(RunRepairTool({"write", journal, folder.Path("out")}), 0);
  EXPECT_EQ(folder.Read("out/a.mp3"), "oldebody else's, and l") << "the rest as it is now";
  EXPECT_EQ(folder.Read("music/a.mp3"), "somebody else's, and longer");
  fs::remove(song);
  EXPECT_EQ(RunRepairTool({"write", journal, folder.Path("out")}), 0);
  EXPECT_EQ(folder.Read("out/a (2).mp3"), "old" + std::string(19, '\0'));
  EXPECT_EQ(RunRepairTool({"drop", folder.Path("out/a.mp3")}), 1) << "no journal";
  EXPECT_EQ(RunRepairTool({"drop", journal}), 0);
  EXPECT_FALSE(fs::exists(journal));
  EXPECT_EQ(RunRepairTool({"write", journal, folder.Path("out")}), 1);
}

TEST(MakeCompactCopy, AFailureLeavesTheOldCopyAndNothingElse) {
  const TempFolder folder;
  const std::string catalogue = ProvideCatalogue(folder);
  const std::string output = folder.Write("compact.mdb", "old");
  const auto expect_failure = [&](const std::string& source) {
    EXPECT_NE(MakeCompactCopy(source, output), "");
    EXPECT_EQ(folder.Read("compact.mdb"), "old");
    EXPECT_FALSE(fs::exists(output + ".part"));
  };
  expect_failure(folder.Path("missing.mdb"));
  expect_failure(folder.Write("junk.mdb", "junk"));
  EXPECT_FALSE(fs::exists(folder.Path("missing.mdb")));
  EXPECT_NE(MakeCompactCopy(catalogue, folder.Path("no folder/compact.mdb")), "");
  EXPECT_NE(MakeCompactCopy(catalogue, catalogue), "");
  folder.Write("compact.mdb.part", "of a run that was killed");
  EXPECT_EQ(MakeCompactCopy(catalogue, output), "");
  EXPECT_FALSE(fs::exists(output + ".part"));
}

TEST(MakeCompactCopy, HoldsWhatTheRunningProgramWroteBefore) {
  TestCatalogue catalogue;
  catalogue.connection.Execute("update mp3sTabelle set Songname='just now' where uid=1");
  const std::string output = catalogue.folder.Path("compact.mdb");
  ASSERT_EQ(MakeCompactCopy(catalogue.path, output), "");
  Connection copy;
  copy.Open(output);
  EXPECT_EQ(copy.Execute("select Songname from mp3sTabelle").Fields("Songname"), "just now");
}

TEST(MakeCompactCopy, ACatalogueThatIsWrittenToMeanwhileNeverYieldsACopyThatUndoesIt) {
  TempFolder folder;
  const std::string path = ProvideCatalogue(folder);
  const std::string output = folder.Path("compact.mdb");
  int refused = 0;
  for (int round = 0; round < 20; ++round) {
    const std::string title = "round " + std::to_string(round);
    std::string failure;
    {
      Connection connection;
      connection.Open(path);
      std::thread tool([&] { failure = MakeCompactCopy(path, output); });
      std::this_thread::sleep_for(std::chrono::milliseconds(round * 2));
      connection.Execute("update mp3sTabelle set Songname='" + title + "' where uid=1");
      tool.join();
    }
    refused += failure.empty() ? 0 : 1;
    TakeOverCompactCopy(path, folder.Path());
    EXPECT_FALSE(fs::exists(output)) << round;
    Connection connection;
    connection.Open(path);
    EXPECT_EQ(connection.Execute("select Songname from mp3sTabelle").Fields("Songname"), title);
  }
  EXPECT_LT(refused, 20);
}

}  // namespace
}  // namespace tunemeadow
