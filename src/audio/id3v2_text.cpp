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

// Sizes that lie may let every frame run to the end of a large tag; together, and in all the forms
// that they take up to their row, the values must not take hundreds of megabytes.
constexpr std::size_t kLongestValue = std::size_t{1} << 20;

// A tag with pictures is walked fastest in one piece; one above this is read in windows.
constexpr std::size_t kLargestWhole = std::size_t{4} << 20;

constexpr std::size_t kFrameHeaderBytes = 10;

/// How long the text of a tag is.
std::size_t TextBytes(const FileBytes& file, const ID3v2Header& header) noexcept {
  const std::int64_t size = std::min({header.size, file.Length(), kLargestTag});
  return static_cast<std::size_t>(size + kTextBesideTag);
}

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
  return file.ReadPadded(0, TextBytes(file, header));
}

ID3v2TagText::ID3v2TagText(FileBytes& file, const ID3v2Header& header) noexcept
    : file_(&file), size_(TextBytes(file, header)) {
  if (size_ > kLargestWhole) return;
  window_ = LoadID3v2Text(file, header);
  size_ = window_.size();
  file_ = nullptr;
}

std::string_view ID3v2TagText::Piece(std::size_t offset, std::size_t count) noexcept {
  if (offset >= size_) return {};
  count = std::min(count, size_ - offset);
  if (IsWhole()) return window_.substr(offset, count);
  count = std::min(count, kPiece);
  if (offset < begin_ || offset + count > begin_ + window_.size()) {
    bytes_ = file_->ReadPadded(static_cast<std::int64_t>(offset), std::min(kPiece, size_ - offset));
    window_ = bytes_;
    begin_ = offset;
  }
  return window_.substr(offset - begin_, count);
}

std::string ID3v2TagText::Copy(std::size_t offset, std::size_t count) {
  std::string copy;
  while (copy.size() < count) {
    const std::string_view piece = Piece(offset + copy.size(), count - copy.size());
    if (piece.empty()) break;
    copy += piece;
  }
  return copy;
}

std::optional<std::size_t> FrameSize(ID3v2TagText& text, std::size_t offset) noexcept {
  std::uint32_t size = 0;
  for (std::size_t i = offset + 4; i < offset + 8; ++i) {
    size = size << 8 | static_cast<std::uint8_t>(text.Byte(i));
  }
  if (size > 0x7FFFFFFF) return std::nullopt;
  return size;
}

std::optional<std::size_t> FrameSize(std::string_view text, std::size_t offset) noexcept {
  ID3v2TagText whole(text);
  return FrameSize(whole, offset);
}

ID3v2ValueRange RawFrameValue(std::size_t text_size, std::size_t offset,
                              std::size_t size) noexcept {
  const std::size_t start = offset + kFrameHeaderBytes + 1;
  if (size == 0 || start >= text_size) return {};
  return {start, std::min({size - 1, kLongestValue, text_size - start})};
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

std::optional<TagText> ReadFrameText(std::size_t position, ID3v2TagText& tag_text) {
  if (position == 0) return std::nullopt;
  const std::optional<std::size_t> size = FrameSize(tag_text, position - 1);
  if (!size) return std::nullopt;
  const ID3v2ValueRange value = RawFrameValue(tag_text.Size(), position - 1, *size);
  return CleanFrameValue(tag_text.Copy(value.begin, value.size));
}

std::optional<TagText> ReadFrameText(std::size_t position, std::string_view tag_text) {
  ID3v2TagText whole(tag_text);
  return ReadFrameText(position, whole);
}

}  // namespace tunemeadow
