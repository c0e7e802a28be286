// SPDX-License-Identifier: GPL-3.0-or-later
// The drop-down lists of the search panels: the distinct values of nine columns.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace tunemeadow {

struct Workbench;

/// One drop-down list and the column it is filled from.
struct SearchItemList {
  std::string_view combo;  ///< cboArtistSearch, cboYearSearch, ...
  std::string_view column;
  std::vector<std::string> values;
};

struct SearchItems {
  SearchItems();
  /// cboArtistSearch, cboYearSearch, cboSongname, cboAlbum, cboGenre, cboSituation, cboPreference,
  /// cboMood, cboTempo.
  std::array<SearchItemList, 9> lists;
  /// Genres of the catalogue that the list of 148 does not hold; cboGenre1 shows them after it.
  std::vector<std::string> further_genres;
};

/// The statement whose rows fill the list of a column: its distinct values that are not empty. Of
/// those that differ in the case of A to Z alone it yields one.
[[nodiscard]] std::string SearchItemStatement(std::string_view column);

/// Fills every list with the rows of its statement, sorted as core/collation.h tells, and tells the
/// window. A list whose column cannot
/// be read is empty.
void RefreshAllSearchitems(Workbench& bench);

/// The same from the library's list, which must hold every track: nothing is read twice.
void TakeSearchitemsOfList(Workbench& bench);

}  // namespace tunemeadow
