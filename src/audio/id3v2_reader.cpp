// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_reader.h"

#include <array>
#include <limits>
#include <optional>

#include "audio/id3v2_comments.h"
#include "audio/id3v2_names.h"
#include "core/numbers.h"

namespace tunemeadow {
namespace {

// One field for each name up to USLT, in the order of ID3v2Name.
constexpr std::array<TagText Mp3Info::*, 13> kTextFields = {
    &Mp3Info::Artist,   &Mp3Info::Title,     &Mp3Info::Album,     &Mp3Info::TrackV2,
    &Mp3Info::Bpm,      &Mp3Info::GenreV2,   &Mp3Info::Composer,  &Mp3Info::Year,
    &Mp3Info::Original, &Mp3Info::EncodedBy, &Mp3Info::Copyright, &Mp3Info::Url,
    &Mp3Info::Lyrics,
};
constexpr auto kPictureName = static_cast<std::size_t>(ID3v2Name::APIC);
static_assert(kTextFields.size() == kPictureName);

bool IsWantedVersion(std::uint8_t version, ID3v2Versions versions) noexcept {
  return versions == ID3v2Versions::kAny || (version >= 2 && version <= 4);
}

/// Fills the fields from the text of a tag. False if a frame tells a size above 2^31-1.
bool FillFromTagText(std::string_view text, Mp3Info& info) {
  std::array<std::optional<std::size_t>, kPictureName + 1> places;
  ID3v2Comments comments(text);
  // A name among the header's ten bytes doesn't count.
  auto hit = FindID3v2Name(text, kID3v2HeaderBytes);
  for (; hit; hit = FindID3v2Name(text, hit->offset + 1)) {
    if (hit->name == ID3v2Name::COMM) {
      comments.Add(hit->offset);
    } else if (auto& place = places[static_cast<std::size_t>(hit->name)]; !place) {
      place = hit->offset;
    }
  }
  for (std::size_t i = 0; i < kTextFields.size(); ++i) {
    std::optional<TagText> value = TagText();
    if (places[i]) value = ReadFrameText(*places[i] + 1, text);
    if (!value) return false;
    info.*kTextFields[i] = std::move(*value);
  }
  info.HasPicture = places[kPictureName].has_value();
  return comments.StoreIn(info);
}

}  // namespace

bool HasID3v2Tag(FileBytes& file) noexcept { return file.Read(0, 3) == "ID3"; }

bool HasID3v2Tag(const std::string& path) {
  FileBytes file;
  return file.Open(path) && HasID3v2Tag(file);
}

std::string ReadID3v2Tag(FileBytes& file, ID3v2Versions versions, Mp3Info& info) {
  const std::optional<ID3v2Header> header = ParseID3v2Header(file.Read(0, kID3v2HeaderBytes));
  if (!header || !IsWantedVersion(header->version, versions)) return {};
  return FillFromTagText(LoadID3v2Text(file, *header), info) ? "OK" : "";
}

std::string ReadID3v2Tag(const std::string& path, ID3v2Versions versions, Mp3Info& info) {
  FileBytes file;
  if (!file.Open(path)) return {};
  return ReadID3v2Tag(file, versions, info);
}

std::string ParseID3v2Tag(std::string_view bytes, ID3v2Versions versions, Mp3Info& info) {
  FileBytes file;
  file.OpenMemory(bytes);
  return ReadID3v2Tag(file, versions, info);
}

GenreText SplitGenreText(std::string_view text) {
  GenreText split;
  const std::size_t open = text.find('(');
  const std::size_t close = text.find(')');
  if (open == std::string_view::npos || close == std::string_view::npos) {
    split.name = text;
    return split;
  }
  if (open < close) split.number = text.substr(open + 1, close - open - 1);
  split.name = text.substr(text.rfind(')') + 1);
  const std::optional<std::int64_t> number = ParseWhole(split.number);
  if (number && *number != -1 && *number >= std::numeric_limits<std::int16_t>::min() &&
      *number <= std::numeric_limits<std::int16_t>::max()) {
    split.genre = static_cast<std::int16_t>(*number);
  }
  return split;
}

}  // namespace tunemeadow
