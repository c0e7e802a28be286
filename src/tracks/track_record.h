// SPDX-License-Identifier: GPL-3.0-or-later
// One track as texts: the fields of the standard select list, in its order.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tunemeadow {

/// Place of a field in the select list, from 0. `position` is there in a playlist view only.
enum class Field : std::size_t {
  uid,
  Songname,
  Artist,
  genrereal,
  quality,
  location,
  year,
  album,
  trackno,
  Playtime,
  Filesize,
  Comment,
  BPM,
  preview,
  lasttimeplayed,
  Situation,
  preference,
  tempo,
  Mood,
  bios,
  Lyrics,
  haspic,
  composer,
  copyright,
  encodedby,
  originalartist,
  url,
  hasid3v1,
  hasid3v2,
  position
};

inline constexpr std::size_t kTrackFields = 29;     ///< uid to hasid3v2
inline constexpr std::size_t kPlaylistFields = 30;  ///< with position

[[nodiscard]] constexpr std::size_t IndexOf(Field field) noexcept {
  return static_cast<std::size_t>(field);
}

/// Names of the columns, as the statements of the views spell them.
inline constexpr std::array<std::string_view, kPlaylistFields> kFieldNames = {
    "uid",       "Songname",       "Artist",
    "genrereal", "quality",        "location",
    "year",      "album",          "trackno",
    "Playtime",  "Filesize",       "Comment",
    "BPM",       "preview",        "lasttimeplayed",
    "Situation", "preference",     "tempo",
    "Mood",      "bios",           "Lyrics",
    "haspic",    "composer",       "copyright",
    "encodedby", "originalartist", "url",
    "hasid3v1",  "hasid3v2",       "position"};

/// The image of one row; a database null is an empty text. Texts are UTF-8, `location` is bytes.
struct TrackRecord {
  std::array<std::string, kPlaylistFields> fields;

  [[nodiscard]] const std::string& operator[](Field field) const { return fields[IndexOf(field)]; }
  [[nodiscard]] std::string& operator[](Field field) { return fields[IndexOf(field)]; }
};

}  // namespace tunemeadow
