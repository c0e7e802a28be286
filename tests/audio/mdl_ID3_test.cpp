// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/mdl_ID3.h"

#include <gtest/gtest.h>

#include "support/mp3_builder.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

TEST(ReadID3v1Tag, CopiesTheRecordAsItStands) {
  const TempFolder folder;
  const std::string path = folder.Write(
      "a.mp3",
      Mp3File().Frames(3).Id3v1({.title = "Blue", .year = "1999", .track = 7, .genre = 17}));
  ID3v1Tag tag;
  ASSERT_TRUE(ReadID3v1Tag(path, tag));
  EXPECT_EQ(std::string(tag.Title.begin(), tag.Title.end()), Fixed("Blue", 30, ' '));
  EXPECT_EQ(std::string(tag.Year.begin(), tag.Year.end()), "1999");
  EXPECT_EQ(tag.Comment[28], '\0');
  EXPECT_EQ(tag.Comment[29], 7);
  EXPECT_EQ(tag.Genre, 17);
}

TEST(ReadID3v1Tag, WithoutAnExactTagTheRecordStays) {
  const TempFolder folder;
  ID3v1Tag tag{.Title = {'x'}, .Genre = 9};
  const std::string files[] = {
      Mp3File().Frames(3).Id3v1({.title = "Blue", .mark = "tag"}).Build(),
      Mp3File().Frames(3).Id3v1({.title = "Blue"}).Bytes(" ").Build(),
      Id3v1Record({.title = "Blue"}).substr(1),
      "",
  };
  for (const std::string& bytes : files) {
    EXPECT_FALSE(ReadID3v1Tag(folder.Write("a.mp3", bytes), tag));
  }
  EXPECT_FALSE(ReadID3v1Tag(folder.Path("none.mp3"), tag));
  EXPECT_EQ(tag.Title[0], 'x');
  EXPECT_EQ(tag.Genre, 9);
  EXPECT_TRUE(ReadID3v1Tag(folder.Write("a.mp3", Id3v1Record({})), tag)) << "a tag alone is one";
}

}  // namespace
}  // namespace tunemeadow
