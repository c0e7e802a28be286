// SPDX-License-Identifier: GPL-3.0-or-later
#include "tracks/cd_archive_path.h"

#include <gtest/gtest.h>

namespace tunemeadow {
namespace {

TEST(CheckCDArchive, PutsTheDriveInThePlaceOfTheDisc) {
  const struct {
    const char *tag, *drive, *path, *mapped;
    bool archived;
  } cases[] = {
      {"MP3-CD", "/media/cdrom", "MP3-CD01/Rock/a.mp3", "/media/cdrom/Rock/a.mp3", true},
      {"MP3-CD", "/media/cdrom/", "MP3-CD01/a.mp3", "/media/cdrom/a.mp3", true},
      {"MP3-CD", "/", "MP3-CD01/a.mp3", "/a.mp3", true},
      {"MP3-CD", "/media/cdrom", "MP3-CD01/AC\\DC/a.mp3", "/media/cdrom/AC\\DC/a.mp3", true},
      {"CD", "D:", "CD07\\Rock\\a.mp3", "D:\\Rock\\a.mp3", true},
      {"CD", "D:\\", "CD07\\a.mp3", "D:\\a.mp3", true},
      {"MP3-CD", "/media/cdrom", "MP3-CD without a folder", "MP3-CD without a folder", true},
      {"MP3-CD", "/media/cdrom", "mp3-cd01/a.mp3", "mp3-cd01/a.mp3", false},
      {"MP3-CD", "/media/cdrom", "/music/MP3-CD01/a.mp3", "/music/MP3-CD01/a.mp3", false},
      {"MP3-CD", "", "MP3-CD01/a.mp3", "MP3-CD01/a.mp3", false},
      {"", "/media/cdrom", "/music/a.mp3", "/music/a.mp3", false},
      {"MP3-CD", "/media/cdrom", "", "", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path);
    Preferences preferences;
    preferences.txtCDTag = c.tag;
    preferences.lblConfigCDROM = c.drive;
    EXPECT_EQ(bCheckCDArchive(c.path, preferences), c.archived);
    std::string path = c.path;
    CheckCDArchive(path, preferences);
    EXPECT_EQ(path, c.mapped);
  }
}

}  // namespace
}  // namespace tunemeadow
