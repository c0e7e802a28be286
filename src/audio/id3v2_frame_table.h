// SPDX-License-Identifier: GPL-3.0-or-later
// The frame names of ID3v2.3 and 2.4 with their descriptions.
#pragma once

#include <array>
#include <string_view>

namespace tunemeadow {

struct ID3v2FrameRow {
  std::string_view identifier;
  std::string_view description;
};

extern const std::array<ID3v2FrameRow, 55> kID3v2Frames;

/// The description of a frame name, empty for an unknown one.
[[nodiscard]] std::string_view ID3v2FrameDescription(std::string_view identifier) noexcept;

}  // namespace tunemeadow
