// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_names.h"

#include <array>
#include <cstring>

namespace tunemeadow {
namespace {

constexpr std::size_t kNameBytes = 4;
constexpr std::size_t kStride = 16;

// Sixteen bytes compared at once; plain code on a machine without such registers.
using Bytes16 [[gnu::vector_size(kStride)]] = std::uint8_t;

Bytes16 LoadBytes16(const char* bytes) noexcept {
  Bytes16 loaded;
  std::memcpy(&loaded, bytes, sizeof loaded);
  return loaded;
}

/// False if none of the 16 places from `bytes` on starts a name. Looks at 18 bytes: all names begin
/// with one of five letters and go on with two capitals.
bool MayStartName(const char* bytes) noexcept {
  const Bytes16 first = LoadBytes16(bytes);
  const Bytes16 second = LoadBytes16(bytes + 1) - 'A';
  const Bytes16 third = LoadBytes16(bytes + 2) - 'A';
  const auto places =
      ((first == 'T') | (first == 'C') | (first == 'A') | (first == 'U') | (first == 'W')) &
      (second < 26) & (third < 26);
  std::array<std::uint64_t, 2> halves;
  static_assert(sizeof halves == sizeof places);
  std::memcpy(halves.data(), &places, sizeof places);
  return (halves[0] | halves[1]) != 0;
}

constexpr std::uint32_t PackName(const char* name) noexcept {
  std::uint32_t packed = 0;
  for (std::size_t i = 0; i < kNameBytes; ++i) {
    packed = packed << 8 | static_cast<std::uint8_t>(name[i]);
  }
  return packed;
}

constexpr std::array<std::uint32_t, kID3v2Names> kPackedNames = {
    PackName("TPE1"), PackName("TIT2"), PackName("TALB"), PackName("TRCK"), PackName("TBPM"),
    PackName("TCON"), PackName("TCOM"), PackName("TYER"), PackName("TOPE"), PackName("TENC"),
    PackName("TCOP"), PackName("WXXX"), PackName("USLT"), PackName("APIC"), PackName("COMM"),
};

bool IsFirstLetter(char letter) noexcept {
  return letter == 'T' || letter == 'C' || letter == 'A' || letter == 'U' || letter == 'W';
}

}  // namespace

std::optional<ID3v2NameHit> FindID3v2Name(std::string_view text, std::size_t from) noexcept {
  std::size_t at = from;
  while (at + kNameBytes <= text.size()) {
    if (at + kStride + 2 <= text.size() && !MayStartName(text.data() + at)) {
      at += kStride;
      continue;
    }
    for (const std::size_t end = at + kStride; at < end && at + kNameBytes <= text.size(); ++at) {
      if (!IsFirstLetter(text[at])) continue;
      const std::uint32_t packed = PackName(text.data() + at);
      for (std::size_t i = 0; i < kPackedNames.size(); ++i) {
        if (packed == kPackedNames[i]) return ID3v2NameHit{static_cast<ID3v2Name>(i), at};
      }
    }
  }
  return std::nullopt;
}

}  // namespace tunemeadow
