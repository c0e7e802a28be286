// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/file_facts.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/scoped_environment.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

TEST(FileFacts, ExistenceIsAskedOfTheDisk) {
  const TempFolder folder;
  const std::string file = folder.Write("\xFF.mp3", "");
  EXPECT_TRUE(MyFileExists(file));
  EXPECT_FALSE(IsDirectory(file));
  EXPECT_TRUE(IsDirectory(folder.Path()));
  EXPECT_FALSE(MyFileExists(folder.Path("missing")));
  EXPECT_FALSE(MyFileExists(""));
  ASSERT_EQ(symlink("nowhere", folder.Path("link").c_str()), 0);
  EXPECT_FALSE(MyFileExists(folder.Path("link")));
}

TEST(FileFacts, TheTimeIsTheLastWriteInWholeSeconds) {
  const ScopedZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
  const TempFolder folder;
  const std::string path = folder.Write("x", "");
  const timespec times[2] = {{1, 0}, {1083819489, 999999999}};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  EXPECT_EQ(FileTimeText(path), "2004-05-06 06:58:09");
  EXPECT_EQ(FileTimeText(folder.Path("missing")), "");
}

}  // namespace
}  // namespace tunemeadow
