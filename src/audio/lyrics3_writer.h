// SPDX-License-Identifier: GPL-3.0-or-later
// Writes and removes the Lyrics3 v2.00 block between the audio and the ID3v1 record.
#pragma once

#include <string>

#include "audio/lyrics3.h"
#include "audio/tag_writing.h"

namespace tunemeadow {

/// What the editor holds for the block, Windows-1252.
struct Lyrics3Texts {
  TagText lyrics, mood, situation;
  TagText title, artist, album;  ///< only their lengths count: above 30 a block is needed
};

/// Sets lyrics, mood and situation in `block`, which holds what the file's own block was read to
/// hold (also one that could not be read whole; or nothing), and writes it: at 127 bytes before the
/// end of the file, or at the start of the old block where there is one, as it would lie before an
/// ID3v1 record; that record follows it. Without a record that is inside the last bytes of the
/// file, which is how blocks have always been written here: 128 bytes of sound go, and
/// `writing.losses` counts it.
///
/// `ok` is true if the file now ends with the block and its record, or needs none. False, and the
/// file as before, where it cannot be written, a field is longer than 32767 bytes, which no reader
/// would take back, or the block longer than 999999; `writing.fault` says which.
void WriteTag(TagWriting& writing, const std::string& path, const Lyrics3Texts& texts,
              Lyrics3& block, bool& ok);

/// Takes the block away; an ID3v1 record stays. "OK", kNoLyrics3Tag or "LYRICS3 Tag can't be
/// removeed!", with the file as before.
[[nodiscard]] std::string KillLyrics3Tag(TagWriting& writing, const std::string& path);

}  // namespace tunemeadow
