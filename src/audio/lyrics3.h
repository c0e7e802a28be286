// SPDX-License-Identifier: GPL-3.0-or-later
// The Lyrics3 v2.00 block between the audio and the ID3v1 tag, or at the very end of a file, with
// this program's own fields QUA, SIT and MOO.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "audio/file_bytes.h"
#include "audio/mp3_info.h"

namespace tunemeadow {

/// The fields of one block, Windows-1252, blanks cut at both ends.
struct Lyrics3 {
  TagText Lyrics3Lyr;  ///< lyrics
  TagText Lyrics3Inf;  ///< information
  TagText Lyrics3Aut;  ///< author
  TagText Lyrics3Eal;  ///< extended album
  TagText Lyrics3Ear;  ///< extended artist
  TagText Lyrics3Ett;  ///< extended title
  TagText Lyrics3Img;  ///< image link
  TagText Lyrics3Qua;
  TagText Lyrics3Sit;       ///< situation
  TagText Lyrics3Moo;       ///< mood
  TagText Lyrics3Other;     ///< unknown fields as they stand: letters, digits, value, not trimmed
  TagText Lyrics3SizeText;  ///< the six digits of the block last found
};

inline constexpr std::string_view kLyrics3Begin = "LYRICSBEGIN";
inline constexpr std::string_view kLyrics3End = "LYRICS200";
inline constexpr std::size_t kLyrics3SizeDigits = 6;

/// Size digits, end mark and ID3v1 record. A shorter file has no block, even without a record.
inline constexpr std::size_t kLyrics3TailBytes = 143;

/// The known fields beside IND, in the order in which they are written.
struct Lyrics3Field {
  std::string_view letters;
  TagText Lyrics3::*field;
};
inline constexpr std::array<Lyrics3Field, 10> kLyrics3Fields = {{
    {"LYR", &Lyrics3::Lyrics3Lyr},
    {"INF", &Lyrics3::Lyrics3Inf},
    {"AUT", &Lyrics3::Lyrics3Aut},
    {"EAL", &Lyrics3::Lyrics3Eal},
    {"EAR", &Lyrics3::Lyrics3Ear},
    {"ETT", &Lyrics3::Lyrics3Ett},
    {"IMG", &Lyrics3::Lyrics3Img},
    {"QUA", &Lyrics3::Lyrics3Qua},
    {"SIT", &Lyrics3::Lyrics3Sit},
    {"MOO", &Lyrics3::Lyrics3Moo},
}};

/// The longest value that the reader takes, and so the longest that is written.
inline constexpr std::size_t kLongestLyrics3Field = 32767;

/// Where a block stands. Offsets count from 0.
struct Lyrics3Block {
  std::int64_t start = 0;     ///< of "LYRICSBEGIN"
  std::int64_t limit = 0;     ///< after the last field: of the six size digits
  TagText size_text;          ///< the six size digits
  bool before_id3v1 = false;  ///< its end mark stands 137 bytes before the end, not at the end
};

/// The block that `tail`, the last kLyrics3TailBytes of a file of `length` bytes, tells of: one
/// whose end mark stands before an ID3v1 tag, otherwise one at the end. nullopt if there is no end
/// mark, if the size is no number or points before the file. Whether "LYRICSBEGIN" stands at its
/// start remains to be seen.
[[nodiscard]] std::optional<Lyrics3Block> Lyrics3BlockOfTail(std::string_view tail,
                                                             std::int64_t length);

/// The block whose end mark stands before an ID3v1 tag, otherwise the one at the end. nullopt if
/// there is none, if the size is no number, points before the file or not at "LYRICSBEGIN", and for
/// a file of under 143 bytes.
[[nodiscard]] std::optional<Lyrics3Block> FindLyrics3Block(FileBytes& file);

/// Whether FindLyrics3Block finds one; its size text is then stored in `lyrics`.
[[nodiscard]] bool HasLyrics3Tag(FileBytes& file, Lyrics3& lyrics);
[[nodiscard]] bool HasLyrics3Tag(const std::string& path, Lyrics3& lyrics);

/// Empties `lyrics`, then fills it from the file's block. True if a whole block was walked. False,
/// with the fields as far as they came, if there is none or a field's length is no number or above
/// 32767. A value that runs past the block takes what stands there, up to the end of the file.
[[nodiscard]] bool ReadLyrics3Tag(FileBytes& file, Lyrics3& lyrics);
[[nodiscard]] bool ReadLyrics3Tag(const std::string& path, Lyrics3& lyrics);

}  // namespace tunemeadow
