// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list_columns.h"

namespace tunemeadow {

const std::array<ListColumn, kListColumns> kColumns = {{
    {"UID", SortKind::kNumber, 1350},
    {"Songname", SortKind::kText, 3600},
    {"Artist", SortKind::kText, 2700},
    {"Genre", SortKind::kText, 1650},
    {"Quality", SortKind::kLeadingNumber, 3450},
    {"Location", SortKind::kText, 4500},
    {"Year", SortKind::kText, 900},
    {"Album", SortKind::kText, 2850},
    {"Trackno.", SortKind::kNumber, 1200},
    {"Playtime", SortKind::kTime, 1200},
    {"Filesize", SortKind::kSize, 1275},
    {"Comment", SortKind::kText, 2400},
    {"BPM", SortKind::kText, 900},
    {"Preview", SortKind::kText, 1200},
    {"Last time played", SortKind::kDate, 2400},
    {"Situation", SortKind::kText, 1500},
    {"Preference", SortKind::kText, 1500},
    {"Tempo", SortKind::kText, 1350},
    {"Mood", SortKind::kText, 1350},
    {"Bios", SortKind::kText, 1800},
    {"Lyrics", SortKind::kText, 1800},
    {"has picture?", SortKind::kText, 1500},
    {"Composer", SortKind::kText, 2100},
    {"Copyright", SortKind::kText, 2100},
    {"Encoded by", SortKind::kText, 1800},
    {"Orig. Artist", SortKind::kText, 2100},
    {"URL", SortKind::kText, 2400},
    {"has ID3v1?", SortKind::kText, 1425},
    {"has ID3v2?", SortKind::kText, 1425},
    {"File", SortKind::kText, 3600},
}};

std::string_view PlaylistHeader(std::size_t column) noexcept {
  return column == IndexOf(Field::haspic) ? "Haspic" : kColumns[column].header;
}

SortKind SortKindOf(std::string_view header) noexcept {
  for (const ListColumn& column : kColumns) {
    if (column.header == header) return column.kind;
  }
  return SortKind::kText;  // "Haspic" among them
}

}  // namespace tunemeadow
