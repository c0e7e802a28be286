// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/program_folder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "core/paths.h"
#include "files/durable_file.h"
#include "files/file_facts.h"
#include "support/plain_user.h"
#include "support/scoped_environment.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

TEST(ProgramFolder, IsTheNamedFolderElseTheExecutablesElseTheUsers) {
  const TempFolder temp;
  {
    const ScopedEnvironment named("TUNEMEADOW_FOLDER", temp.Path("a/b").c_str());
    EXPECT_EQ(ProgramFolder(), temp.Path("a/b/"));
    EXPECT_TRUE(IsDirectory(temp.Path("a/b")));
  }
  const ScopedEnvironment unnamed("TUNEMEADOW_FOLDER", nullptr);
  EXPECT_EQ(ProgramFolder(), ExecutableFolder());
  EXPECT_TRUE(MyFileExists(ExecutableFolder() + ExecutableBaseName()));
}

TEST(ProgramFolder, AnExecutableInASystemOrProtectedFolderUsesTheUsersDataFolder) {
  const TempFolder temp;
  const ScopedEnvironment unnamed("TUNEMEADOW_FOLDER", nullptr);
  const ScopedEnvironment home("HOME", temp.Path("home").c_str());
  const ScopedEnvironment data("XDG_DATA_HOME", temp.Path("data").c_str());
  EXPECT_EQ(ProgramFolderFor(temp.Path() + "/"), temp.Path() + "/");
  EXPECT_EQ(ProgramFolderFor("/usr/bin/"), temp.Path("data/tunemeadow/"));
  EXPECT_EQ(ProgramFolderFor(""), temp.Path("data/tunemeadow/"));
  EXPECT_TRUE(IsDirectory(temp.Path("data/tunemeadow")));
  const ScopedEnvironment relative("XDG_DATA_HOME", "data");
  const ScopedPlainUser user(temp.Path());
  EXPECT_EQ(ProgramFolderFor("/proc/"), temp.Path("home/.local/share/tunemeadow/"));
  EXPECT_TRUE(IsDirectory(temp.Path("home/.local/share/tunemeadow")));
}

TEST(ProvideShippedFiles, FillsAFolderThatTheProgramHasNotRunIn) {
  const TempFolder temp;
  const std::string folder = temp.Path("mine/");
  temp.Write("mine/other", "");
  temp.Write("usr/share/tunemeadow/mp3s.mdb", "catalogue");
  temp.Write("usr/bin/mp3s.mdb", "somebody's rows");
  temp.Write("usr/bin/monster.mp3", "track");
  ProvideShippedFiles(folder, temp.Path("usr/bin/"));
  EXPECT_EQ(temp.Read("mine/mp3s.mdb"), "catalogue");
  EXPECT_EQ(temp.Read("mine/monster.mp3"), "track");
  temp.Write("mine/mp3s.mdb", "rows");
  ProvideShippedFiles(folder, temp.Path("usr/bin/"));
  EXPECT_EQ(temp.Read("mine/mp3s.mdb"), "rows");
}

TEST(ProvideShippedFiles, DoesNotCoverUpACatalogueThatWasLost) {
  const TempFolder temp;
  temp.Write("bin/mp3s.mdb", "catalogue");
  for (const std::string& trace : {ExecutableBaseName() + ".INI", std::string("mp3s.bak")}) {
    temp.Write(trace, "");
    ProvideShippedFiles(temp.Path() + "/", temp.Path("bin/"));
    EXPECT_FALSE(MyFileExists(temp.Path("mp3s.mdb"))) << trace;
    ASSERT_EQ(unlink(temp.Path(trace).c_str()), 0);
  }
  ProvideShippedFiles(temp.Path() + "/", temp.Path("bin/"));
  EXPECT_TRUE(MyFileExists(temp.Path("mp3s.mdb")));
}

TEST(CopyFileIfMissing, CopiesWholeAndNeverTouchesWhatIsThere) {
  const TempFolder temp;
  const std::string bytes = std::string("\0\xFF", 2) + std::string(100000, 'x');
  const std::string from = temp.Write("from", bytes);
  EXPECT_TRUE(CopyFileIfMissing(from, temp.Path("to")));
  EXPECT_EQ(temp.Read("to"), bytes);
  temp.Write("to", "edited");
  EXPECT_TRUE(CopyFileIfMissing(from, temp.Path("to")));
  EXPECT_EQ(temp.Read("to"), "edited");
  ASSERT_EQ(symlink("nowhere", temp.Path("dangling").c_str()), 0);
  EXPECT_TRUE(CopyFileIfMissing(from, temp.Path("dangling")));
  EXPECT_FALSE(MyFileExists(temp.Path("nowhere")));
  EXPECT_FALSE(CopyFileIfMissing(temp.Path("missing"), temp.Path("new")));
  EXPECT_FALSE(CopyFileIfMissing(from, temp.Path("none/new")));
  EXPECT_EQ(temp.Count(), 3) << "something was left beside the copies";
}

}  // namespace
}  // namespace tunemeadow
