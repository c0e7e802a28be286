// SPDX-License-Identifier: GPL-3.0-or-later
// The 30 columns of the result lists, in their standard place.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "tracks/track_record.h"

namespace tunemeadow {

/// How a column is sorted. The numbers are those of mLVSort.
enum class SortKind : int {
  kNumber = 0,
  kText = 1,
  kTime = 2,           ///< "m:ss"
  kLeadingNumber = 3,  ///< the part before the first blank
  kDate = 4,
  kSize = 5  ///< "x.xx MB"
};

inline constexpr std::size_t kListColumns = 30;
inline constexpr std::size_t kFileColumn = 29;  ///< from 0; the file name part of `location`

struct ListColumn {
  std::string_view header;
  SortKind kind;
  int standard_width;  ///< twips (1/1440 inch)
};

/// Column n (from 0) shows the field n of TrackRecord; the last one the file name.
extern const std::array<ListColumn, kListColumns> kColumns;

/// Header of column n (from 0) in ListView3, where one differs.
[[nodiscard]] std::string_view PlaylistHeader(std::size_t column) noexcept;

/// The kind that a click on a header sorts by; told by the caption alone.
[[nodiscard]] SortKind SortKindOf(std::string_view header) noexcept;

}  // namespace tunemeadow
