// SPDX-License-Identifier: GPL-3.0-or-later
// The fields of a track and the texts of one track by them. What is known of each field stands in
// track_field_table.h.
#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace tunemeadow {

/// The first 29 are those of the select list, in its order; `position` is the thirtieth in a
/// playlist view. The others stand in no list, but for `file`.
enum class TrackField : std::size_t {
  uid,
  Songname,
  Artist,
  genrereal,  ///< name of the genre
  quality,
  location,  ///< bytes
  year,
  album,
  trackno,
  Playtime,  ///< "m:ss"
  Filesize,  ///< "x.xx MB"
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
  haspic,    ///< "0" or "1", as the two flags below
  composer,  ///< the first of the extra fields, whose controls are numbered
  copyright,
  encodedby,
  originalartist,
  url,
  hasid3v1,
  hasid3v2,
  position,
  file,          ///< no column: the file name part of `location`, bytes
  genre,         ///< number of the genre, told by its name
  playtimereal,  ///< seconds
  filesizereal,  ///< bytes
  datetimeofdbinsert,
  datetimeofdbupdate,
  datetimeoffile
};

inline constexpr std::size_t kSelectedFields = 29;  ///< uid to hasid3v2
inline constexpr std::size_t kPlaylistFields = 30;  ///< with position
inline constexpr std::size_t kTrackFields = 37;
inline constexpr std::size_t kExtraFields = 5;  ///< composer to url

[[nodiscard]] constexpr std::size_t IndexOf(TrackField field) noexcept {
  return static_cast<std::size_t>(field);
}

/// Field of the extra controls number `extra`, from 0 to 4.
[[nodiscard]] constexpr TrackField ExtraField(std::size_t extra) noexcept {
  return static_cast<TrackField>(IndexOf(TrackField::composer) + extra);
}

/// A text and its field.
struct FieldText {
  TrackField field;
  std::string_view text;
};

/// The texts of one track, or what stands for each field elsewhere. Texts are UTF-8 but for paths.
struct TrackTexts {
  TrackTexts() = default;
  TrackTexts(std::initializer_list<FieldText> some) {  ///< all others are empty
    for (const FieldText& each : some) texts[IndexOf(each.field)] = each.text;
  }

  std::array<std::string, kTrackFields> texts;

  [[nodiscard]] const std::string& operator[](TrackField field) const {
    return texts[IndexOf(field)];
  }
  [[nodiscard]] std::string& operator[](TrackField field) { return texts[IndexOf(field)]; }
  bool operator==(const TrackTexts&) const = default;
};

static_assert(IndexOf(TrackField::datetimeoffile) + 1 == kTrackFields);
static_assert(IndexOf(TrackField::hasid3v2) + 1 == kSelectedFields);
static_assert(IndexOf(TrackField::position) + 1 == kPlaylistFields);
static_assert(ExtraField(kExtraFields - 1) == TrackField::url);

}  // namespace tunemeadow
