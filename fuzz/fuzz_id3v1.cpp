// SPDX-License-Identifier: GPL-3.0-or-later
// The ID3v1 record: read exactly when the last 128 bytes begin with "TAG"; its genre has an entry.
#include <cstring>

#include "audio/genres.h"
#include "audio/mdl_ID3.h"
#include "fuzz/fuzz_target.h"

namespace tunemeadow::fuzz {
namespace {

void Run(std::string_view input) {
  const std::string bytes = Stretched(input);
  const bool expected =
      bytes.size() >= 128 && std::string_view(bytes).substr(bytes.size() - 128, 3) == "TAG";
  const UnnamedFile real(bytes);
  ID3v1Tag tag;
  Require(ReadID3v1Tag(real.Path(), tag) == expected, "a tag is where it should be");
  if (expected) {
    Require(std::memcmp(&tag, bytes.data() + bytes.size() - 128, 128) == 0, "the record is whole");
    Require(GenreName(tag.Genre).has_value(), "every genre byte has an entry");
  }
  (void)GenreNumberFromName(input);
}

}  // namespace
}  // namespace tunemeadow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tunemeadow::fuzz::Run(tunemeadow::fuzz::Input(data, size));
  return 0;
}
