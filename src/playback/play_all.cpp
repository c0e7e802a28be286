// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/play_all.h"

#include "core/text.h"
#include "playback/play.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

void PlayEveryRow(Workbench& bench) {
  ResultList& list = bench.ListInView();
  if (list.RowCount() == 0) return;
  list.SetSelected(0, list.RowCount() - 1, true);
  bench.Watcher().SelectionSet();
  LoadSelectedRow(bench);
  cmdSpielen_Click(bench);
}

}  // namespace

void mnuPlaylistPlayAll_Click(Workbench& bench) {
  const TreeSelection node = bench.tree.selected;
  const bool chosen = node.kind == NodeKind::kPlaylist;
  const bool open =
      bench.playlist_in_view && (!chosen || EqualsNoCase(bench.current_playlist, node.name));
  if (!open && !chosen) return;
  if (!open) TreeView1_NodeClick(bench, node);
  PlayEveryRow(bench);
}

void mnuItem3GesamtesArchivabspielen_Click(Workbench& bench) {
  const TreeSelection node = bench.tree.selected;
  if (node.kind != NodeKind::kArchive && node.kind != NodeKind::kArchiveFolder) {
    bench.interaction.ShowMessage({.text = "No CDArchive is  selected."});
    return;
  }
  TreeView1_NodeClick(
      bench, {.kind = NodeKind::kArchive, .key = "CDArchive|" + node.name, .name = node.name});
  PlayEveryRow(bench);
}

}  // namespace tunemeadow
