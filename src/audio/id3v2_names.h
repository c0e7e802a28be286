// SPDX-License-Identifier: GPL-3.0-or-later
// Finds the frame names that this program knows in the text of an ID3v2 tag, all in one pass: a tag
// with a picture of some megabytes is walked once, not once for each name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tunemeadow {

/// In the order in which a tag's fields are filled; COMM comes last.
enum class ID3v2Name : std::uint8_t {
  TPE1,
  TIT2,
  TALB,
  TRCK,
  TBPM,
  TCON,
  TCOM,
  TYER,
  TOPE,
  TENC,
  TCOP,
  WXXX,
  USLT,
  APIC,
  COMM,
};
inline constexpr std::size_t kID3v2Names = 15;

struct ID3v2NameHit {
  ID3v2Name name;
  std::size_t offset;  ///< from 0
};

/// The first of the names at `from` or after it, exact case, in frames and inside other texts
/// alike; nullopt if there is none. Names may overlap ("TCOMM"): go on at offset + 1.
[[nodiscard]] std::optional<ID3v2NameHit> FindID3v2Name(std::string_view text,
                                                        std::size_t from) noexcept;

}  // namespace tunemeadow
