// SPDX-License-Identifier: GPL-3.0-or-later
// The Vorbis comment search: no value is longer than a length byte tells.
#include "audio/ogg_comments.h"
#include "fuzz/fuzz_target.h"

using namespace tunemeadow;        // NOLINT: one file, one program
using namespace tunemeadow::fuzz;  // NOLINT

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = Input(data, size);
  FileBytes file;
  file.OpenMemory(bytes);
  Mp3Info info;
  const std::string result = ReadOggInfo(file, info);
  Require(!result.empty(), "a failure has a text");
  Require((result == "OK") == (info.FileLength == static_cast<std::int64_t>(size)) || size == 0,
          "the length is stored with OK only");
  for (const TagText& text : {info.Title, info.Album, info.TrackV2, info.Artist, info.Composer,
                              info.Comment, info.GenreV2, info.Url, info.Copyright, info.Year}) {
    Require(text.size() <= 251 && text.size() <= size + 1024, "a value fits its length byte");
  }
  for (const std::string_view key : {"TITLE=", "URL=", "TRACKNUMBER="}) {
    const std::optional<TagText> value = OggField(bytes, key);
    Require(!value || value->size() + key.size() <= 255 || value->empty(), "key and value fit");
  }
  return 0;
}
