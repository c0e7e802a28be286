// SPDX-License-Identifier: GPL-3.0-or-later
// What the person asks of the main window, each in one call to the procedure that does it.
#include <QCloseEvent>
#include <QMenu>
#include <QToolButton>

#include "core/paths.h"
#include "library/import.h"
#include "run/batch.h"
#include "ui/kit/help_pages.h"
#include "ui/kit/qt_text.h"
#include "ui/panes/bottom_strip.h"
#include "ui/panes/command_pane.h"
#include "ui/panes/detail_panels.h"
#include "ui/panes/picture_pane.h"
#include "ui/panes/result_view.h"
#include "ui/panes/search_panels.h"
#include "ui/panes/tree_pane.h"
#include "ui/shell/frmStart.h"
#include "ui/windows/library/frmConfigureColumns.h"
#include "ui/windows/library/frmImport.h"
#include "ui/windows/library/frmPreferences.h"
#include "ui/windows/library/frmTreeviewFilter.h"
#include "views/drag_out.h"
#include "views/tree.h"

namespace tunemeadow {

void frmStart::ConnectPanes() {
  connect(search_panels_, &SearchPanels::SearchRequested, this, &frmStart::cmdSuchenExternClick);
  connect(command_pane_, &CommandPane::SearchRequested, this, &frmStart::cmdSuchenExternClick);
  connect(command_pane_, &CommandPane::ResetRequested, this, &frmStart::cmdResetExternalClick);
  connect(command_pane_, &CommandPane::PanelRequested, this, &frmStart::ShowPanel);
  connect(command_pane_, &CommandPane::HistoryRequested, this, [this](int index) {
    if (!session_.busy) mnuSuche_Click(bench_, static_cast<std::size_t>(index));
  });
  ConnectTree();
  connect(bottom_strip_, &BottomStrip::PictureToggled, this, [this](bool shown) {
    bench_.show_picture = shown;
    session_.ini.SaveString(kConfigSection, "chkPicShow", shown ? "1" : "0");
    picture_pane_->setVisible(shown && search_frame_->isVisible());
    if (!session_.busy) ShowPicOfDetails(bench_);
  });
  ConnectPlaying();
  ConnectDetails();
  ConnectList(*list_view_);
  ConnectList(*playlist_view_);
  ConnectPlaylists();
}

void frmStart::ConnectTree() {
  connect(tree_pane_, &TreePane::NodeClicked, this, [this](const TreeSelection& node) {
    if (!session_.busy) TreeView1_NodeClick(bench_, node);
  });
  connect(tree_pane_, &TreePane::KindChosen, this, [this](TreeKind kind) {
    if (!session_.busy) cboTreeSelector_Click(bench_, kind);
    tree_pane_->ShowKind();
  });
  connect(tree_pane_, &TreePane::ContextMenuWanted, this, &frmStart::ShowTreeMenu);
  connect(bottom_strip_, &BottomStrip::TreeToggled, this,
          [this] { SetTreeVisible(tree_pane_->isHidden()); });
  connect(bottom_strip_, &BottomStrip::TrackSelectionToggled, this,
          [this](bool on) { bench_.track_selection = on; });
  connect(seek_button_, &QToolButton::clicked, this, [this] {
    if (!session_.busy) cmdSeekto_Click(bench_);
  });
}

void frmStart::ShowTreeMenu(NodeKind kind, const QPoint& where) {
  if (kind == NodeKind::kDatabase || kind == NodeKind::kGroup) tree_menu_->popup(where);
  if (kind == NodeKind::kPlaylist) playlist_menu_->popup(where);
  if (kind == NodeKind::kArchive || kind == NodeKind::kArchiveFolder) archive_menu_->popup(where);
}

void frmStart::ConnectList(ResultView& view) {
  connect(&view, &ResultView::HeaderClicked, this,
          [this, &view](int column) { SortBy(view, column); });
  connect(&view, &ResultView::ItemClicked, this, [this](int row) {
    if (!session_.busy) ShowRecord(static_cast<std::size_t>(row));
    ShowOrderPlace();
  });
  connect(&view, &ResultView::ReturnPressed, this, [this] { detail_panels_->FocusFirst(); });
  connect(&view, &ResultView::ContextMenuRequested, this, &frmStart::ShowListMenu);
  connect(&view, &ResultView::HeaderContextMenuRequested, this, &frmStart::ShowListMenu);
  connect(&view, &ResultView::FilesDropped, this, &frmStart::FilesDropped);
  connect(&view, &ResultView::UnsupportedDrop, this, [this] { FilesDropped({}); });
  connect(&view, &ResultView::DragCompleted, this, [this] { ListView1_OLECompleteDrag(bench_); });
}

void frmStart::SortBy(ResultView& view, int column) {
  if (session_.busy) return;
  view.Sort(column);
}

void frmStart::ShowListMenu(const QPoint& where) {
  PrepareListMenu();
  list_menu_->popup(where);
}

void frmStart::FilesDropped(const std::vector<std::string>& paths) {
  if (!session_.busy) ImportDropped(bench_, paths);
}

void frmStart::mnuFileImport_Click() {
  if (session_.busy) return;
  frmImport dialog(session_, interaction_, bench_.world.shell, this);
  if (dialog.exec() == QDialog::Accepted) Command1_Click(bench_);
}

void frmStart::mnuPreferences_Click() {
  if (session_.busy) return;
  preferences_->exec();
}

void frmStart::mnuExit_Click() { close(); }

void frmStart::mnuExtrasTreeviewSearch_Click() {
  if (session_.busy) return;
  if (treeview_filter_ == nullptr) treeview_filter_ = new frmTreeviewFilter(bench_, this);
  treeview_filter_->ShowFilter();
}

void frmStart::mnuHideShowSearchandDetails_Click() {
  const bool visible = search_frame_->isHidden();
  SetPanesVisible(visible);
  session_.ini.SaveString(kConfigSection, "mnuHideShowSearchandDetails",
                          visible ? "True" : "False");
}

void frmStart::SetPanesVisible(bool visible) {
  search_frame_->setVisible(visible);
  detail_frame_->setVisible(visible);
  picture_pane_->setVisible(visible && bench_.show_picture);
}

void frmStart::SetTreeVisible(bool visible) {
  tree_pane_->setVisible(visible);
  bench_.tree.visible = visible;
  bottom_strip_->ShowTreeVisible(visible);
  if (visible) updatetreeview(bench_);
}

void frmStart::mnuViewFields_Click() {
  columns_ = list_view_->Layout();
  frmConfigureColumns dialog(session_, bench_.world.shell, columns_, this);
  if (dialog.exec() != QDialog::Accepted) return;
  columns_ = dialog.Layout();
  list_view_->SetLayout(columns_);
}

void frmStart::mnuAutoSize_Click() { ViewInView().AutoSize(); }

void frmStart::mnuHelpContents_Click() { OpenHelpPage(session_, "index.html", bench_.world.shell); }

void frmStart::mnuAbout_Click() {
  interaction_.ShowMessage(
      {.text = "Tunemeadow " TM_VERSION "\nA catalogue for one person's collection of audio files.",
       .title = "About Tunemeadow",
       .icon = Icon::kInformation});
}

void frmStart::cmdSuchenExternClick() {
  if (session_.busy) return;
  cmdSuchen(bench_);
}

void frmStart::cmdResetExternalClick() { cmdReset_Click(bench_); }

void frmStart::ShowPanel(int index) {
  if (!detail_panels_->FieldsStand()) index = 0;
  search_panels_->setCurrentIndex(index);
  detail_panels_->setCurrentIndex(index);
  command_pane_->SetPanel(index);
}

void frmStart::closeEvent(QCloseEvent* event) {
  // A batch runs on this very thread: it must end before the connection goes from under it.
  if (session_.busy) {
    session_.CancelRequested = true;
    event->ignore();
    return;
  }
  if (!AskToSaveChanges(bench_)) {
    event->ignore();
    return;
  }
  Form_Unload();
  event->accept();
}

}  // namespace tunemeadow
