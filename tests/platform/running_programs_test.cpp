// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/running_programs.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/process_posix.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

/// A table like the kernel's, in which the start of the machine is the start of each process but
/// for `ticks`.
void WriteProcess(const TempFolder& table, const std::string& id, const std::string& name,
                  char state, int ticks) {
  std::string line = id + " (" + name + ") " + state;
  for (int i = 0; i < 18; ++i) line += " 0";
  table.Write(id + "/stat", line + " " + std::to_string(ticks) + " 4096 1\n");
}

TEST(FindRunningProgram, FindsTheOldestLivingProcessOfTheName) {
  const TempFolder table;
  WriteProcess(table, "11", "player", 'S', 900);
  WriteProcess(table, "12", "player", 'R', 300);
  WriteProcess(table, "13", "player", 'Z', 100);
  WriteProcess(table, "14", "a) (b", 'S', 100);
  WriteProcess(table, "15", "fifteenbytesnam", 'S', 100);
  WriteProcess(table, "0", "zero", 'S', 100);
  table.Write("16/stat", "16 (cut");
  table.Write("17/stat", "");
  WriteProcess(table, std::to_string(getpid()), "myself", 'S', 100);
  const auto id = [&](const std::string& program) {
    const auto found = FindRunningProgram(program, table.Path());
    return found ? found->id : 0;
  };
  EXPECT_EQ(id("/usr/bin/player"), 12);
  EXPECT_EQ(id("player"), 12);
  EXPECT_EQ(id("/opt/a) (b"), 14);
  EXPECT_EQ(id("/opt/fifteenbytesname-and-more"), 15);
  for (const char* none : {"/usr/bin/play", "PLAYER", "zero", "cut", "myself", ""}) {
    EXPECT_EQ(id(none), 0) << none;
  }
  EXPECT_FALSE(FindRunningProgram("player", table.Path("missing")));
}

TEST(FindRunningProgram, KnowsARealOneByItsFileAndItsAge) {
  const TempFolder folder;
  const std::string program = folder.Path("tm-some-player");
  std::filesystem::copy_file("/bin/sh", program);
  std::filesystem::create_symlink(program, folder.Path("link"));
  ASSERT_EQ(mkfifo(folder.Path("gate").c_str(), 0600), 0);
  EXPECT_FALSE(FindRunningProgram(program));
  ASSERT_TRUE(PosixProcessStarter().Start(program, {"-c", "read x < " + folder.Path("gate")}));
  const auto found = FindRunningProgram(folder.Path("link"));
  ASSERT_TRUE(found) << "by the file behind the link";
  EXPECT_TRUE(found->seconds > -1 && found->seconds < 600) << found->seconds;
  const auto same = FindRunningProgram(program);
  ASSERT_TRUE(same);
  EXPECT_EQ(same->id, found->id);
  folder.Write("gate", "end\n");
}

}  // namespace
}  // namespace tunemeadow
