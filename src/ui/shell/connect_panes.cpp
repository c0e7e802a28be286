// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/connect_panes.h"

#include <QMenu>

#include "ui/panes/bottom_strip.h"
#include "ui/panes/command_pane.h"
#include "ui/panes/detail_panels.h"
#include "ui/panes/order_bar.h"
#include "ui/panes/picture_pane.h"
#include "ui/panes/result_view.h"
#include "ui/panes/search_panels.h"
#include "ui/panes/tree_pane.h"
#include "ui/shell/command_menus.h"
#include "ui/shell/gestures.h"
#include "ui/shell/windows.h"
#include "views/track_path.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

/// Whenever the signal comes, the command of that name runs.
template <typename Sender, typename Signal>
void RunOn(Sender* sender, Signal signal, const char* command, CommandContext& context) {
  QObject::connect(sender, signal, &context.frame,
                   [&row = CommandNamed(command), &context] { Run(row, context); });
}

Menu MenuOfNode(NodeKind kind) {
  switch (kind) {
    case NodeKind::kDatabase:
    case NodeKind::kGroup:
      return Menu::kOfDatabase;
    case NodeKind::kPlaylist:
      return Menu::kOfPlaylist;
    case NodeKind::kArchive:
    case NodeKind::kArchiveFolder:
      return Menu::kOfArchive;
    case NodeKind::kRoot:
    case NodeKind::kPlaylists:
    case NodeKind::kArchives:
      break;
  }
  return Menu::kNone;
}

void ConnectSearch(CommandContext& context) {
  RunOn(context.windows.search_panels, &SearchPanels::SearchRequested, "mnuSuchen", context);
  CommandPane* pane = context.windows.command_pane;
  QObject::connect(pane, &CommandPane::PanelRequested, &context.frame,
                   [&context](int index) { Run(kPanelChosen, context, index); });
  QObject::connect(pane, &CommandPane::HistoryRequested, &context.frame, [&context](int index) {
    Run(kHistoryChosen, context, static_cast<std::size_t>(index));
  });
}

void ConnectTree(CommandContext& context) {
  TreePane* pane = context.windows.tree_pane;
  QObject::connect(pane, &TreePane::NodeClicked, &context.frame,
                   [&context](const TreeSelection& node) { Run(kNodeClicked, context, node); });
  QObject::connect(pane, &TreePane::KindChosen, &context.frame, [&context, pane](TreeKind kind) {
    Run(kTreeKindChosen, context, kind);
    pane->ShowKind();
  });
  QObject::connect(pane, &TreePane::ContextMenuWanted, &context.frame,
                   [&context](NodeKind kind, const QPoint& where) {
                     const Menu menu = MenuOfNode(kind);
                     if (menu != Menu::kNone) MenuOf(context.frame, menu).popup(where);
                   });
  pane->SetArchivesTakeRows([&context] { return ArchivesTakeRows(context.bench); });
  QObject::connect(pane, &TreePane::RowsDropped, &context.frame,
                   [&context](NodeKind kind, const std::string& name) {
                     Run(kRowsDroppedOnNode, context, {.kind = kind, .name = name});
                   });
}

void ConnectFiles(ResultView& view, CommandContext& context) {
  QObject::connect(
      &view, &ResultView::FilesDropped, &context.frame,
      [&context](const std::vector<std::string>& paths) { Run(kFilesDropped, context, paths); });
  QObject::connect(&view, &ResultView::UnsupportedDrop, &context.frame,
                   [&context] { Run(kFilesDropped, context, {}); });
  RunOn(&view, &ResultView::DragCompleted, "ListView1_OLECompleteDrag", context);
  view.SetDragPath([&context](std::size_t row) { return PathToPlay(context.bench, row); });
}

void ConnectList(ResultView& view, CommandContext& context) {
  QObject::connect(&view, &ResultView::HeaderClicked, &context.frame,
                   [&context](int column) { Run(kHeaderClicked, context, column); });
  QObject::connect(&view, &ResultView::ItemClicked, &context.frame, [&context](int row) {
    Run(kRowChosen, context, static_cast<std::size_t>(row));
    context.windows.ShowOrderPlace(context.bench);
  });
  RunOn(&view, &ResultView::SelectionTakenAway, "ListView1_NoItem", context);
  RunOn(&view, &ResultView::ItemDoubleClicked, "mnuPlay", context);
  RunOn(&view, &ResultView::EscapePressed, "mnuShowLibrary", context);
  view.SetHint([&context] { return EmptyListHint(context.bench); });
  QObject::connect(&view, &ResultView::ReturnPressed, &context.frame, [&context] {
    // A field that may not stand has taken the focus, and with it the record stays.
    DetailPanels& panels = *context.windows.detail_panels;
    if (!panels.isAncestorOf(context.frame.focusWidget())) panels.FocusFirst();
  });
  for (const auto wanted :
       {&ResultView::ContextMenuRequested, &ResultView::HeaderContextMenuRequested}) {
    QObject::connect(&view, wanted, &context.frame, [&context](const QPoint& where) {
      MenuOf(context.frame, Menu::kOfList).popup(where);
    });
  }
  ConnectFiles(view, context);
}

void ConnectOrder(CommandContext& context) {
  ResultView* view = context.windows.playlist_view;
  view->SetReorders(true);
  QObject::connect(view, &ResultView::RowsMoved, &context.frame, [&context](int before) {
    Run(kRowsMoved, context, static_cast<std::size_t>(before));
  });
  RunOn(view, &ResultView::DeletePressed, "mnuDelete", context);
  QObject::connect(context.windows.order_bar, &OrderBar::PlaceWanted, &context.frame,
                   [&context](int place) {
                     Run(kPlaceChosen, context, static_cast<std::size_t>(place));
                     context.windows.ShowOrderPlace(context.bench);
                   });
}

void ConnectStrip(CommandContext& context) {
  BottomStrip* strip = context.windows.bottom_strip;
  QObject::connect(strip, &BottomStrip::TrackSelectionToggled, &context.frame,
                   [&context](bool on) { context.bench.track_selection = on; });
  QObject::connect(strip, &BottomStrip::TryPreviewToggled, &context.frame,
                   [&context](bool on) { context.bench.try_preview = on; });
  QObject::connect(strip, &BottomStrip::PictureToggled, &context.frame, [&context](bool shown) {
    Windows& windows = context.windows;
    context.bench.show_picture = shown;
    context.bench.session.ini.SaveString(kConfigSection, "chkPicShow", shown ? "1" : "0");
    windows.picture_pane->setVisible(shown && windows.search_frame->isVisible());
    Run(CommandNamed("chkPicShow"), context);
  });
}

}  // namespace

void ConnectPanes(CommandContext& context) {
  ConnectSearch(context);
  ConnectTree(context);
  ConnectStrip(context);
  ConnectList(*context.windows.list_view, context);
  ConnectList(*context.windows.playlist_view, context);
  ConnectOrder(context);
  ConnectButtons(context);
}

}  // namespace tunemeadow
