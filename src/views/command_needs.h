// SPDX-License-Identifier: GPL-3.0-or-later
// What commands need in order to have something to do: the rule by which an entry of a menu is
// switched on.
#pragma once

namespace tunemeadow {

struct Workbench;

enum class Needs {
  kNothing,
  kLibraryInView,    ///< the library or an archive in view, no playlist
  kLibraryAway,      ///< a playlist or an archive in view
  kSelection,        ///< selected rows in the list in view, as all that follow
  kAppendingPlayer,  ///< and a player that takes files into its own list
  kPlaylist,         ///< and a playlist that is there already
  kPlaylistRows,     ///< rows of the open playlist
  kLibraryRows,      ///< rows of the library: of no playlist and of no archive
  kPlaylistNode,     ///< no rows, but the node of a playlist selected in the tree
  kArchiveNode,      ///< likewise of an archive, or of a folder of one
};

[[nodiscard]] bool AreMet(Needs needs, const Workbench& bench) noexcept;

}  // namespace tunemeadow
