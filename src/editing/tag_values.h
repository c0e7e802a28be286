// SPDX-License-Identifier: GPL-3.0-or-later
// Fills the current file's record for the ID3v2 writer: from the editor's texts, from a row's
// cells, or from the file itself. The writer writes every frame, so what is not filled is erased.
#pragma once

#include <array>
#include <initializer_list>
#include <string>

#include "audio/id3v1_writer.h"
#include "audio/mp3_info.h"
#include "audio/tag_writing.h"
#include "run/preferences.h"
#include "views/detail_editor.h"
#include "views/result_list.h"

namespace tunemeadow {

/// All tag texts of one track, UTF-8: what the editor holds or a row's cells do.
struct TagValues {
  std::string title, artist, album, year, comment, track, bpm, genre;
  std::string lyrics, bio, mood, preference, situation, tempo;
  std::string composer, copyright, encoded_by, original, url;
};
[[nodiscard]] TagValues ValuesOfEditor(const DetailEditor& details);
[[nodiscard]] TagValues ValuesOfRow(const ResultList& list, std::size_t row);

/// Sets every field of `info` that the ID3v2 writer takes. Genre is the number of the text, 255 for
/// any other; GenreV2 the text. Adds to `losses` the texts that Windows-1252 cannot hold.
void FillInfo(const TagValues& values, Mp3Info& info, TagLosses& losses);

/// The same for an ID3v1 record.
[[nodiscard]] ID3v1Tag FillRecord(const TagValues& values);

/// Adds to `losses` those of the texts that Windows-1252 cannot hold.
void CountLostCharacters(std::initializer_list<const std::string*> texts, TagLosses& losses);

/// Reads the file's own tags as the import does and sets every field of `info` that the ID3v2
/// writer takes: the ID3v2 values, the genre split, what is missing from the ID3v1 record. False
/// where the file cannot be opened; `info` is then as before.
[[nodiscard]] bool FillInfoFromFile(const std::string& path, const Preferences& options,
                                    Mp3Info& info);

}  // namespace tunemeadow
