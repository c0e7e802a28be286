// SPDX-License-Identifier: GPL-3.0-or-later
// The bytes of a Lyrics3 v2.00 block.
//
//   "LYRICSBEGIN" | "IND00002" two flags | field... | size 6 digits | "LYRICS200"
//   field: 3 letters | length 5 digits | value
//
// The size counts from "LYRICSBEGIN" to the last field's end.
#pragma once

#include <optional>
#include <string>

#include "audio/lyrics3.h"

namespace tunemeadow {

/// The block of the fields that are not empty; EAL, EAR and ETT only above 30 bytes. The first flag
/// tells of lyrics, the second of time stamps in them. nullopt if a field has more than 32767
/// bytes, which the reader would not take, or the block more than 999999, which its digits cannot
/// tell.
[[nodiscard]] std::optional<std::string> BuildLyrics3Block(const Lyrics3& fields);

}  // namespace tunemeadow
