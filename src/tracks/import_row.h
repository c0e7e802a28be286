// SPDX-License-Identifier: GPL-3.0-or-later
// The row that import writes for one file, made of what the readers found, and the statement that
// writes it. Pure: opens no file, runs no statement.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include "audio/lyrics3.h"
#include "audio/mp3_info.h"
#include "run/preferences.h"

namespace tunemeadow {

/// How a file is read, told by its extension alone.
enum class FileKind {
  kMp3,
  kOgg,
  kOther,  ///< nothing is read of it but length and date
};
[[nodiscard]] FileKind FileKindOf(std::string_view path) noexcept;

/// What the tags of a file offer for its row beside the fields of an ID3v1 tag, without zero bytes
/// and blanks at the ends. Windows-1252.
struct TagCandidates {
  TagText title, artist, album, year, comment, track, bpm;
  TagText genre_number;      ///< text; empty: the genre of the ID3v1 tag stays
  std::int16_t genre = 255;  ///< the number that the text stands for, 255 for anything but one
  TagText genre_name;
  TagText composer, original_artist, encoded_by, copyright, url;
  TagText lyrics, preference, situation, mood, tempo, bio;
  bool has_picture = false;
};

/// Takes the values that ReadID3v2Tag left in `info`.
void TakeID3v2Values(const Mp3Info& info, TagCandidates& candidates);

/// Takes the values that ReadOggInfo left in `info`; the other candidates stay.
void TakeOggValues(const Mp3Info& info, TagCandidates& candidates);

/// Each non-empty field of the block replaces its candidate: lyrics, situation, mood, and the
/// extended title, artist and album.
void TakeLyrics3Values(const Lyrics3& lyrics3, TagCandidates& candidates);

/// What is known of a file beside its Mp3Info.
struct FileFacts {
  std::string path;  ///< bytes
  FileKind kind = FileKind::kOther;
  std::optional<std::int64_t> length;     ///< bytes; none where the file cannot be looked at
  std::optional<std::time_t> last_write;  ///< none likewise
  bool has_id3v1 = false;                 ///< the last 128 bytes are an ID3v1 tag
  bool has_id3v2 = false;
  TagCandidates candidates;
};

/// The columns of a row, in the order of its statement.
enum class ImportColumn : std::size_t {
  genrereal,
  Preference,
  Situation,
  Mood,
  Tempo,
  BIOS,
  LYRICS,
  haspic,
  HasID3V1,
  HasID3V2,
  trackno,
  bpm,
  location,
  Songname,
  Artist,
  genre,
  year,
  album,
  playtime,
  playtimereal,
  filesize,
  filesizereal,
  comment,
  quality,
  datetimeofdbinsert,
  datetimeofdbupdate,
  datetimeoffile,
  composer,
  originalartist,
  url,
  copyright,
  encodedby
};
inline constexpr std::size_t kImportColumns = 32;

/// Their names as the statement spells them.
extern const std::array<std::string_view, kImportColumns> kImportColumnNames;

/// The texts of one row as they go between the delimiters of the statement: UTF-8, `location` in
/// bytes. haspic, HasID3V1 and HasID3V2 are "0" or "1".
struct ImportRow {
  bool whole = false;  ///< false: only dates, location and sizes stand in it
  std::array<std::string, kImportColumns> texts;

  [[nodiscard]] const std::string& operator[](ImportColumn column) const {
    return texts[static_cast<std::size_t>(column)];
  }
  [[nodiscard]] std::string& operator[](ImportColumn column) {
    return texts[static_cast<std::size_t>(column)];
  }
};

/// Makes the row of a file. `info` is what ReadMp3Info or ReadOggInfo left; of the settings those
/// of capitalising and replacing count. `now` is the text of the present moment.
///
/// Quotes in tag texts: each single or double quote is two single quotes in the row. Lengths count
/// characters. Title and artist of more than 255 are cut to 25; comment, lyrics and biography have
/// no limit.
void BuildImportRow(const FileFacts& facts, const Mp3Info& info, const Preferences& options,
                    std::string_view now, ImportRow& row);

/// The tag texts of the row before they are made fit for it: merged, Windows-1252, without zero
/// bytes and blanks at the ends, nothing escaped and nothing cut. The other columns are empty.
void MergeTagTexts(const FileFacts& facts, const Mp3Info& info, const Preferences& options,
                   ImportRow& row);

/// The statement that inserts the row: all columns, or dates, location and sizes for a row that is
/// not whole. `quote` delimits the texts; where a text holds it, it is doubled.
void BuildInsertStatement(const ImportRow& row, char quote, std::string& statement);

}  // namespace tunemeadow
