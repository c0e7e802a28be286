// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/lyrics3.h"

#include <array>
#include <string_view>

#include "core/text.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kFieldLetters = 3;
constexpr std::size_t kFieldHead = 8;  // letters and five digits

constexpr std::size_t kEndAlone = 15;  // size digits and end mark

/// The number of a fixed run of decimal digits; nullopt if any of them is something else.
std::optional<std::size_t> DigitsToNumber(std::string_view digits) noexcept {
  std::size_t number = 0;
  for (const char digit : digits) {
    if (digit < '0' || digit > '9') return std::nullopt;
    number = number * 10 + static_cast<std::size_t>(digit - '0');
  }
  return number;
}

/// Stores a field given as letters, digits and value.
void StoreLyrics3Field(std::string_view field, Lyrics3& lyrics) {
  const std::string_view letters = field.substr(0, kFieldLetters);
  if (letters == "IND") return;
  for (const Lyrics3Field& known : kLyrics3Fields) {
    if (letters != known.letters) continue;
    lyrics.*known.field = Trim(field.substr(kFieldHead));
    return;
  }
  lyrics.Lyrics3Other += field;  // as it stands: trimmed, its digits would no longer fit
}

/// Walks the fields from the start of `bytes` until one begins at `limit` or after it.
bool WalkLyrics3Fields(std::string_view bytes, std::int64_t limit, Lyrics3& lyrics) {
  std::size_t at = 0;
  while (static_cast<std::int64_t>(at) < limit) {
    const std::string_view rest = bytes.substr(at);
    if (rest.size() < kFieldHead) return false;
    const std::optional<std::size_t> length =
        DigitsToNumber(rest.substr(kFieldLetters, kFieldHead - kFieldLetters));
    if (!length || *length > kLongestLyrics3Field || *length > rest.size() - kFieldHead)
      return false;
    StoreLyrics3Field(rest.substr(0, kFieldHead + *length), lyrics);
    at += kFieldHead + *length;
  }
  return true;
}

}  // namespace

std::optional<Lyrics3Block> Lyrics3BlockOfTail(std::string_view tail, std::int64_t length) {
  if (tail.size() != kLyrics3TailBytes) return std::nullopt;
  Lyrics3Block block;
  block.before_id3v1 = tail.substr(kLyrics3SizeDigits).starts_with(kLyrics3End);
  if (!block.before_id3v1 && !tail.ends_with(kLyrics3End)) return std::nullopt;
  const std::size_t end_bytes = block.before_id3v1 ? kLyrics3TailBytes : kEndAlone;
  block.size_text = tail.substr(kLyrics3TailBytes - end_bytes, kLyrics3SizeDigits);
  const std::optional<std::size_t> size = DigitsToNumber(block.size_text);
  if (!size) return std::nullopt;
  block.limit = length - static_cast<std::int64_t>(end_bytes);
  block.start = block.limit - static_cast<std::int64_t>(*size);
  if (block.start < 0) return std::nullopt;
  return block;
}

std::optional<Lyrics3Block> FindLyrics3Block(FileBytes& file) {
  const std::string_view tail =
      file.Read(file.Length() - static_cast<std::int64_t>(kLyrics3TailBytes), kLyrics3TailBytes);
  std::optional<Lyrics3Block> block = Lyrics3BlockOfTail(tail, file.Length());
  if (block && file.Read(block->start, kLyrics3Begin.size()) != kLyrics3Begin) block.reset();
  return block;
}

bool HasLyrics3Tag(FileBytes& file, Lyrics3& lyrics) {
  std::optional<Lyrics3Block> block = FindLyrics3Block(file);
  if (!block) return false;
  lyrics.Lyrics3SizeText = std::move(block->size_text);
  return true;
}

bool HasLyrics3Tag(const std::string& path, Lyrics3& lyrics) {
  FileBytes file;
  return file.Open(path) && HasLyrics3Tag(file, lyrics);
}

bool ReadLyrics3Tag(FileBytes& file, Lyrics3& lyrics) {
  lyrics = {};
  const std::optional<Lyrics3Block> block = FindLyrics3Block(file);
  if (!block) return false;
  lyrics.Lyrics3SizeText = block->size_text;
  const std::int64_t fields = block->start + static_cast<std::int64_t>(kLyrics3Begin.size());
  const std::string_view bytes =
      file.Read(fields, static_cast<std::size_t>(file.Length() - fields));
  return WalkLyrics3Fields(bytes, block->limit - fields, lyrics);
}

bool ReadLyrics3Tag(const std::string& path, Lyrics3& lyrics) {
  FileBytes file;
  if (!file.Open(path)) {
    lyrics = {};
    return false;
  }
  return ReadLyrics3Tag(file, lyrics);
}

}  // namespace tunemeadow
