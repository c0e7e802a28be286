// SPDX-License-Identifier: GPL-3.0-or-later
// Writes and removes the ID3v1 record at the end of a file, and fills one from texts.
#pragma once

#include <string>
#include <string_view>

#include "audio/mdl_ID3.h"
#include "audio/tag_writing.h"

namespace tunemeadow {

/// The fields of a record as texts, Windows-1252.
struct ID3v1Texts {
  TagText artist, genre, title, year, album, comment;
  TagText track;  ///< decimal, at most 255; empty: the comment has all 30 bytes
};

/// Blanks fill what is short, what is long is cut. `genre` counts by exact equality with a name of
/// the table, otherwise it is 255. With a track the comment has 28 bytes, a zero byte and the
/// number.
[[nodiscard]] ID3v1Tag FillID3v1Tag(const ID3v1Texts& texts);

/// Writes the record over the one that is there, or after the file's last byte. `blank` puts three
/// blanks in place of "TAG". False if the file is missing or cannot be written; it is then
/// as before, and `writing.fault` says why.
[[nodiscard]] bool WriteID3v1Tag(TagWriting& writing, const std::string& path, ID3v1Tag tag,
                                 bool blank);

/// Cuts the record off. "OK", kNoID3v1Tag, "error opening file for writing", or an empty text for a
/// file that does not exist; of the last two `writing.fault` tells the reason.
[[nodiscard]] std::string RemoveID3v1Tag(TagWriting& writing, const std::string& path);

}  // namespace tunemeadow
