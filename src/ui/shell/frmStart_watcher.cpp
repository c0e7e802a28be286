// SPDX-License-Identifier: GPL-3.0-or-later
// What the workbench tells, shown.
#include <QKeySequence>
#include <QPushButton>
#include <QToolButton>

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

void frmStart::ListCleared() { ViewInView().Freeze(); }

void frmStart::ListFilled() {
  ViewInView().Thaw();
  if (bench_.playlist_in_view) ShowOrderBar();
}

void frmStart::OrderChanged() {
  ViewInView().ShowOrder();
  ShowOrderPlace();
}

void frmStart::RowChanged(std::size_t row) { ViewInView().RowChanged(static_cast<int>(row)); }

void frmStart::SelectionSet() {
  ViewInView().ShowSelection();
  ShowOrderPlace();
}

void frmStart::SearchFieldsChanged() { search_panels_->Show(bench_.search); }

void frmStart::SearchFieldsWanted() { bench_.search = search_panels_->Read(); }

void frmStart::HistoryChanged() { command_pane_->ShowHistory(bench_.history); }

void frmStart::SearchItemsChanged() {
  search_panels_->SetItems(bench_.search_items);
  detail_panels_->SetGenres(bench_.search_items.further_genres);
}

void frmStart::TotalsChanged() {
  bottom_strip_->ShowTotals(ToQt(bench_.total_time), ToQt(bench_.total_size));
}

void frmStart::TreeChanged() {
  tree_pane_->Show();
  search_panels_->SetNames(bench_.tree);
}

void frmStart::TreeNodeSelected() { tree_pane_->ShowSelected(); }

void frmStart::DetailsChanged() {
  detail_panels_->Show();
  const bool one_track = bench_.details.enabled && !bench_.details.save_all;
  next_button_->setEnabled(one_track);
  previous_button_->setEnabled(one_track);
  seek_button_->setEnabled(one_track);
  picture_pane_->EnableButtons(bench_.details);
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

void frmStart::PictureChanged() { picture_pane_->Show(bench_.details); }

void frmStart::ListInViewChanged() {
  list_view_->setVisible(!bench_.playlist_in_view);
  playlist_view_->setVisible(bench_.playlist_in_view);
  order_bar_->setVisible(bench_.playlist_in_view);
  search_panels_->ShowNameCombos(NameCombosShown(bench_));
  seek_button_->setEnabled(seek_button_->isEnabled() && !bench_.playlist_in_view);
  ShowSaveButton();
}

}  // namespace tunemeadow
