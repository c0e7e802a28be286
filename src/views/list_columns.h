// SPDX-License-Identifier: GPL-3.0-or-later
// The 30 columns of the result lists, in their standard place.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "tracks/track_field_table.h"

namespace tunemeadow {

inline constexpr std::size_t kListColumns = 30;
inline constexpr std::size_t kFileColumn = 29;  ///< from 0; the file name part of `location`

/// What column n (from 0) shows: the field n of the select list, the last one the file name.
[[nodiscard]] constexpr const FieldColumn& ListColumn(std::size_t column) noexcept {
  return RowOf(column == kFileColumn ? TrackField::file : static_cast<TrackField>(column)).list;
}

/// The kind that a click on a header sorts by; told by the caption alone.
[[nodiscard]] SortKind SortKindOf(std::string_view header) noexcept;

}  // namespace tunemeadow
