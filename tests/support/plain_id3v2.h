// SPDX-License-Identifier: GPL-3.0-or-later
// The ID3v2 reader in its plainest form: one search of the whole text for each name, one copy of
// the rest for each comment frame. Slow, and the measure for the reader that walks a tag once.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "audio/mp3_info.h"

namespace tunemeadow::plain {

inline std::string Remove(std::string text, std::string_view what) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos;) {
    text.erase(at, what.size());
  }
  return text;
}

inline std::string InCapitals(std::string text) {
  for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
  return text;
}

/// Value of the frame that `text` starts with; nullopt for a size above 2^31-1.
inline std::optional<std::string> Value(const std::string& text) {
  std::string digits = text.substr(0, 8);
  digits.resize(8, '\0');
  std::int64_t size = 0;
  for (std::size_t i = 4; i < 8; ++i) size = size * 256 + static_cast<std::uint8_t>(digits[i]);
  if (size > 0x7FFFFFFF) return std::nullopt;
  if (size == 0 || text.size() <= 11) return "";
  return Remove(Remove(text.substr(11, static_cast<std::size_t>(size - 1)), "\xFF\xFE"),
                "\x9F\xFE");
}

inline bool ReadComments(std::string text, Mp3Info& info) {
  const std::pair<const char*, TagText Mp3Info::*> fields[] = {
      {"_PREFERENCE", &Mp3Info::Preference},
      {"_SITUATION", &Mp3Info::Situation},
      {"_BIO", &Mp3Info::Bio},
      {"_TEMPO", &Mp3Info::Tempo},
      {"_MOOD", &Mp3Info::Mood}};
  for (const auto& [mark, field] : fields) (info.*field).clear();
  std::string kept;
  for (std::size_t at; (at = text.find("COMM", 10)) != std::string::npos;) {
    text = text.substr(at);
    const std::optional<std::string> value = Value(text);
    if (!value) return false;
    info.Comment = *value;
    const std::string capitals = InCapitals(*value);
    if (capitals.find("MUSICMATCH") == std::string::npos) {
      kept = value->substr(std::min<std::size_t>(4, value->size()));
      continue;
    }
    for (const auto& [mark, field] : fields) {
      if (capitals.find(mark) == std::string::npos) continue;
      info.*field = value->substr(value->rfind('\0') + 1);
    }
  }
  info.Comment = kept;
  return true;
}

/// ParseID3v2Tag with any version.
inline std::string Parse(std::string_view bytes, Mp3Info& info) {
  if (bytes.size() < 10 || bytes.substr(0, 3) != "ID3") return "";
  std::size_t size = 0;
  for (std::size_t i = 6; i < 10; ++i) size = size * 128 + static_cast<std::uint8_t>(bytes[i]);
  std::string text(bytes.substr(0, std::min(size, bytes.size()) + 101));
  text.resize(std::min(size, bytes.size()) + 101, '\0');
  const std::pair<const char*, TagText Mp3Info::*> fields[] = {
      {"TPE1", &Mp3Info::Artist},    {"TIT2", &Mp3Info::Title},     {"TALB", &Mp3Info::Album},
      {"TRCK", &Mp3Info::TrackV2},   {"TBPM", &Mp3Info::Bpm},       {"TCON", &Mp3Info::GenreV2},
      {"TCOM", &Mp3Info::Composer},  {"TYER", &Mp3Info::Year},      {"TOPE", &Mp3Info::Original},
      {"TENC", &Mp3Info::EncodedBy}, {"TCOP", &Mp3Info::Copyright}, {"WXXX", &Mp3Info::Url},
      {"USLT", &Mp3Info::Lyrics}};
  for (const auto& [name, field] : fields) {
    const std::size_t at = text.find(name, 10);
    std::optional<std::string> value = "";
    if (at != std::string::npos) value = Value(text.substr(at));
    if (!value) return "";
    info.*field = *value;
  }
  info.HasPicture = text.find("APIC", 10) != std::string::npos;
  return ReadComments(text, info) ? "OK" : "";
}

/// All text fields of a record in one text, for comparison.
inline std::string Fields(const Mp3Info& i) {
  std::string all;
  for (const TagText& text : {i.Artist, i.Title, i.Album, i.TrackV2, i.Bpm, i.GenreV2, i.Composer,
                              i.Year, i.Original, i.EncodedBy, i.Copyright, i.Url, i.Lyrics,
                              i.Comment, i.Preference, i.Situation, i.Bio, i.Tempo, i.Mood}) {
    all += text + "|";
  }
  return all + (i.HasPicture ? "picture" : "");
}

}  // namespace tunemeadow::plain
