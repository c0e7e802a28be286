// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/ogg_comments.h"

#include <array>
#include <cstdint>
#include <limits>

#include "core/text.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kOggBlockBytes = 1024;
constexpr std::size_t kOggLengthBytes = 4;

struct OggKey {
  std::string_view key;
  TagText Mp3Info::*field;
  bool only_if_empty = false;
};
constexpr std::array<OggKey, 11> kOggKeys = {{
    {"TITLE=", &Mp3Info::Title},
    {"ALBUM=", &Mp3Info::Album},
    {"TRACKNUMBER=", &Mp3Info::TrackV2},
    {"ARTIST=", &Mp3Info::Artist},
    {"ORGANIZATION=", &Mp3Info::Composer},
    {"DESCRIPTION=", &Mp3Info::Comment},
    {"GENRE=", &Mp3Info::GenreV2},
    {"URL=", &Mp3Info::Url},
    {"LOCATION=", &Mp3Info::Url, true},
    {"COPYRIGHT=", &Mp3Info::Copyright},
    {"YEAR=", &Mp3Info::Year},
}};

}  // namespace

std::string ReadOggInfo(FileBytes& file, Mp3Info& info) {
  if (!file.IsOpen()) return "File can't be opened";
  const std::string_view block = file.ReadPadded(0, kOggBlockBytes);
  for (const OggKey& each : kOggKeys) {
    if (each.only_if_empty && !(info.*each.field).empty()) continue;
    std::optional<TagText> value = OggField(block, each.key);
    if (!value) return "Length of the comment " + std::string(each.key) + " is too small";
    info.*each.field = std::move(*value);
  }
  if (file.Length() > std::numeric_limits<std::int32_t>::max()) return "File is too long";
  info.FileLength = static_cast<std::int32_t>(file.Length());
  return "OK";
}

std::string ReadOggInfo(const std::string& path, Mp3Info& info) {
  FileBytes file;
  if (!file.Open(path)) file.Close();
  return ReadOggInfo(file, info);
}

std::optional<TagText> OggField(std::string_view block, std::string_view key) {
  const std::size_t place = FindNoCase(block, key);
  if (place == std::string_view::npos) return TagText();
  if (place < kOggLengthBytes) return std::nullopt;
  const std::size_t length = static_cast<unsigned char>(block[place - kOggLengthBytes]);
  if (length < key.size()) return std::nullopt;
  return TagText(block.substr(place + key.size(), length - key.size()));
}

}  // namespace tunemeadow
