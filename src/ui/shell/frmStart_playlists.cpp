// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of playlists and CD archives, and the order of the open playlist.
#include <QMenu>

#include "platform/drives.h"
#include "playback/cd_archives.h"
#include "playback/playlist_files.h"
#include "playback/playlists.h"
#include "run/preference_rules.h"
#include "ui/panes/order_bar.h"
#include "ui/panes/result_view.h"
#include "ui/panes/tree_pane.h"
#include "ui/shell/frmStart.h"
#include "ui/windows/playback/frmLaufwerke.h"
#include "ui/windows/playback/frmShowPlaylists.h"
#include "views/tree.h"

namespace tunemeadow {

void frmStart::ConnectPlaylists() {
  playlist_view_->SetReorders(true);
  connect(playlist_view_, &ResultView::RowsMoved, this, [this](int before) {
    if (!session_.busy) MoveSelectedPlaylistRows(bench_, static_cast<std::size_t>(before));
  });
  connect(playlist_view_, &ResultView::DeletePressed, this, &frmStart::mnuDelete_Click);
  connect(order_bar_, &OrderBar::PlaceWanted, this, [this](int place) {
    const auto row = RowToOrder(bench_.ListView3);
    if (!session_.busy && row) MovePlaylistRow(bench_, *row, static_cast<std::size_t>(place));
    ShowOrderPlace();
  });
  tree_pane_->SetArchivesTakeRows([this] { return ArchivesTakeRows(bench_); });
  connect(tree_pane_, &TreePane::RowsDropped, this, &frmStart::RowsDropped);
}

/// Asked once for each filling: whether the order of these rows is that of the playlist.
void frmStart::ShowOrderBar() {
  order_matters_ = ShowsWholePlaylist(bench_);
  ShowOrderPlace();
}

void frmStart::ShowOrderPlace() {
  const ResultList& list = bench_.ListView3;
  order_bar_->ShowPlace(list.RowCount(), order_matters_ ? RowToOrder(list) : std::nullopt);
}

void frmStart::RowsDropped(NodeKind kind, const std::string& name) {
  if (session_.busy) return;
  if (kind == NodeKind::kPlaylist || kind == NodeKind::kPlaylists) {
    bench_.PlaylistTargetName = name;
    tunemeadow::mnuPlaylistSave_Click(bench_);
  } else if (ArchivesTakeRows(bench_)) {
    tunemeadow::mnuExtrasDisk2CD_Click(bench_, name);
  }
}

void frmStart::mnuPlaylistSave_Click() { RunOnSelection(tunemeadow::mnuPlaylistSave_Click); }

void frmStart::mnuPlaylistAddItems_Click() {
  if (session_.busy) return;
  frmShowPlaylists window(PlaylistNames(bench_), this);
  if (window.exec() == QDialog::Accepted) {
    tunemeadow::mnuPlaylistAddItems_Click(bench_, window.Chosen());
  }
}

void frmStart::mnuToolsRandomPlaylist_Click() {
  RunOnSelection(tunemeadow::mnuToolsRandomPlaylist_Click);
}
void frmStart::mnuPlaylistDelete_Click() { RunOnSelection(tunemeadow::mnuPlaylistDelete_Click); }
void frmStart::mnuPlaylistUmbenennen_Click() {
  RunOnSelection(tunemeadow::mnuPlaylistUmbenennen_Click);
}
void frmStart::mnuExporttoPlaylist_Click() {
  RunOnSelection(tunemeadow::mnuExporttoPlaylist_Click);
}
void frmStart::mnuExporttoplsPlaylist_Click() {
  RunOnSelection(tunemeadow::mnuExporttoplsPlaylist_Click);
}

void frmStart::mnuDelete_Click() {
  if (!session_.busy && bench_.playlist_in_view) DeleteFromPlaylist(bench_);
}

void frmStart::mnuExtrasDisk2CD_Click() {
  if (!session_.busy) tunemeadow::mnuExtrasDisk2CD_Click(bench_);
}

void frmStart::mnuItem3CDArchivloeschen_Click() {
  if (session_.busy) return;
  tunemeadow::mnuItem3CDArchivloeschen_Click(bench_, [this] {
    frmLaufwerke window(DrivesForDiscs(bench_.world.drives), session_.preferences.lblConfigCDROM,
                        interaction_, this);
    if (window.exec() != QDialog::Accepted) return;
    const std::string drive = window.Chosen();
    if (!PathFitsSettings(drive)) {
      interaction_.ShowMessage(PathTooLongBox(drive));
      return;
    }
    session_.preferences.lblConfigCDROM = drive;
    session_.ini.SaveString(kConfigSection, "lblConfigCDROM", drive);
  });
}

}  // namespace tunemeadow
