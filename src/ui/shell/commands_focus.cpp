// SPDX-License-Identifier: GPL-3.0-or-later
// Going from one part of the window to another by the keyboard.
#include <QApplication>
#include <QContextMenuEvent>
#include <QWidget>
#include <array>
#include <cstddef>

#include "ui/panes/detail_panels.h"
#include "ui/panes/result_view.h"
#include "ui/panes/search_panels.h"
#include "ui/panes/tree_pane.h"
#include "ui/shell/command_table.h"
#include "ui/shell/windows.h"

namespace tunemeadow {
namespace {

void GoToSearch(CommandContext& context) {
  Windows& windows = context.windows;
  if (windows.search_frame->isHidden()) windows.SetPanesVisible(context.bench, true);
  windows.search_panels->FocusFirst();
}

void GoToList(CommandContext& context) { context.windows.ViewInView(context.bench).setFocus(); }

/// The parts that F6 goes round, in their order, each with what takes it there.
struct Part {
  QWidget* whole;
  void (*go)(CommandContext& context);
};

std::array<Part, 4> PartsOf(CommandContext& context) {
  Windows& windows = context.windows;
  return {{{windows.search_frame, GoToSearch},
           {windows.tree_pane, [](CommandContext& each) { each.windows.tree_pane->FocusTree(); }},
           {&windows.ViewInView(context.bench), GoToList},
           {windows.detail_frame,
            [](CommandContext& each) { each.windows.detail_panels->FocusFirst(); }}}};
}

bool HoldsFocus(const QWidget& part) {
  const QWidget* const focus = QApplication::focusWidget();
  return focus != nullptr && (focus == &part || part.isAncestorOf(focus));
}

/// The next part that is shown; where the focus lies in none of them, the first.
void GoToNextPart(CommandContext& context) {
  const std::array<Part, 4> parts = PartsOf(context);
  std::size_t place = parts.size() - 1;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (HoldsFocus(*parts[i].whole)) place = i;
  }
  for (std::size_t step = 1; step <= parts.size(); ++step) {
    const Part& part = parts[(place + step) % parts.size()];
    if (!part.whole->isVisible()) continue;
    part.go(context);
    if (HoldsFocus(*part.whole)) return;  // the fields of the details may take none
  }
}

/// What the menu key does: X11 has no other name for it.
void ShowContextMenu(CommandContext& context) {
  QWidget* const focus = QApplication::focusWidget();
  if (focus == nullptr || !context.frame.isAncestorOf(focus)) return;
  const QPoint place = focus->rect().center();
  QContextMenuEvent event(QContextMenuEvent::Keyboard, place, focus->mapToGlobal(place));
  QApplication::sendEvent(focus, &event);
}

constexpr std::array kFocusCommands{
    CommandRow{.name = "mnuGoToSearch",
               .caption = "Go to search &fields",
               .run = GoToSearch,
               .places = {.bar = {Menu::kSearch, 130}},
               .shortcut = "Ctrl+F",
               .begins = Begins::kAnyTime},
    CommandRow{.name = "mnuGoToList",
               .caption = "Go to &list",
               .run = GoToList,
               .places = {.bar = {Menu::kView, 310}},
               .shortcut = "Ctrl+L",
               .begins = Begins::kAnyTime},
    CommandRow{.name = "mnuNextPart",
               .caption = "&Next part of the window",
               .run = GoToNextPart,
               .places = {.bar = {Menu::kView, 320}},
               .shortcut = "F6",
               .begins = Begins::kAnyTime},
    CommandRow{.name = "mnuContextMenu",
               .caption = "Context &menu",
               .run = ShowContextMenu,
               .places = {.bar = {Menu::kView, 330}},
               .shortcut = "Shift+F10",
               .begins = Begins::kAnyTime},
};

}  // namespace

std::span<const CommandRow> FocusCommands() { return kFocusCommands; }

}  // namespace tunemeadow
