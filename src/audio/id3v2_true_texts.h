// SPDX-License-Identifier: GPL-3.0-or-later
// What the texts of an ID3v2 tag really say, by their encodings. The readers take the bytes as they
// stand; this tells where that is not the text, so that a save can say what it did not keep.
#pragma once

#include <cstddef>
#include <string_view>

#include "audio/mp3_info.h"

namespace tunemeadow {

/// A text in Windows-1252, without zero characters and without blanks at its ends.
struct ID3v2TrueText {
  TagText text;
  bool whole = true;  ///< false: a character that Windows-1252 lacks has become "?"
};

/// The text of `value` in the encoding of an ID3v2 frame: 0 single bytes, 1 UTF-16 with byte order
/// marks (without one the lower byte comes first), 2 UTF-16 with the higher byte first, 3 UTF-8. An
/// unknown encoding counts as 0.
[[nodiscard]] ID3v2TrueText DecodeFrameText(std::string_view value, char encoding);

/// Values of a frame that zero characters part, empty ones aside.
[[nodiscard]] int CountValues(std::string_view value, char encoding);

}  // namespace tunemeadow
