// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/process_posix.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <thread>

#include "files/durable_file.h"
#include "support/scoped_environment.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

std::string Program(const TempFolder& folder, const std::string& name, const std::string& script) {
  std::string path = folder.Write(name, script);
  EXPECT_EQ(chmod(path.c_str(), 0755), 0);
  return path;
}

/// The bytes of a file once it exists; empty if it does not within ten seconds.
std::string WaitForFile(const std::string& path) {
  for (int i = 0; i < 1000; ++i) {
    if (auto bytes = ReadWholeFile(path)) return *bytes;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return {};
}

TEST(PosixProcessStarter, HandsOverArgumentsByteForByteAndLeavesNoZombie) {
  const TempFolder folder;
  const std::string script = Program(folder, "prog ram",
                                     "#!/bin/sh\necho noise; echo noise >&2; read line\n"
                                     "printf '%s|' \"$#\" \"$@\" \"$line\" > \"$1.tmp\"\n"
                                     "mv \"$1.tmp\" \"$1\"\n");
  const std::string out = folder.Path("o'ut \"1\"");
  ASSERT_TRUE(PosixProcessStarter().Start(script, {out, "", "a b", "\xFF$HOME*"}));
  EXPECT_EQ(WaitForFile(out), "4|" + out + "||a b|\xFF$HOME*||");
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD) << "the program is still a child of this process";
}

TEST(PosixProcessStarter, DoesNotWaitForTheProgram) {
  const TempFolder folder;
  ASSERT_EQ(mkfifo(folder.Path("gate").c_str(), 0600), 0);
  const std::string script = Program(folder, "late",
                                     "#!/bin/sh\nread word < \"$1/gate\"\n"
                                     "echo \"$word\" > \"$1/t\"; mv \"$1/t\" \"$1/done\"\n");
  const ScopedEnvironment path("PATH", (folder.Path() + ":/usr/bin:/bin").c_str());
  ASSERT_TRUE(PosixProcessStarter().Start("late", {folder.Path()}));
  folder.Write("gate", "through\n");  // opens only while the program reads
  EXPECT_EQ(WaitForFile(folder.Path("done")), "through\n");
}

TEST(PosixProcessStarter, WaitsForTheEndButNotForEver) {
  const TempFolder folder;
  PosixProcessStarter starter;
  const std::string quick = Program(folder, "quick", "#!/bin/sh\necho \"$1\" > \"$2\"\n");
  const std::string out = folder.Path("out");
  ASSERT_EQ(starter.StartAndWait(quick, {"a \xFF", out}, 60'000), Ended::kEnded);
  EXPECT_EQ(folder.Read("out"), "a \xFF\n");
  ASSERT_EQ(mkfifo(folder.Path("gate").c_str(), 0600), 0);
  const std::string slow = Program(folder, "slow", "#!/bin/sh\nread word < \"$1\"\n");
  EXPECT_EQ(starter.StartAndWait(slow, {folder.Path("gate")}, 20), Ended::kRunsOn);
  folder.Write("gate", "go\n");
  EXPECT_EQ(starter.StartAndWait(folder.Path("missing"), {}, 60'000), Ended::kNotStarted);
}

TEST(PosixProcessStarter, SaysWhenNothingCouldBeStarted) {
  const TempFolder folder;
  PosixProcessStarter starter;
  EXPECT_FALSE(starter.Start("", {}));
  EXPECT_FALSE(starter.Start(folder.Path("missing"), {}));
  EXPECT_FALSE(starter.Start("no-such-program-anywhere", {}));
  EXPECT_FALSE(starter.Start(folder.Path(), {}));
  EXPECT_FALSE(starter.Start(folder.Write("plain", "#!/bin/sh\n"), {})) << "not executable";
  EXPECT_FALSE(starter.Start(Program(folder, "broken", "#!/no/such/interpreter\n"), {}));
}

}  // namespace
}  // namespace tunemeadow
