// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list_columns.h"

namespace tunemeadow {

SortKind SortKindOf(std::string_view header) noexcept {
  for (const TrackFieldRow& row : kTrackFieldTable) {
    if (!header.empty() && row.list.caption == header) return row.list.kind;
  }
  return SortKind::kText;  // the captions that differ in ListView3 among them
}

}  // namespace tunemeadow
