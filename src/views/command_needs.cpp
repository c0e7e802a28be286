// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/command_needs.h"

#include "platform/known_players.h"
#include "views/tree.h"
#include "views/workbench.h"

namespace tunemeadow {

bool AreMet(Needs needs, const Workbench& bench) noexcept {
  if (needs == Needs::kNothing) return true;
  if (needs == Needs::kLibraryInView) return !bench.playlist_in_view;
  if (needs == Needs::kLibraryAway) return LibraryIsAway(bench);
  const NodeKind node = bench.tree.selected.kind;
  if (needs == Needs::kPlaylistNode) return node == NodeKind::kPlaylist;
  if (needs == Needs::kArchiveNode) {
    return node == NodeKind::kArchive || node == NodeKind::kArchiveFolder;
  }
  const ResultList& list = bench.playlist_in_view ? bench.ListView3 : bench.ListView1;
  if (list.SelectedCount() == 0) return false;
  switch (needs) {
    case Needs::kNothing:
    case Needs::kLibraryInView:
    case Needs::kLibraryAway:
    case Needs::kPlaylistNode:
    case Needs::kArchiveNode:
    case Needs::kSelection:
      return true;
    case Needs::kAppendingPlayer:
      return bench.session.PlayerKind == "Winamp" &&
             CanAdd(bench.session.preferences.lblConfigWinamp);
    case Needs::kPlaylist:
      return !bench.tree.playlists.empty();
    case Needs::kPlaylistRows:
      return bench.playlist_in_view;
    case Needs::kLibraryRows:
      return ArchivesTakeRows(bench);
  }
  return true;
}

}  // namespace tunemeadow
