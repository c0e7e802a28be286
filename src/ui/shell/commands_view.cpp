// SPDX-License-Identifier: GPL-3.0-or-later
// Searching, the tree, the columns, and what of the window is shown.
#include <QWidget>
#include <array>

#include "run/ini.h"
#include "ui/panes/command_pane.h"
#include "ui/panes/detail_panels.h"
#include "ui/panes/picture_pane.h"
#include "ui/panes/result_view.h"
#include "ui/panes/search_panels.h"
#include "ui/panes/tree_pane.h"
#include "ui/shell/gestures.h"
#include "ui/shell/windows.h"
#include "ui/windows/library/frmConfigureColumns.h"
#include "ui/windows/library/frmTreeviewFilter.h"
#include "views/drag_out.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

template <void (*command)(Workbench& bench)>
void View(CommandContext& context) {
  command(context.bench);
}

void ShowTreeviewFilter(CommandContext& context) {
  auto& filter = context.windows.treeview_filter;
  if (filter == nullptr)
    filter = std::make_unique<frmTreeviewFilter>(context.bench, &context.frame);
  filter->ShowFilter();
}

void ShowLibrary(CommandContext& context) {
  if (LibraryIsAway(context.bench)) ShowDatabase(context.bench);
}

void HideShowPanes(CommandContext& context) {
  const bool visible = context.windows.search_frame->isHidden();
  context.windows.SetPanesVisible(context.bench, visible);
  context.bench.session.ini.SaveString(kConfigSection, "mnuHideShowSearchandDetails",
                                       visible ? "True" : "False");
}

void HideShowTree(CommandContext& context) {
  context.windows.SetTreeVisible(context.bench, context.windows.tree_pane->isHidden());
}

void ConfigureColumns(CommandContext& context) {
  ResultView& list = *context.windows.list_view;
  frmConfigureColumns dialog(context.bench.session, context.bench.world.shell,
                             context.bench.interaction, list.Layout(), &context.frame);
  if (dialog.exec() == QDialog::Accepted) list.SetLayout(dialog.Layout());
}

void AutoSizeColumns(CommandContext& context) {
  context.windows.ViewInView(context.bench).AutoSize();
}

void SortBy(CommandContext& context, int column) {
  context.windows.ViewInView(context.bench).Sort(column);
}

void ShowPanel(CommandContext& context, int index) {
  Windows& windows = context.windows;
  if (!windows.detail_panels->FieldsStand()) index = 0;
  windows.search_panels->setCurrentIndex(index);
  windows.detail_panels->setCurrentIndex(index);
  windows.command_pane->SetPanel(index);
}

void SearchAgain(CommandContext& context, std::size_t index) {
  mnuSuche_Click(context.bench, index);
}

void ClickNode(CommandContext& context, const TreeSelection& node) {
  TreeView1_NodeClick(context.bench, node);
}

void ChooseTreeKind(CommandContext& context, TreeKind kind) {
  cboTreeSelector_Click(context.bench, kind);
}

constexpr std::array kViewCommands{
    CommandRow{.name = "mnuSuchen",
               .caption = "Search &now",
               .run = View<cmdSuchen>,
               .places = {.bar = {Menu::kSearch, 110}},
               .icon = "search",
               .shortcut = "F5",
               .button = "cmdSuchen"},
    CommandRow{.name = "mnuReset",
               .caption = "&Clear fields",
               .run = View<cmdReset_Click>,
               .places = {.bar = {Menu::kSearch, 120}},
               .icon = "reset",
               .shortcut = "Ctrl+R",
               .button = "cmdReset",
               .begins = Begins::kAnyTime},
    CommandRow{.name = "mnuExtrasTreeviewSearch",
               .caption = "&Treeview Filter...",
               .run = ShowTreeviewFilter,
               .places = {.bar = {Menu::kSearch, 210}, .popup = {Menu::kOfDatabase, 110}},
               .icon = "database",
               .shortcut = "Ctrl+Shift+T"},
    CommandRow{.name = "mnuHideShowSearchandDetails",
               .caption = "&Hide/Show Search and Details",
               .run = HideShowPanes,
               .places = {.bar = {Menu::kView, 110}},
               .shortcut = "F11",
               .begins = Begins::kAnyTime},
    CommandRow{.name = "mnuViewFields",
               .caption = "&Configure columns...",
               .run = ConfigureColumns,
               .needs = Needs::kLibraryInView,
               .places = {.bar = {Menu::kView, 120}, .popup = {Menu::kOfList, 510}},
               .icon = "columns"},
    CommandRow{.name = "mnuAutoSize",
               .caption = "&Autosize columns",
               .run = AutoSizeColumns,
               .places = {.bar = {Menu::kView, 130}, .popup = {Menu::kOfList, 520}},
               .shortcut = "Ctrl+Shift+A",
               .begins = Begins::kAnyTime},
    CommandRow{.name = "mnuShowLibrary",
               .caption = "Sho&w library",
               .run = ShowLibrary,
               .needs = Needs::kLibraryAway,
               .places = {.bar = {Menu::kView, 210}, .popup = {Menu::kOfList, 610}},
               .icon = "database"},
    CommandRow{
        .name = "cmdSeekto", .caption = "", .run = View<cmdSeekto_Click>, .button = "cmdSeekto"},
    CommandRow{.name = "cmdHideShowTreeview",
               .caption = "",
               .run = HideShowTree,
               .button = "cmdHideShowTreeview",
               .begins = Begins::kAnyTime},
    CommandRow{.name = "chkPicShow", .caption = "", .run = View<ShowPicOfDetails>},
    CommandRow{
        .name = "ListView1_OLECompleteDrag", .caption = "", .run = View<ListView1_OLECompleteDrag>},
};

}  // namespace

std::span<const CommandRow> ViewCommands() { return kViewCommands; }

const Gesture<int> kHeaderClicked{"ListView1_ColumnClick", SortBy};
const Gesture<int> kPanelChosen{"cmdSwitch", ShowPanel, Begins::kAnyTime};
const Gesture<std::size_t> kHistoryChosen{"mnuSuche", SearchAgain};
const Gesture<const TreeSelection&> kNodeClicked{"TreeView1_NodeClick", ClickNode};
const Gesture<TreeKind> kTreeKindChosen{"cboTreeSelector", ChooseTreeKind};

}  // namespace tunemeadow
