// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/tag_writing.h"

#include <gtest/gtest.h>

#include "support/writer_bench.h"

namespace tunemeadow {
namespace {

TEST(LossSentence, IsOneSentenceOfWhatWasLost) {
  EXPECT_EQ(LossSentence({}), "");
  EXPECT_EQ(LossSentence({.frames = 1}), "1 frame that has no place in the new tag was dropped.");
  EXPECT_EQ(LossSentence({.characters = 2, .long_texts = 1}),
            "2 texts hold characters outside Windows-1252, "
            "1 long text may be misread by other programs.");
  EXPECT_EQ(LossSentence({.blocks = 1, .cut_texts = 2}),
            "1 LYRICS3 block that could not be read was replaced, "
            "2 texts were cut to 255 characters.");
  EXPECT_EQ(LossSentence({2, 1, 3}),
            "2 frames that have no place in the new tag were dropped, "
            "1 text holds characters outside Windows-1252, "
            "3 long texts may be misread by other programs.");
}

TEST(SetFileLength, CutsAndLengthensWithZeroBytes) {
  WriterBench bench;
  bench.File("abcdef");
  EXPECT_TRUE(SetFileLength(bench.writing, bench.path, 3));
  EXPECT_EQ(bench.File(), "abc");
  EXPECT_TRUE(SetFileLength(bench.writing, bench.path, 5));
  EXPECT_EQ(bench.File(), std::string("abc\0\0", 5));
  EXPECT_FALSE(SetFileLength(bench.writing, bench.path, -1));
  EXPECT_FALSE(SetFileLength(bench.writing, bench.folder.Path("none.mp3"), 0));
  EXPECT_EQ(bench.File().size(), 5U);
  EXPECT_EQ(bench.folder.Count(), 1);
}

TEST(TagRanges, AreTheHeadAndTheEndOfAFile) {
  const std::string tag = Id3v2Tag("", 3, 90);
  const std::string block = Lyrics3Bytes({{"LYR", "la"}});
  const std::string record = Id3v1Record({});
  const auto ranges = [](const std::string& bytes) {
    FileBytes file;
    file.OpenMemory(bytes);
    std::string text;
    for (const ByteRange& range : TagRanges(file)) {
      text += std::to_string(range.offset) + "+" + std::to_string(range.length) + " ";
    }
    return text;
  };
  EXPECT_EQ(ranges(""), "");
  EXPECT_EQ(ranges(Audio()), "");
  EXPECT_EQ(ranges(tag + Audio()), "0+100 ");
  EXPECT_EQ(ranges(tag.substr(0, 50)), "0+50 ");
  EXPECT_EQ(ranges(Audio() + record), "1251+128 ");
  EXPECT_EQ(ranges(tag + Audio() + block), "0+100 1351+36 ");
  EXPECT_EQ(ranges(tag + Audio() + block + record), "0+100 1351+164 ");
  EXPECT_EQ(ranges(Id3v2Tag("", 3, 3U << 20)), "0+1048576 ");
}

}  // namespace
}  // namespace tunemeadow
