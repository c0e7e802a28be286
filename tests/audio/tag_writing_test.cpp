// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/tag_writing.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "audio/id3v1_writer.h"
#include "audio/id3v2_writer.h"
#include "audio/lyrics3_writer.h"
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
            "1 LYRICS3 block could be read and kept only in part, "
            "2 texts were cut to 255 characters.");
  EXPECT_EQ(LossSentence({.texts = 1, .values = 2, .pictures = 1, .sounds = 2}),
            "1 text of the old tag could not be kept, 2 further values of texts were dropped, "
            "1 picture could not be kept whole, "
            "2 LYRICS3 blocks were written over 128 bytes of sound each.");
  EXPECT_EQ(LossSentence({2, 1, 3}),
            "2 frames that have no place in the new tag were dropped, "
            "1 text holds characters outside Windows-1252, "
            "3 long texts may be misread by other programs.");
}

TEST(TagWriting, KeepsTheSentenceOfTheWriterThatFailed) {
  WriterBench bench;
  TagWriting& writing = bench.writing;
  const std::string none = bench.folder.Path("none.mp3");
  Mp3Info info;
  Lyrics3 block;
  bool ok = true;
  const auto lyrics = [&](const std::string& path, std::size_t length) {
    WriteTag(writing, path, {.lyrics = std::string(length, 'x')}, block, ok);
  };
  const std::string missing = "The file cannot be opened for writing: No such file or directory";
  const std::vector<std::pair<std::function<void()>, std::string>> rows = {
      {[&] { (void)WriteID3v2Tag(writing, none, false, info); }, missing},
      {[&] { (void)WriteID3v2Tag(writing, bench.path, false, info); },
       "The old ID3v2 tag tells more bytes than the file has."},
      {[&] { (void)WriteID3v1Tag(writing, none, {}, false); }, missing},
      {[&] { (void)RemoveID3v1Tag(writing, none); }, missing},
      {[&] { (void)RemoveID3v1Tag(writing, bench.path); }, ""},
      {[&] { (void)RemoveID3v2Picture(writing, none); }, missing},
      {[&] { (void)KillLyrics3Tag(writing, none); }, missing},
      {[&] { lyrics(none, 5); }, missing},
      {[&] { lyrics(bench.path, 5); }, "The file is too short for a LYRICS3 block."},
      {[&] { lyrics(bench.path, 100'000); }, "A text is too long for a LYRICS3 block."}};
  const std::string bytes = Id3v2Tag("", 3, 500).substr(0, 50);
  bench.File(bytes);
  for (const auto& [write, fault] : rows) {
    write();
    EXPECT_EQ(writing.fault, fault);
  }
  EXPECT_EQ(bench.File(), bytes);
  EXPECT_FALSE(ok);
  (void)RunWriter(writing, []() -> std::string { throw std::bad_alloc(); });
  EXPECT_EQ(writing.fault, "There is not enough memory.");
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
