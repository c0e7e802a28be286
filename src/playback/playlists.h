// SPDX-License-Identifier: GPL-3.0-or-later
// Playlists: named sets of tracks of the catalogue. A playlist exists as long as a row of the table
// `playlists` names it. Names are UTF-8, compare without regard to the case of A to Z, and are cut
// to kLongestPlaylistName characters where a person gives them.
//
// Each statement stands alone; the first one that the store refuses is told in a box and ends the
// command, and what was written before it stays.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "views/workbench.h"

namespace tunemeadow {

inline constexpr std::size_t kLongestPlaylistName = 50;  ///< characters

/// Adds the selected rows of the list in view to the playlist `target_name`, or, where that
/// is empty, to one whose name is asked for. The rows get no position: they stand first, by their
/// paths. A track that is in the list already is added again. The open playlist is searched again,
/// here and in what follows, so that its list shows what was written.
void mnuPlaylistSave_Click(Workbench& bench, const std::string& target_name = {});

/// The same with the name that was chosen in frmShowPlaylists; without one nothing happens.
void mnuPlaylistAddItems_Click(Workbench& bench, const std::string& chosen);

/// The names of all playlists, in their order; none where the store does not answer.
[[nodiscard]] std::vector<std::string> PlaylistNames(Workbench& bench);

/// Asks for a name and makes a playlist of the selected rows of the list in view, each at a random
/// position below the number of all rows. Rows that draw the same one follow their paths.
void mnuToolsRandomPlaylist_Click(Workbench& bench);

/// Deletes the playlist that is selected in the tree, after a question. Tracks and files stay.
/// Of the open one nothing is left to show: LeavePlaylist. Nothing happens on another node.
void mnuPlaylistDelete_Click(Workbench& bench);

/// Renames it. Before it takes the name of another one, which would make one of both for good, the
/// person is asked.
void mnuPlaylistUmbenennen_Click(Workbench& bench);

/// Takes the selected rows of ListView3 out of the open playlist, after a question. A track that
/// stands in it twice goes twice. Other playlists keep it. The last track takes the playlist along:
/// LeavePlaylist.
void DeleteFromPlaylist(Workbench& bench);

/// The open playlist is no more: the whole library comes into view.
void LeavePlaylist(Workbench& bench);

/// Whether ListView3 is in view and shows all tracks of the open playlist, not a search in it. Only
/// then has its order a meaning.
[[nodiscard]] bool ShowsWholePlaylist(Workbench& bench);

/// Stores the row order of ListView3 as positions from 1 on. A track that stands twice gets the
/// last number on both rows.
void SavePlaylistOrder(Workbench& bench);

/// The row that vsOrder moves: the focused one if it is selected, otherwise the first selected one.
[[nodiscard]] std::optional<std::size_t> RowToOrder(const ResultList& list) noexcept;

/// Takes a row of ListView3 to another place, keeps it selected, and stores the order. Nothing
/// happens where ShowsWholePlaylist is false.
void MovePlaylistRow(Workbench& bench, std::size_t from, std::size_t to);

/// Likewise all selected rows, in their order, to the place before the row `before`, or after the
/// last one.
void MoveSelectedPlaylistRows(Workbench& bench, std::size_t before);

}  // namespace tunemeadow
