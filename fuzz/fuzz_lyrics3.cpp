// SPDX-License-Identifier: GPL-3.0-or-later
// The Lyrics3 walker: no field grows beyond what a length of five digits and a signed 16-bit number
// allow, and a real file gives what memory gives.
#include "audio/lyrics3.h"
#include "fuzz/fuzz_target.h"

namespace tunemeadow::fuzz {
namespace {

std::string Fields(const Lyrics3& l) {
  return l.Lyrics3Lyr + "|" + l.Lyrics3Inf + "|" + l.Lyrics3Aut + "|" + l.Lyrics3Eal + "|" +
         l.Lyrics3Ear + "|" + l.Lyrics3Ett + "|" + l.Lyrics3Img + "|" + l.Lyrics3Qua + "|" +
         l.Lyrics3Sit + "|" + l.Lyrics3Moo + "|" + l.Lyrics3Other + "|" + l.Lyrics3SizeText;
}

void ReadOne(const std::string& bytes) {
  FileBytes file;
  file.OpenMemory(bytes);
  Lyrics3 lyrics{.Lyrics3Lyr = "old", .Lyrics3Other = "old"};
  const bool ok = ReadLyrics3Tag(file, lyrics);
  Require(lyrics.Lyrics3Lyr.size() <= 32767 && lyrics.Lyrics3Other.size() <= bytes.size(),
          "fields have only what the block has");
  const bool has_one = HasLyrics3Tag(file, lyrics);
  Require(has_one || !ok, "what was walked is there");
  const UnnamedFile real(bytes);
  Lyrics3 from_file;
  Require(ReadLyrics3Tag(real.Path(), from_file) == ok, "file and memory agree");
  Require(Fields(from_file) == Fields(lyrics), "file and memory agree on the fields");
}

void Run(std::string_view input) {
  ReadOne(Stretched(input));
  // The same as the fields of a block that is otherwise good.
  std::string digits = std::to_string(input.size() + 11);
  digits.insert(0, digits.size() < 6 ? 6 - digits.size() : 0, '0');
  ReadOne(std::string(143, 'x') + "LYRICSBEGIN" + std::string(input) + digits + "LYRICS200");
}

}  // namespace
}  // namespace tunemeadow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tunemeadow::fuzz::Run(tunemeadow::fuzz::Input(data, size));
  return 0;
}
