// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/shell_open.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tunemeadow {
namespace {

TEST(FileUrl, KeepsEveryByteOfThePath) {
  EXPECT_EQ(FileUrl("/music/AC\\DC/a-b_c.~9"), "file:///music/AC%5CDC/a-b_c.~9");
  EXPECT_EQ(FileUrl("/100%/#1?.mp3"), "file:///100%25/%231%3F.mp3");
  EXPECT_EQ(FileUrl("/\xC3\xA4 \xFF\n\""), "file:///%C3%A4%20%FF%0A%22");
  EXPECT_EQ(FileUrl("x"), "file://" + std::filesystem::current_path().string() + "/x");
}

TEST(IsUrl, TellsSchemesFromPaths) {
  for (const char* url :
       {"https://a.example/?q=1", "file:///x", "mailto:a@b.example", "a+b-c.9://x"}) {
    EXPECT_TRUE(IsUrl(url)) << url;
  }
  for (const char* path :
       {"", "/m/http://x", "C:\\Music\\a.mp3", "://x", "song: live.mp3", "1a://x"}) {
    EXPECT_FALSE(IsUrl(path)) << path;
  }
}

}  // namespace
}  // namespace tunemeadow
