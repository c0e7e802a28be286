// SPDX-License-Identifier: GPL-3.0-or-later
// The kinds of picture that a tag tells apart, and how they are named (ID3v2.3, frame APIC); the
// last entry stands for none.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace tunemeadow {

inline constexpr std::array<std::string_view, 22> kPictureKinds = {
    "Other",
    "32x32 pixels 'file icon' (PNG only)",
    "Other file icon",
    "Cover(front)",
    "Cover (back)",
    "Leaflet page",
    "Media (e.g. label side of CD)",
    "Lead artist/lead performer/soloist",
    "Artist/performer",
    "Conductor",
    "Band/Orchestra",
    "Composer",
    "Lyricist/text writer",
    "Recording Location",
    "During recording",
    "During performance",
    "Movie/video screen capture",
    "A bright coloured fish",
    "Illustration",
    "Band/artist logotype",
    "Publisher/Studio logotype",
    "No Picture"};

/// Name of the kind that a frame's number stands for; "Other" beyond the list.
[[nodiscard]] constexpr std::string_view PictureKindName(std::size_t kind) noexcept {
  return kPictureKinds[kind < kPictureKinds.size() - 1 ? kind : 0];
}

}  // namespace tunemeadow
