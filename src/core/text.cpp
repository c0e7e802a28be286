// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text.h"

#include <locale.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <cwctype>

namespace tunemeadow {
namespace {

bool IsAscii(char c) noexcept { return static_cast<unsigned char>(c) < 0x80; }

/// Case mappings of the C.UTF-8 locale, which glibc carries in itself: they do not depend on the
/// locale of the person.
locale_t CaseLocale() noexcept {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return locale;
}

/// Upper and lower case of the characters below kCached, where the scripts live that have case and
/// are common in titles.
struct CaseTable {
  static constexpr char32_t kCached = 0x600;
  std::array<char32_t, kCached> upper{}, lower{}, folded{};

  CaseTable() {
    for (char32_t c = 0; c < kCached; ++c) {
      upper[c] = UpperOfWide(c);
      lower[c] = LowerOfWide(c);
      folded[c] = LowerOfWide(upper[c]);
    }
  }

  static char32_t UpperOfWide(char32_t c) noexcept {
    if (c >= kMalformed || CaseLocale() == nullptr) return c;
    return static_cast<char32_t>(towupper_l(static_cast<wint_t>(c), CaseLocale()));
  }

  static char32_t LowerOfWide(char32_t c) noexcept {
    if (c >= kMalformed || CaseLocale() == nullptr) return c;
    return static_cast<char32_t>(towlower_l(static_cast<wint_t>(c), CaseLocale()));
  }
};

const CaseTable& Cases() noexcept {
  static const CaseTable table;
  return table;
}

char32_t UpperOf(char32_t c) noexcept {
  return c < CaseTable::kCached ? Cases().upper[c] : CaseTable::UpperOfWide(c);
}

char32_t LowerOf(char32_t c) noexcept {
  return c < CaseTable::kCached ? Cases().lower[c] : CaseTable::LowerOfWide(c);
}

/// `of_ascii` maps a char, `of_any` any character; they agree on ASCII.
template <typename OfAscii, typename OfAny>
std::string MapCharacters(std::string_view text, OfAscii of_ascii, OfAny of_any) {
  std::string mapped(text);
  std::size_t offset = 0;
  for (; offset < text.size() && IsAscii(text[offset]); ++offset) {
    mapped[offset] = of_ascii(text[offset]);
  }
  mapped.resize(offset);
  while (offset < text.size()) {
    if (IsAscii(text[offset])) {
      mapped += of_ascii(text[offset++]);
      continue;
    }
    const CodePoint point = DecodeUtf8(text.substr(offset));
    AppendUtf8(mapped, of_any(point.value));
    offset += point.bytes;
  }
  return mapped;
}

/// Byte offset of character `index` (from 0), or the size.
std::size_t OffsetOf(std::string_view text, std::size_t index) noexcept {
  std::size_t offset = 0;
  while (index-- > 0 && offset < text.size()) {
    offset += IsAscii(text[offset]) ? 1 : DecodeUtf8(text.substr(offset)).bytes;
  }
  return offset;
}

/// Puts the character at `offset` into upper case.
void CapitalizeWide(std::string& text, std::size_t offset) {
  constexpr char32_t kMicroSign = 0xB5, kFlorin = 0x192;
  const CodePoint point = DecodeUtf8(std::string_view(text).substr(offset));
  if (point.value == kMicroSign || point.value == kFlorin) return;
  std::string upper;
  AppendUtf8(upper, UpperOf(point.value));
  text.replace(offset, point.bytes, upper);
}

}  // namespace

CodePoint DecodeUtf8(std::string_view text) noexcept {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return {lead, 1};
  const std::size_t extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  const CodePoint malformed{kMalformed + lead, 1};
  if (lead < 0xC2 || lead > 0xF4 || text.size() <= extra) return malformed;
  char32_t value = lead & (0x3Fu >> extra);
  for (std::size_t i = 1; i <= extra; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return malformed;
    value = value << 6 | (byte(i) & 0x3Fu);
  }
  const char32_t least = extra == 1 ? 0x80 : extra == 2 ? 0x800 : 0x10000;
  if (value < least || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) return malformed;
  return {value, extra + 1};
}

void AppendUtf8(std::string& text, char32_t character) {
  const auto put = [&](char32_t byte) {
    text += static_cast<char>(static_cast<unsigned char>(byte));
  };
  if (character >= kMalformed) {
    put(character - kMalformed);
  } else if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | character >> 6);
    put(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12);
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  } else {
    put(0xF0 | character >> 18);
    put(0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  }
}

char32_t FoldCase(char32_t character) noexcept {
  return character < CaseTable::kCached ? Cases().folded[character] : LowerOf(UpperOf(character));
}

std::string ToValidUtf8(std::string_view bytes) {
  const auto same = [](char c) { return c; };
  return MapCharacters(bytes, same,
                       [](char32_t c) { return c >= kMalformed ? char32_t{0xFFFD} : c; });
}

bool AllAscii(std::string_view text) noexcept {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::uint64_t seen = 0;
  while (text.size() >= sizeof(seen)) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, text.data(), sizeof(eight));
    seen |= eight;
    text.remove_prefix(sizeof(eight));
  }
  for (const char c : text) seen |= static_cast<unsigned char>(c);
  return (seen & kHighBits) == 0;
}

std::size_t Length(std::string_view text) noexcept {
  if (AllAscii(text)) return text.size();
  std::size_t count = 0;
  for (std::size_t offset = 0; offset < text.size(); ++count) {
    offset += IsAscii(text[offset]) ? 1 : DecodeUtf8(text.substr(offset)).bytes;
  }
  return count;
}

std::string_view Left(std::string_view text, std::size_t count) noexcept {
  if (count >= text.size()) return text;
  return text.substr(0, OffsetOf(text, count));
}

std::string_view Right(std::string_view text, std::size_t count) noexcept {
  const std::size_t length = Length(text);
  return count >= length ? text : text.substr(OffsetOf(text, length - count));
}

std::string_view Mid(std::string_view text, std::size_t start, std::size_t count) noexcept {
  return Left(text.substr(OffsetOf(text, start > 0 ? start - 1 : 0)), count);
}

std::string_view TrimLeft(std::string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? text.substr(text.size()) : text.substr(first);
}

std::string_view TrimRight(std::string_view text) noexcept {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view Trim(std::string_view text) noexcept { return TrimLeft(TrimRight(text)); }

std::string Upper(std::string_view text) {
  return MapCharacters(
      text, [](char c) { return UpperAscii(c); }, UpperOf);
}

std::string Lower(std::string_view text) { return MapCharacters(text, LowerAscii, LowerOf); }

std::string UpperAscii(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = UpperAscii(c);
  return upper;
}

bool EqualsNoCase(std::string_view left, std::string_view right) noexcept {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return UpperAscii(a) == UpperAscii(b); });
}

std::size_t FindNoCase(std::string_view text, std::string_view part, std::size_t from) noexcept {
  if (from > text.size()) return std::string_view::npos;
  const auto hit =
      std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), part.begin(),
                  part.end(), [](char a, char b) { return UpperAscii(a) == UpperAscii(b); });
  if (hit == text.end() && !part.empty()) return std::string_view::npos;
  return static_cast<std::size_t>(hit - text.begin());
}

bool EndsWithNoCase(std::string_view text, std::string_view end) noexcept {
  return text.size() >= end.size() && EqualsNoCase(text.substr(text.size() - end.size()), end);
}

std::string Capitalize(std::string_view text) {
  std::string capitalized(text);
  bool at_word_start = true;
  // The size may change under way. No byte inside a longer character is a blank.
  for (std::size_t i = 0; i < capitalized.size(); ++i) {
    if (at_word_start && IsAscii(capitalized[i])) {
      capitalized[i] = UpperAscii(capitalized[i]);
    } else if (at_word_start) {
      CapitalizeWide(capitalized, i);
    }
    at_word_start = capitalized[i] == ' ';
  }
  return capitalized;
}

std::string StripNulls(std::string_view text) {
  if (text.find('\0') == std::string_view::npos) return std::string(Trim(text));
  std::string kept(text);
  std::erase(kept, '\0');
  kept.resize(TrimRight(kept).size());
  return kept.erase(0, kept.size() - TrimLeft(kept).size());
}

std::string ReplaceEach(std::string_view text, std::string_view what, std::string_view with) {
  std::string replaced;
  std::size_t from = 0;
  for (std::size_t hit; !what.empty() && (hit = text.find(what, from)) != std::string_view::npos;) {
    replaced.append(text, from, hit - from).append(with);
    from = hit + what.size();
  }
  return replaced.append(text, from);
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  for (;;) {
    const std::size_t end = text.find(separator);
    pieces.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + 1);
  }
}

}  // namespace tunemeadow
