// SPDX-License-Identifier: GPL-3.0-or-later
// Playing, and searching the web for the track in the editor.
#include "net/web_lookup.h"
#include "playback/play.h"
#include "playback/play_all.h"
#include "ui/panes/bottom_strip.h"
#include "ui/panes/detail_panels.h"
#include "ui/panes/result_view.h"
#include "ui/shell/frmStart.h"
#include "views/track_path.h"

namespace tunemeadow {
void frmStart::ConnectPlaying() {
  connect(bottom_strip_, &BottomStrip::PlayRequested, this, &frmStart::cmdSpielen_Click);
  connect(bottom_strip_, &BottomStrip::PlaySelectionRequested, this,
          &frmStart::cmdPlaySelection_Click);
  connect(bottom_strip_, &BottomStrip::TryPreviewToggled, this,
          [this](bool on) { bench_.try_preview = on; });
  for (ResultView* view : {list_view_, playlist_view_}) {
    connect(view, &ResultView::ItemDoubleClicked, this, &frmStart::cmdSpielen_Click);
    view->SetDragPath([this](std::size_t row) { return PathToPlay(bench_, row); });
  }
}

void frmStart::cmdSpielen_Click() { tunemeadow::cmdSpielen_Click(bench_); }

void frmStart::mnuPlay_Click() { cmdSpielen_Click(); }

void frmStart::cmdPlaySelection_Click() {
  cmdSpielen_Click();
  ViewInView().setFocus();
}

void frmStart::mnuAddToWinampsplaylist_Click() {
  tunemeadow::mnuAddToWinampsplaylist_Click(bench_);
}

void frmStart::mnuPlaylistPlayAll_Click() {
  if (!session_.busy) tunemeadow::mnuPlaylistPlayAll_Click(bench_);
}

void frmStart::mnuItem3GesamtesArchivabspielen_Click() {
  if (!session_.busy) tunemeadow::mnuItem3GesamtesArchivabspielen_Click(bench_);
}

void frmStart::mnuAmazoncom_Click() {
  tunemeadow::mnuAmazoncom_Click(bench_, detail_panels_->Lookup());
}

void frmStart::mnucddbcom_Click() {
  tunemeadow::mnucddbcom_Click(bench_, detail_panels_->Lookup());
}

void frmStart::mnuSearchCovers_Click() {
  tunemeadow::mnuSearchCovers_Click(bench_, detail_panels_->Lookup());
}

void frmStart::mnusonicnet_Click() {
  tunemeadow::mnusonicnet_Click(bench_, detail_panels_->Lookup());
}

}  // namespace tunemeadow
