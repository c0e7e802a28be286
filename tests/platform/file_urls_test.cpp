// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/file_urls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

namespace tunemeadow {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(FileUrl, KeepsEveryByteOfThePath) {
  EXPECT_EQ(FileUrl("/music/AC\\DC/a-b_c.~9"), "file:///music/AC%5CDC/a-b_c.~9");
  EXPECT_EQ(FileUrl("/100%/#1?.mp3"), "file:///100%25/%231%3F.mp3");
  EXPECT_EQ(FileUrl("/\xC3\xA4 \xFF\n\""), "file:///%C3%A4%20%FF%0A%22");
  EXPECT_EQ(FileUrl("x"), "file://" + std::filesystem::current_path().string() + "/x");
}

TEST(UriList, EveryNameComesBackByteForByte) {
  std::string all = "/all";
  for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
  const std::vector<std::string> paths = {all, "/music/100% # ?.mp3", "/caf\xE9/\xFF\xFE.mp3",
                                          "/caf\xC3\xA9.mp3", "/trailing "};
  EXPECT_EQ(PathsOfUriList(UriList(paths)), paths);
}

TEST(UriList, TheTextIsPlainAsciiALineAFile) {
  EXPECT_EQ(UriList({"/a b/\xE9.mp3", "CD07\\Rock\\a.mp3", "", "/c~_-.mp3"}),
            "file:///a%20b/%E9.mp3\r\nfile:///c~_-.mp3\r\n");
}

TEST(UriList, OnlyLocalFilesAreTaken) {
  std::array<char, 256> host{};
  ASSERT_EQ(gethostname(host.data(), host.size() - 1), 0);
  EXPECT_THAT(PathsOfUriList("# from a browser\r\n"
                             "https://music.example/a.mp3\r\n"
                             "file://elsewhere.example/b.mp3\r\n"
                             "FILE://localhost/c.mp3\n"
                             "file:/d.mp3\r\n"
                             "file://" +
                             std::string(host.data()) +
                             "/e.mp3\r\n"
                             "file:///folder/\r\n"
                             "file:relative\r\nfile://\r\n\r\n"
                             "file:///%00/etc\r\n"
                             "file:///50%/%zz\r\nfile:///#1.mp3\0"s),
              ElementsAre("/c.mp3", "/d.mp3", "/e.mp3", "/folder", "/50%/%zz", "/#1.mp3"));
  EXPECT_THAT(PathsOfUriList(""), IsEmpty());
}

}  // namespace
}  // namespace tunemeadow
