// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/shell_open.h"

#include <gtest/gtest.h>

namespace tunemeadow {
namespace {

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
