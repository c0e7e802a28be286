// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/command_menus.h"

#include <QAbstractButton>
#include <QAction>
#include <QIcon>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <array>

namespace tunemeadow {
namespace {

struct MenuRow {
  Menu menu;
  const char* name;
  const char* caption = "";  ///< empty: it pops up
  Places places = {};        ///< of a submenu
  const char* icon = "";
  Needs needs = Needs::kNothing;
};

constexpr std::array kMenus{
    MenuRow{Menu::kFile, "mnuFile", "&File"},
    MenuRow{Menu::kEdit, "mnuEdit", "&Edit"},
    MenuRow{Menu::kSearch, "mnuSearch", "Sea&rch"},
    MenuRow{Menu::kView, "mnuView", "&View"},
    MenuRow{Menu::kPlay, "mnuPlayback", "&Play"},
    MenuRow{Menu::kPlaylists, "mnuPlaylists", "Play&lists"},
    MenuRow{Menu::kTools, "mnuTools", "&Tools"},
    MenuRow{Menu::kWeb, "mnuWeb", "&Web"},
    MenuRow{Menu::kHelp, "mnuHelp", "&Help"},
    MenuRow{Menu::kExport, "mnuExport", "&Export", {.bar = {Menu::kFile, 210}}},
    MenuRow{Menu::kRemoveTags,
            "mnuRemoveTags",
            "Remove &tags",
            {.bar = {Menu::kEdit, 110}, .popup = {Menu::kOfList, 310}},
            "remove",
            Needs::kSelection},
    MenuRow{Menu::kSortBy, "mnuSortBy", "Sort &by", {.bar = {Menu::kView, 140}}},
    MenuRow{Menu::kOfList, "mnuItem1"},
    MenuRow{Menu::kOfDatabase, "mnuItem2"},
    MenuRow{Menu::kOfArchive, "mnuItem3"},
    MenuRow{Menu::kOfPlaylist, "mnuItem4"},
};

/// An entry before it stands in its menus.
struct MenuItem {
  QAction* action;
  Places places;
};

QAction& AddAction(QMainWindow& frame, CommandContext& context, const CommandRow& row) {
  auto* action = new QAction(QIcon::fromTheme(row.icon), QString::fromUtf8(row.caption), &frame);
  action->setObjectName(QString::fromUtf8(row.name));
  action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
  QObject::connect(action, &QAction::triggered, &frame, [&row, &context] { Run(row, context); });
  return *action;
}

void FillMenu(const QWidget& frame, Menu menu, const std::vector<MenuItem>& items) {
  std::vector<std::pair<int, QAction*>> entries;
  for (const MenuItem& item : items) {
    for (const Place& place : {item.places.bar, item.places.popup}) {
      if (place.menu == menu) entries.emplace_back(place.number, item.action);
    }
  }
  std::sort(entries.begin(), entries.end());
  int group = entries.empty() ? 0 : entries.front().first / 100;
  for (const auto& [number, action] : entries) {
    if (number / 100 != group) MenuOf(frame, menu).addSeparator();
    group = number / 100;
    MenuOf(frame, menu).addAction(action);
  }
}

/// The entry as it stands now: whether it has something to do and, where it belongs to the list of
/// a playlist, whether that is in view.
void ShowEntry(QAction& action, const CommandRow& row, const Workbench& bench) {
  action.setEnabled(AreMet(row.needs, bench));
  if (*row.playlist_caption == '\0') return;
  action.setVisible(bench.playlist_in_view);
  action.setText(QString::fromUtf8(bench.playlist_in_view ? row.playlist_caption : row.caption));
}

void ShowEntries(const QWidget& frame, const Workbench& bench) {
  for (const CommandRow* row : AllCommands()) {
    auto* action = frame.findChild<QAction*>(QString::fromUtf8(row->name));
    if (action != nullptr) ShowEntry(*action, *row, bench);
  }
  for (const MenuRow& row : kMenus) {
    MenuOf(frame, row.menu).menuAction()->setEnabled(AreMet(row.needs, bench));
  }
}

QMenu* AddMenu(QMainWindow& frame, CommandContext& context, const MenuRow& row) {
  auto* menu = new QMenu(QString::fromUtf8(row.caption), &frame);
  menu->setObjectName(QLatin1String(row.name));
  menu->setIcon(QIcon::fromTheme(row.icon));
  QObject::connect(menu, &QMenu::aboutToShow, &frame,
                   [&frame, &context] { ShowEntries(frame, context.bench); });
  return menu;
}

}  // namespace

void BuildMenus(QMainWindow& frame, CommandContext& context) {
  std::vector<MenuItem> items;
  for (const CommandRow* row : AllCommands()) {
    if (*row->caption == '\0') continue;
    items.push_back({&AddAction(frame, context, *row), row->places});
  }
  for (const MenuRow& row : kMenus) {
    QMenu* menu = AddMenu(frame, context, row);
    const bool submenu = row.places.bar.menu != Menu::kNone;
    if (submenu) items.push_back({menu->menuAction(), row.places});
    if (!submenu && *row.caption != '\0') frame.menuBar()->addMenu(menu);
  }
  for (const MenuRow& row : kMenus) FillMenu(frame, row.menu, items);
}

void ConnectButtons(CommandContext& context) {
  for (const CommandRow* row : AllCommands()) {
    if (*row->button == '\0') continue;
    const auto* button = context.frame.findChild<QAbstractButton*>(QLatin1String(row->button));
    QObject::connect(button, &QAbstractButton::clicked, &context.frame,
                     [row, &context] { Run(*row, context); });
  }
}

QMenu& MenuOf(const QWidget& frame, Menu menu) {
  const auto row = std::find_if(kMenus.begin(), kMenus.end(),
                                [&](const MenuRow& each) { return each.menu == menu; });
  return *frame.findChild<QMenu*>(QLatin1String(row->name));
}

}  // namespace tunemeadow
