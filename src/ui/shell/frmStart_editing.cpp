// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that change files and rows, and the moments at which a changed record is left.
#include <QToolButton>

#include "editing/audiogalaxy.h"
#include "editing/picture_panel.h"
#include "editing/save.h"
#include "editing/tag_menus.h"
#include "ui/kit/qt_text.h"
#include "ui/panes/detail_panels.h"
#include "ui/panes/picture_pane.h"
#include "ui/panes/result_view.h"
#include "ui/shell/frmStart.h"

namespace tunemeadow {

void frmStart::ConnectDetails() {
  const auto leaf = [this](int index) {
    if (!session_.busy && detail_panels_->FieldsStand()) cmdItemBlaetter_Click(bench_, index);
  };
  connect(next_button_, &QToolButton::clicked, this, [leaf] { leaf(0); });
  connect(previous_button_, &QToolButton::clicked, this, [leaf] { leaf(1); });
  connect(picture_pane_, &PicturePane::AddRequested, this, [this] {
    if (!session_.busy && detail_panels_->FieldsStand()) cmdAddpic_Click(bench_);
  });
  connect(picture_pane_, &PicturePane::SaveRequested, this, [this] {
    if (!session_.busy) cmdSavePic_Click(bench_);
  });
}

/// The row that was chosen. A record with a field that may not stand stays, and nothing else comes
/// of the click than the box on that field.
void frmStart::ShowRecord(std::size_t row) {
  DetailEditor& details = bench_.details;
  if (!details.save_all && (!detail_panels_->FieldsStand() || !MayBecomeMany())) {
    KeepLoadedRecord(bench_);
    return;
  }
  if (!details.save_all && bench_.ListInView().SelectedCount() >= 2) {
    // What the person did not want saved for one track is not meant for many.
    if (details.DetailsChanged) ReloadDetails(bench_);
    details.DetailsKeyed = details.DetailsChanged = false;
  }
  ListView1_ItemClick(bench_, row);
}

/// What is typed for many must not mix with what was typed for the one before them. False where
/// the person wants that saved and it failed.
bool frmStart::MayBecomeMany() {
  return bench_.ListInView().SelectedCount() < 2 || AskToSaveChanges(bench_);
}

void frmStart::cmdSpeichern_Click() {
  if (session_.busy || !detail_panels_->FieldsStand()) return;
  tunemeadow::cmdSpeichern_Click(bench_);
  // Where the save was given up, the person goes on with the record.
  if (!bench_.details.DetailsChanged) ViewInView().setFocus();
}

void frmStart::RunOnSelection(void (*command)(Workbench& bench)) {
  if (!session_.busy) command(bench_);
}

void frmStart::mnuKillAllTags_Click() { RunOnSelection(tunemeadow::mnuKillAllTags_Click); }
void frmStart::mnuKillID3v11Tag_Click() { RunOnSelection(tunemeadow::mnuKillID3v11Tag_Click); }
void frmStart::mnuKillID3v2xTag_Click() { RunOnSelection(tunemeadow::mnuKillID3v2xTag_Click); }
void frmStart::mnuKillLyrics3_Click() { RunOnSelection(tunemeadow::mnuKillLyrics3_Click); }
void frmStart::mnuAddImagetoFile_Click() { RunOnSelection(tunemeadow::mnuAddImagetoFile_Click); }
void frmStart::mnuRemoveImagefromfile_Click() {
  RunOnSelection(tunemeadow::mnuRemoveImagefromfile_Click);
}

void frmStart::Command2_Click() {
  if (!session_.busy) CopyAudiogalaxyCode(bench_);
}

}  // namespace tunemeadow
