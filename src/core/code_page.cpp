// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/code_page.h"

#include <algorithm>
#include <array>

#include "core/text.h"

namespace tunemeadow {
namespace {

/// Characters of the bytes 80 to 9F; below and above, byte and character have the same number.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char ByteOf(char32_t character) noexcept {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
    return static_cast<char>(static_cast<unsigned char>(character));
  }
  const auto hit = std::find(kHighControls.begin(), kHighControls.end(), character);
  if (hit == kHighControls.end()) return '?';
  return static_cast<char>(static_cast<unsigned char>(0x80 + (hit - kHighControls.begin())));
}

}  // namespace

std::string FromTagText(std::string_view tag_bytes) {
  if (AllAscii(tag_bytes)) return std::string(tag_bytes);
  std::string text;
  text.reserve(tag_bytes.size() + tag_bytes.size() / 2);
  for (const char c : tag_bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      text += c;
    } else {
      AppendUtf8(text, byte < 0xA0 ? kHighControls[byte - 0x80u] : byte);
    }
  }
  return text;
}

std::string ToTagText(std::string_view text) {
  if (AllAscii(text)) return std::string(text);
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    const CodePoint point = DecodeUtf8(text);
    bytes += ByteOf(point.value);
    text.remove_prefix(point.bytes);
  }
  return bytes;
}

}  // namespace tunemeadow
