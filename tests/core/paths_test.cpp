// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/paths.h"

#include <gtest/gtest.h>

namespace tunemeadow {
namespace {

TEST(Paths, AreSeparatedBySlashesWhereTheyHoldOneElseByBackslashes) {
  struct {
    const char *path, *folder, *name, *extension, *as_folder;
  } cases[] = {
      {R"(/music/AC\DC.mp3)", "/music/", R"(AC\DC.mp3)", "mp3", R"(/music/AC\DC.mp3/)"},
      {R"(CD07\Rock\a.b.MP3)", R"(CD07\Rock\)", "a.b.MP3", "MP3", R"(CD07\Rock\a.b.MP3\)"},
      {R"(C:\Music\)", R"(C:\Music\)", "", "", R"(C:\Music\)"},
      {"/v1.0/name", "/v1.0/", "name", "", "/v1.0/name/"},
      {"name.", "", "name.", "", "name./"},
      {"/", "/", "", "", "/"},
      {"", "", "", "", ""},
      {"/\xFF/\xE4.x", "/\xFF/", "\xE4.x", "x", "/\xFF/\xE4.x/"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path);
    EXPECT_EQ(FolderPart(c.path), c.folder);
    EXPECT_EQ(FileNamePart(c.path), c.name);
    EXPECT_EQ(ExtensionPart(c.path), c.extension);
    EXPECT_EQ(WithTrailingSeparator(c.path), c.as_folder);
  }
  EXPECT_EQ(JoinPath("/music", "a.mp3"), "/music/a.mp3");
  EXPECT_EQ(JoinPath("/music/", "a\\b"), "/music/a\\b");
  EXPECT_EQ(JoinPath("C:\\Music", "a.mp3"), "C:\\Music\\a.mp3");
  EXPECT_EQ(JoinPath("", "a.mp3"), "a.mp3");
  EXPECT_EQ(DisplayPath("/\xE4/ä"), "/\uFFFD/ä");
}

TEST(HasExtension, OnlyExtensionsOfThreeLettersEverMatch) {
  EXPECT_TRUE(HasExtension("/m/x.Mp3", "mP3"));
  EXPECT_TRUE(HasExtension(".mp3", "mp3"));
  EXPECT_FALSE(HasExtension("/m/xmp3", "mp3"));
  EXPECT_FALSE(HasExtension("/m/x.flac", "flac"));
  EXPECT_FALSE(HasExtension("/m/x.ra", "ra"));
  EXPECT_FALSE(HasExtension("mp3", "mp3"));
  EXPECT_FALSE(HasExtension("x.", ""));
  EXPECT_TRUE(HasOneOfExtensions("a.ogg", "mp3;OGG;wav"));
  EXPECT_FALSE(HasOneOfExtensions("a.ogg", "mp3; ogg;"));
  EXPECT_FALSE(HasOneOfExtensions("a.ogg", ""));
}

}  // namespace
}  // namespace tunemeadow
