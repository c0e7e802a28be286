// SPDX-License-Identifier: GPL-3.0-or-later
// The Vorbis comment search: no value is longer than a length byte tells.
#include "audio/ogg_comments.h"
#include "fuzz/fuzz_target.h"

namespace tunemeadow::fuzz {
namespace {

void Run(std::string_view input) {
  FileBytes file;
  file.OpenMemory(input);
  Mp3Info info;
  const std::string result = ReadOggInfo(file, info);
  Require(!result.empty(), "a failure has a text");
  Require((result == "OK") == (info.FileLength == static_cast<std::int64_t>(input.size())) ||
              input.empty(),
          "the length is stored with OK only");
  for (const TagText& text : {info.Title, info.Album, info.TrackV2, info.Artist, info.Composer,
                              info.Comment, info.GenreV2, info.Url, info.Copyright, info.Year}) {
    Require(text.size() <= 251 && text.size() <= input.size() + 1024,
            "a value fits its length byte");
  }
  for (const std::string_view key : {"TITLE=", "URL=", "TRACKNUMBER="}) {
    const std::optional<TagText> value = OggField(input, key);
    Require(!value || value->size() + key.size() <= 255 || value->empty(), "key and value fit");
  }
}

}  // namespace
}  // namespace tunemeadow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tunemeadow::fuzz::Run(tunemeadow::fuzz::Input(data, size));
  return 0;
}
