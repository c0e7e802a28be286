// SPDX-License-Identifier: GPL-3.0-or-later
// Windows-1252, the code page of tags, to and from UTF-8. The five bytes that the code page leaves
// open (81, 8D, 8F, 90, 9D) stand for the control characters of the same number, so that every byte
// survives a round trip. The table is the one of the WHATWG Encoding Standard.
#pragma once

#include <string>
#include <string_view>

namespace tunemeadow {

/// UTF-8 text of tag bytes. Every byte has a character.
[[nodiscard]] std::string FromTagText(std::string_view tag_bytes);

/// Tag bytes of UTF-8 text. A character that the code page lacks becomes "?".
[[nodiscard]] std::string ToTagText(std::string_view text);

}  // namespace tunemeadow
