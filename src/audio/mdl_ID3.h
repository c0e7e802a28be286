// SPDX-License-Identifier: GPL-3.0-or-later
// The 128-byte ID3v1 and ID3v1.1 tag at the end of a file, read as it stands. The looser scan that
// accepts a "tag" in any case and place belongs to mp3reader.h.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "audio/file_bytes.h"

namespace tunemeadow {

/// The record as it stands in the file. Texts are Windows-1252, filled up with blanks by this
/// program and with zero bytes by others. In the 1.1 form Comment holds 28 characters, a zero byte
/// and the track number.
struct ID3v1Tag {
  std::array<char, 3> Tag{};  ///< "TAG"
  std::array<char, 30> Title{};
  std::array<char, 30> Artist{};
  std::array<char, 30> Album{};
  std::array<char, 4> Year{};
  std::array<char, 30> Comment{};
  std::uint8_t Genre = 255;  ///< 255 means none
};
static_assert(sizeof(ID3v1Tag) == 128);

/// True, with the record in `tag`, if the last 128 bytes begin with "TAG" in exact case. False
/// otherwise, also where the file is missing or shorter; `tag` is then as before.
[[nodiscard]] bool ReadID3v1Tag(FileBytes& file, ID3v1Tag& tag);
[[nodiscard]] bool ReadID3v1Tag(const std::string& path, ID3v1Tag& tag);

}  // namespace tunemeadow
