// SPDX-License-Identifier: GPL-3.0-or-later
// The ID3v2 reader gives what a plain search gives, from memory and from a file.
#include "audio/id3v2_reader.h"
#include "fuzz/fuzz_target.h"
#include "support/plain_id3v2.h"

namespace tunemeadow::fuzz {
namespace {

void Compare(const std::string& bytes) {
  Mp3Info measure{.Title = "old", .Comment = "old"};
  Mp3Info info = measure;
  const std::string expected = plain::Parse(bytes, measure);
  Require(ParseID3v2Tag(bytes, ID3v2Versions::kAny, info) == expected, "the same result");
  Require(plain::Fields(info) == plain::Fields(measure), "the same fields");
  const UnnamedFile real(bytes);
  Mp3Info from_file{.Title = "old", .Comment = "old"};
  Require(ReadID3v2Tag(real.Path(), ID3v2Versions::kAny, from_file) == expected,
          "the same result from a file");
  Require(plain::Fields(from_file) == plain::Fields(measure), "the same fields from a file");
  FileBytes memory;
  memory.OpenMemory(bytes);
  Mp3Info by_frames;
  const std::string result = ReadID3v2TagByFrames(memory, by_frames);
  Require(!expected.empty() || result.empty() || bytes[3] == 3 || bytes[3] == 4,
          "frames are walked in versions 3 and 4 alone");
  Require(by_frames.Comment.size() <= bytes.size() + 101, "a text has only the tag's bytes");
}

void Run(std::string_view input) {
  Compare(std::string(input));
  // The same after a header of its own, so that frames need not be guessed after a good one.
  Compare("ID3\3" + std::string(4, '\0') + "\x7F\x7F" + std::string(input));
  const GenreText genre = SplitGenreText(input);
  Require(genre.number.size() + genre.name.size() <= input.size(),
          "a genre text has only its own letters");
}

}  // namespace
}  // namespace tunemeadow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tunemeadow::fuzz::Run(tunemeadow::fuzz::Input(data, size));
  return 0;
}
