// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_text.h"

#include <algorithm>

#include "core/text.h"

namespace tunemeadow {
namespace {

// Header and what follows the tag.
constexpr std::int64_t kTextBesideTag = 101;

// The largest size that a header can tell with bytes of seven bits. A size byte above 127 may tell
// twice as much, and lies.
constexpr std::int64_t kLargestTag = std::int64_t{1} << 28;

// Sizes that lie may let every frame run to the end of a large tag; together they must not take
// gigabytes.
constexpr std::size_t kLongestValue = std::size_t{1} << 24;

constexpr std::size_t kFrameHeaderBytes = 10;

}  // namespace

std::optional<ID3v2Header> ParseID3v2Header(std::string_view head) noexcept {
  if (head.size() < kID3v2HeaderBytes || !head.starts_with("ID3")) return std::nullopt;
  ID3v2Header header;
  header.version = static_cast<std::uint8_t>(head[3]);
  for (std::size_t i = 6; i < kID3v2HeaderBytes; ++i) {
    header.size = header.size * 128 + static_cast<std::uint8_t>(head[i]);
  }
  return header;
}

std::string_view LoadID3v2Text(FileBytes& file, const ID3v2Header& header) noexcept {
  const std::int64_t size = std::min({header.size, file.Length(), kLargestTag});
  return file.ReadPadded(0, static_cast<std::size_t>(size + kTextBesideTag));
}

std::optional<std::size_t> FrameSize(std::string_view text, std::size_t offset) noexcept {
  std::uint32_t size = 0;
  for (std::size_t i = offset + 4; i < offset + 8; ++i) {
    const char byte = i < text.size() ? text[i] : '\0';
    size = size << 8 | static_cast<std::uint8_t>(byte);
  }
  if (size > 0x7FFFFFFF) return std::nullopt;
  return size;
}

std::string_view RawFrameValue(std::string_view text, std::size_t offset,
                               std::size_t size) noexcept {
  const std::size_t start = offset + kFrameHeaderBytes + 1;
  if (size == 0 || start >= text.size()) return {};
  return text.substr(start, std::min(size - 1, kLongestValue));
}

std::size_t EndOfDescription(std::string_view frame, std::size_t from, bool wide) noexcept {
  if (!wide) return std::min(frame.find('\0', from), frame.size());
  for (std::size_t at = from; at + 1 < frame.size(); at += 2) {
    if (frame[at] == '\0' && frame[at + 1] == '\0') return at;
  }
  return frame.size();
}

TagText CleanFrameValue(std::string_view raw) {
  if (raw.find('\xFE') == std::string_view::npos) return TagText(raw);
  return ReplaceEach(ReplaceEach(raw, "\xFF\xFE", ""), "\x9F\xFE", "");
}

std::optional<TagText> ReadFrameText(std::size_t position, std::string_view tag_text) {
  if (position == 0) return std::nullopt;
  const std::optional<std::size_t> size = FrameSize(tag_text, position - 1);
  if (!size) return std::nullopt;
  return CleanFrameValue(RawFrameValue(tag_text, position - 1, *size));
}

}  // namespace tunemeadow
