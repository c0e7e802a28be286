// SPDX-License-Identifier: GPL-3.0-or-later
// The genre names of ID3v1 by number, in the spellings that the catalogue has always used.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tunemeadow {

inline constexpr int kGenreCount = 148;        ///< numbers 0 to 147 have a name
inline constexpr std::int16_t kNoGenre = 255;  ///< the number of "none" and of any other name

/// Names 0 to 147; 148 to 256 are empty, since a lookup may ask for any number up to 256.
extern const std::array<std::string_view, 257> Genres;

/// The number of a name: the first of 0 to 147 that equals it exactly, otherwise 255.
[[nodiscard]] std::int16_t GenreNumberFromName(std::string_view name) noexcept;

/// The table's entry, which may be empty; nullopt outside 0 to 256.
[[nodiscard]] std::optional<std::string_view> GenreName(int number) noexcept;

}  // namespace tunemeadow
