// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/file_bytes.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <random>
#include <string>

#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

std::string RandomBytes(std::size_t count) {
  std::mt19937 random(static_cast<unsigned>(count));
  std::string bytes(count, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

// Asks for many ranges in and around the file and compares each with the bytes that were written.
void ExpectSameBytes(FileBytes& file, const std::string& bytes) {
  std::mt19937 random(1);
  const auto length = static_cast<std::int64_t>(bytes.size());
  ASSERT_EQ(file.Length(), length);
  for (int i = 0; i < 300; ++i) {
    const std::int64_t base = i % 3 == 0 ? 4096 : i % 3 == 1 ? length : length / 2;
    const std::int64_t offset =
        i % 7 == 0 ? 0 : base + static_cast<std::int64_t>(random() % 1000) - 500;
    const std::size_t count = random() % (i % 5 == 0 ? 200000 : 500);
    SCOPED_TRACE(std::to_string(offset) + "+" + std::to_string(count));
    std::string expected;
    if (offset >= 0 && offset < length) {
      expected = bytes.substr(static_cast<std::size_t>(offset), count);
    }
    ASSERT_EQ(file.Read(offset, count), expected);
    const std::string_view some = file.ReadSome(offset, count);
    ASSERT_EQ(some, expected.substr(0, some.size()));
    ASSERT_GE(some.size(), std::min<std::size_t>(expected.size(), 2));
    expected.resize(count, '\0');
    ASSERT_EQ(file.ReadPadded(offset, count), expected);
  }
}

TEST(FileBytes, OneObjectReadsEveryRangeOfManyFiles) {
  const TempFolder folder;
  FileBytes file;
  for (const std::size_t length : {0, 1, 100, 255, 256, 4095, 4096, 4200, 9000, 2000000}) {
    SCOPED_TRACE(length);
    const std::string bytes = RandomBytes(length);
    ASSERT_TRUE(file.Open(folder.Write("x", bytes)));
    ExpectSameBytes(file, bytes);
    file.OpenMemory(bytes);
    ExpectSameBytes(file, bytes);
  }
}

TEST(FileBytes, OpensOnlyRegularFilesAndCreatesNone) {
  const TempFolder folder;
  FileBytes file;
  ASSERT_EQ(mkfifo(folder.Path("pipe.mp3").c_str(), 0600), 0);
  for (const std::string& path :
       {folder.Path("pipe.mp3"), folder.Path(), folder.Path("none.mp3"), std::string()}) {
    SCOPED_TRACE(path);
    ASSERT_TRUE(file.Open(folder.Write("good.mp3", "abc")));
    EXPECT_FALSE(file.Open(path));
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Length(), 0);
    EXPECT_EQ(file.Read(0, 3), "");
  }
  EXPECT_NE(access(folder.Path("none.mp3").c_str(), F_OK), 0);
}

TEST(FileBytes, OpensANameThatIsNotUtf8AndTellsItsTime) {
  const TempFolder folder;
  const std::string path = folder.Write("B\xF6hm \xFF.mp3", "abc");
  const timespec times[2] = {{0, 0}, {1100000061, 999999999}};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  FileBytes file;
  ASSERT_TRUE(file.Open(path));
  EXPECT_EQ(file.Read(0, 9), "abc");
  EXPECT_EQ(file.ModifiedAt(), 1100000061);
}

TEST(FileBytes, AFileCutWhileItIsOpenGivesFewerBytes) {
  const TempFolder folder;
  const std::string path = folder.Write("x", RandomBytes(500000));
  FileBytes file;
  ASSERT_TRUE(file.Open(path));
  ASSERT_EQ(truncate(path.c_str(), 5000), 0);
  EXPECT_EQ(file.Read(400000, 100), "");
  EXPECT_EQ(file.Read(499900, 100), "");
  EXPECT_EQ(file.Read(0, 100000), RandomBytes(500000).substr(0, 5000));
  EXPECT_EQ(file.ReadPadded(4999, 3), RandomBytes(500000).substr(4999, 1) + std::string(2, '\0'));
}

}  // namespace
}  // namespace tunemeadow
