// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/lyrics3_block.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kLengthDigits = 5;
constexpr std::size_t kLargestBlock = 999999;
constexpr std::size_t kID3v1TextBytes = 30;  // an extended name is for what is longer

void AppendDigits(std::size_t number, std::size_t count, std::string& text) {
  const std::string digits = std::to_string(number);
  text.append(count - digits.size(), '0');
  text += digits;
}

/// "00" without lyrics, "11" with a "]" and a ":" in them, otherwise "10". The two places count as
/// numbers from 1, joined bit by bit: "]" at 4 and ":" at 3 are no time stamp.
std::string_view FlagsOf(std::string_view lyrics) noexcept {
  if (lyrics.empty()) return "00";
  const std::size_t bracket = lyrics.find(']') + 1;  // 0 if there is none
  const std::size_t colon = lyrics.find(':') + 1;
  return (bracket & colon) != 0 ? "11" : "10";
}

bool IsExtendedName(TagText Lyrics3::*field) noexcept {
  return field == &Lyrics3::Lyrics3Eal || field == &Lyrics3::Lyrics3Ear ||
         field == &Lyrics3::Lyrics3Ett;
}

}  // namespace

std::optional<std::string> BuildLyrics3Block(const Lyrics3& fields) {
  std::string block(kLyrics3Begin);
  block += "IND00002";
  block += FlagsOf(fields.Lyrics3Lyr);
  for (const Lyrics3Field& known : kLyrics3Fields) {
    const TagText& value = fields.*known.field;
    const std::size_t shortest = IsExtendedName(known.field) ? kID3v1TextBytes + 1 : 1;
    if (value.size() < shortest) continue;
    if (value.size() > kLongestLyrics3Field) return std::nullopt;
    block += known.letters;
    AppendDigits(value.size(), kLengthDigits, block);
    block += value;
  }
  block += fields.Lyrics3Other;
  if (block.size() > kLargestBlock) return std::nullopt;
  AppendDigits(block.size(), kLyrics3SizeDigits, block);
  block += kLyrics3End;
  return block;
}

}  // namespace tunemeadow
