// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_true_texts.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "core/code_page.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

constexpr char32_t kByteOrderMark = 0xFEFF;
constexpr char32_t kSwappedMark = 0xFFFE;

/// UTF-8 of UTF-16, without its byte order marks.
std::string FromUtf16(std::string_view bytes, bool high_first) {
  std::string text;
  char32_t high = 0;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    const auto first = static_cast<std::uint8_t>(bytes[at]);
    const auto second = static_cast<std::uint8_t>(bytes[at + 1]);
    const char32_t unit = high_first ? first * 256U + second : second * 256U + first;
    if (unit == kSwappedMark) high_first = !high_first;
    if (unit == kByteOrderMark || unit == kSwappedMark) continue;
    if (unit >= 0xD800 && unit < 0xDC00) {
      high = unit;
    } else if (unit >= 0xDC00 && unit < 0xE000) {
      AppendUtf8(text, 0x10000 + ((high & 0x3FF) << 10) + (unit & 0x3FF));
    } else {
      AppendUtf8(text, unit);
    }
  }
  return text;
}

/// UTF-8 without its byte order mark.
std::string_view WithoutMark(std::string_view text) noexcept {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return text.starts_with(kMark) ? text.substr(kMark.size()) : text;
}

std::string TextOf(std::string_view value, char encoding) {
  switch (encoding) {
    case 1:
    case 2:
      return FromUtf16(value, encoding == 2);
    case 3:
      return std::string(WithoutMark(value));
    default:
      return FromTagText(value);
  }
}

}  // namespace

ID3v2TrueText DecodeFrameText(std::string_view value, char encoding) {
  const std::string text = StripNulls(TextOf(value, encoding));
  ID3v2TrueText truth = {ToTagText(text)};
  truth.whole = std::count(truth.text.begin(), truth.text.end(), '?') ==
                std::count(text.begin(), text.end(), '?');
  return truth;
}

int CountValues(std::string_view value, char encoding) {
  int values = 0;
  bool within = false;
  for (const char byte : TextOf(value, encoding)) {
    if (byte != '\0' && !within) ++values;
    within = byte != '\0';
  }
  return values;
}

}  // namespace tunemeadow
