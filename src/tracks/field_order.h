// SPDX-License-Identifier: GPL-3.0-or-later
// Some of the fields of a track in an order of their own: that of a statement, of a search.
#pragma once

#include <array>
#include <cstddef>

#include "tracks/track_field_table.h"

namespace tunemeadow {

/// The fields that have a place of this kind (&TrackFieldRow::search, insert, save, mass_save,
/// save_all), in its order. Does not compile where a place is missing or taken twice.
template <auto kKind>
[[nodiscard]] consteval auto FieldsInOrder() {
  constexpr std::size_t kPlaces = [] {
    std::size_t places = 0;
    for (const TrackFieldRow& row : kTrackFieldTable) places += (row.*kKind).place != 0 ? 1 : 0;
    return places;
  }();
  std::array<TrackField, kPlaces> fields{};
  std::array<bool, kPlaces> taken{};
  for (const TrackFieldRow& row : kTrackFieldTable) {
    if ((row.*kKind).place == 0) continue;
    const auto place = static_cast<std::size_t>((row.*kKind).place - 1);
    if (taken.at(place)) throw "two fields have the same place";
    taken.at(place) = true;
    fields.at(place) = row.field;
  }
  return fields;
}

}  // namespace tunemeadow
