// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_walk.h"

#include <algorithm>

#include "audio/id3v2_text.h"

namespace tunemeadow {
namespace {

constexpr std::uint8_t kExtendedHeaderFlag = 0x40;

std::uint8_t VersionOf(std::string_view tag) noexcept { return static_cast<std::uint8_t>(tag[3]); }

/// Letters of a name; its size has as many bytes.
std::size_t NameBytes(std::string_view tag) noexcept { return VersionOf(tag) == 2 ? 3 : 4; }

std::size_t HeadBytes(std::string_view tag) noexcept { return VersionOf(tag) == 2 ? 6 : 10; }

std::size_t SizeAt(std::string_view tag, std::size_t at, std::size_t count,
                   std::size_t base) noexcept {
  std::size_t size = 0;
  for (std::size_t i = at; i < at + count; ++i) {
    size = size * base + (i < tag.size() ? static_cast<std::uint8_t>(tag[i]) : 0U);
  }
  return size;
}

bool HasFrameNameAt(std::string_view tag, std::size_t at) noexcept {
  if (at > tag.size() || tag.size() - at < HeadBytes(tag)) return false;
  const std::string_view name = tag.substr(at, NameBytes(tag));
  return std::all_of(name.begin(), name.end(), [](char letter) {
    return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
  });
}

/// How well a frame may end there: 2 before a frame, 1 before padding or the end, otherwise 0.
int SenseAt(std::string_view tag, std::size_t at) noexcept {
  if (HasFrameNameAt(tag, at)) return 2;
  return at == tag.size() || (at < tag.size() && tag[at] == '\0') ? 1 : 0;
}

/// Where the first frame begins.
std::size_t BehindHeaders(std::string_view tag) noexcept {
  std::size_t at = kID3v2HeaderBytes;
  if ((static_cast<std::uint8_t>(tag[5]) & kExtendedHeaderFlag) == 0) return at;
  // In 2.3 its size leaves out the four size bytes; in 2.4 it includes them.
  if (VersionOf(tag) == 3) at += 4 + SizeAt(tag, at, 4, 256);
  if (VersionOf(tag) == 4) at += SizeAt(tag, at, 4, 128);
  return at;
}

}  // namespace

std::optional<ID3v2TrueSize> TrueFrameSize(std::string_view tag, std::size_t offset) noexcept {
  const std::size_t count = NameBytes(tag);
  const std::size_t body = offset + HeadBytes(tag);
  ID3v2TrueSize size = {SizeAt(tag, offset + count, count, 256), false};
  if (VersionOf(tag) != 2) {
    ID3v2TrueSize other = {SizeAt(tag, offset + count, count, 128), true};
    if (VersionOf(tag) == 4) std::swap(size, other);
    if (SenseAt(tag, body + other.bytes) > SenseAt(tag, body + size.bytes)) size = other;
  }
  if (SenseAt(tag, body + size.bytes) == 0) return std::nullopt;
  return size;
}

ID3v2Walk::ID3v2Walk(std::string_view tag) noexcept : tag_(tag), at_(BehindHeaders(tag)) {}

std::optional<ID3v2WalkedFrame> ID3v2Walk::Next() noexcept {
  if (!HasFrameNameAt(tag_, at_)) return std::nullopt;
  const std::optional<ID3v2TrueSize> size = TrueFrameSize(tag_, at_);
  if (!size) return std::nullopt;
  const std::size_t body = at_ + HeadBytes(tag_);
  ID3v2WalkedFrame frame = {at_, tag_.substr(at_, NameBytes(tag_)), 0,
                            tag_.substr(body, size->bytes)};
  if (Version() != 2) frame.format = static_cast<std::uint8_t>(tag_[body - 1]);
  at_ = body + size->bytes;
  return frame;
}

std::uint8_t ID3v2Walk::Version() const noexcept { return VersionOf(tag_); }

}  // namespace tunemeadow
