// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the ID3v2 tag at the head of a file into the tag strings, by searching it for frame names.
// Nothing here throws, asks the user, or knows of the window or the database.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "audio/file_bytes.h"
#include "audio/id3v2_text.h"  // ReadFrameText
#include "audio/mp3_info.h"

namespace tunemeadow {

/// The setting optID3V2Versions.
enum class ID3v2Versions {
  kTwoToFour,  ///< "read only 2.4.0,2.3.0,2.2.0"
  kAny,        ///< "ignore subversion"
};

/// Whether the file begins with "ID3".
[[nodiscard]] bool HasID3v2Tag(FileBytes& file) noexcept;
[[nodiscard]] bool HasID3v2Tag(const std::string& path);

/// Fills the texts of `info` that an ID3v2 tag has, in the order of ID3v2Name up to Lyrics, then
/// HasPicture, Comment and the comments that MusicMatch has marked, Preference first. A
/// missing frame empties its field; of a tag of version 2.2 none is found. Values are bytes of
/// Windows-1252 with the zero bytes of UTF-16 in them: StripNulls is the caller's.
///
/// Returns "OK", or an empty text if there is no tag of those versions, or the file can't be read
/// (`info` is then as before), or a frame declares a size above 2^31-1 (the fields before it in the
/// order above are then filled).
[[nodiscard]] std::string ReadID3v2Tag(FileBytes& file, ID3v2Versions versions, Mp3Info& info);
[[nodiscard]] std::string ReadID3v2Tag(const std::string& path, ID3v2Versions versions,
                                       Mp3Info& info);

/// ReadID3v2Tag with any version, but in a tag of version 3 or 4 each value ends where its frame
/// truly does (TrueFrameSize), and a name inside another text is none: for texts that are to be
/// written back without having been seen. No frame fails it.
[[nodiscard]] std::string ReadID3v2TagByFrames(FileBytes& file, Mp3Info& info);

/// ReadID3v2Tag on `bytes` in place of the file.
[[nodiscard]] std::string ParseID3v2Tag(std::string_view bytes, ID3v2Versions versions,
                                        Mp3Info& info);

/// A genre text such as "(17)Rock" taken apart.
struct GenreText {
  TagText number;            ///< between the first "(" and the first ")"; empty without both
  TagText name;              ///< after the last ")", or the whole text
  std::int16_t genre = 255;  ///< the number, 255 where it is empty, -1 or no whole number
};

/// Splits a genre text that has passed StripNulls. A ")" before the first "(" gives no number.
[[nodiscard]] GenreText SplitGenreText(std::string_view text);

}  // namespace tunemeadow
