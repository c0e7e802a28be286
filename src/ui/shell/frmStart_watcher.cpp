// SPDX-License-Identifier: GPL-3.0-or-later
// What the workbench tells, shown.
#include <QKeySequence>
#include <QPushButton>
#include <QToolButton>

#include "playback/playlists.h"
#include "ui/kit/qt_text.h"
#include "ui/panes/bottom_strip.h"
#include "ui/panes/command_pane.h"
#include "ui/panes/detail_panels.h"
#include "ui/panes/order_bar.h"
#include "ui/panes/picture_pane.h"
#include "ui/panes/result_view.h"
#include "ui/panes/search_panels.h"
#include "ui/panes/tree_pane.h"
#include "ui/shell/frmStart.h"
#include "views/tree.h"

namespace tunemeadow {

void frmStart::ListCleared() { windows_.ViewInView(bench_).Freeze(); }

void frmStart::ListFilled() {
  windows_.ViewInView(bench_).Thaw();
  if (!bench_.playlist_in_view) return;
  // Asked once for each filling: whether the order of these rows is that of the playlist.
  windows_.order_matters = ShowsWholePlaylist(bench_);
  windows_.ShowOrderPlace(bench_);
}

void frmStart::OrderChanged() {
  windows_.ViewInView(bench_).ShowOrder();
  windows_.ShowOrderPlace(bench_);
}

void frmStart::RowChanged(std::size_t row) {
  windows_.ViewInView(bench_).RowChanged(static_cast<int>(row));
}

void frmStart::SelectionSet() {
  windows_.ViewInView(bench_).ShowSelection();
  windows_.ShowOrderPlace(bench_);
}

void frmStart::SearchFieldsChanged() { windows_.search_panels->Show(bench_.search); }

void frmStart::SearchFieldsWanted() { bench_.search = windows_.search_panels->Read(); }

void frmStart::HistoryChanged() { windows_.command_pane->ShowHistory(bench_.history); }

void frmStart::SearchItemsChanged() {
  windows_.search_panels->SetItems(bench_.search_items);
  windows_.detail_panels->SetGenres(bench_.search_items.further_genres);
}

void frmStart::TotalsChanged() {
  windows_.bottom_strip->ShowTotals(ToQt(bench_.total_time), ToQt(bench_.total_size));
}

void frmStart::TreeChanged() {
  windows_.tree_pane->Show();
  windows_.search_panels->SetNames(bench_.tree);
}

void frmStart::TreeNodeSelected() { windows_.tree_pane->ShowSelected(); }

void frmStart::DetailsChanged() {
  windows_.detail_panels->Show();
  const bool one_track = bench_.details.enabled && !bench_.details.save_all;
  next_button_->setEnabled(one_track);
  previous_button_->setEnabled(one_track);
  seek_button_->setEnabled(one_track);
  windows_.picture_pane->EnableButtons(bench_.details);
  ShowSaveButton();
}

void frmStart::ShowSaveButton() {
  const DetailEditor& details = bench_.details;
  save_button_->setText(details.save_all ? "&Save all" : "&Save");
  save_button_->setAccessibleName(details.save_all ? "Save all" : "Save");
  const QString keys = QKeySequence(QKeySequence::Save).toString(QKeySequence::NativeText);
  save_button_->setToolTip(
      (details.save_all ? QStringLiteral("Writes the ticked fields into every selected track (%1)")
                        : QStringLiteral("Writes the fields into the file and the catalogue (%1)"))
          .arg(keys));
  // The rows of ListView1, which "&Save all" is for, are not in view with a playlist.
  save_button_->setEnabled(details.save_all ? !bench_.playlist_in_view : details.enabled);
}

void frmStart::PictureChanged() { windows_.picture_pane->Show(bench_.details); }

void frmStart::ListInViewChanged() {
  // Otherwise the focus of the list that goes would pass to a field.
  const bool in_list = windows_.list_view->hasFocus() || windows_.playlist_view->hasFocus();
  windows_.list_view->setVisible(!bench_.playlist_in_view);
  windows_.playlist_view->setVisible(bench_.playlist_in_view);
  if (in_list) windows_.ViewInView(bench_).setFocus();
  windows_.order_bar->setVisible(bench_.playlist_in_view);
  windows_.search_panels->ShowNameCombos(NameCombosShown(bench_));
  seek_button_->setEnabled(seek_button_->isEnabled() && !bench_.playlist_in_view);
  ShowSaveButton();
}

}  // namespace tunemeadow
