// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of the main window, as data: one row says all of a command, each subsystem has a
// file of rows. Menu bar, popups, buttons, keys, clicks and drops run them by Run alone.
#pragma once

#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

#include "run/command_run.h"
#include "views/command_needs.h"
#include "views/workbench.h"

class QWidget;

namespace tunemeadow {

struct Windows;

/// What a command is handed. One lives as long as the main window.
struct CommandContext {
  Workbench& bench;
  Windows& windows;
  QWidget& frame;  ///< parent of the dialogs that a command opens
};

/// The menus of the bar, their submenus, and those that pop up.
enum class Menu {
  kNone,
  kFile,
  kExport,
  kEdit,
  kRemoveTags,
  kSearch,
  kView,
  kSortBy,
  kPlay,
  kPlaylists,
  kTools,
  kWeb,
  kHelp,
  kOfList,      ///< mnuItem1: of both lists
  kOfDatabase,  ///< mnuItem2: of the library's nodes
  kOfArchive,   ///< mnuItem3
  kOfPlaylist,  ///< mnuItem4: of a playlist's node
};

/// Where in a menu an entry stands: the smaller number first, a line wherever the hundreds change.
struct Place {
  Menu menu = Menu::kNone;
  int number = 0;
};
struct Places {
  Place bar, popup;
};

/// When a command may begin.
enum class Begins {
  kAlone,   ///< while nothing else is at work
  kAnyTime  ///< it touches neither catalogue nor files, and waits for nobody
};

struct CommandRow {
  const char* name;     ///< objectName of its action; UTF-8
  const char* caption;  ///< empty: it has no action, only what is connected to it
  void (*run)(CommandContext& context);
  Needs needs = Needs::kNothing;  ///< switches the entry when its menu opens
  Places places = {};
  const char* icon = "";
  const char* shortcut = "";
  const char* button = "";            ///< objectName of the button that runs it as well
  const char* playlist_caption = "";  ///< where it stands only while a playlist is in view
  Begins begins = Begins::kAlone;
};

/// A command that is handed something by a click, a drop or a choice. It stands in no menu.
template <typename Argument>
struct Gesture {
  const char* name;
  void (*run)(CommandContext& context, Argument argument);
  Begins begins = Begins::kAlone;
};

// The rows of each subsystem.
[[nodiscard]] std::span<const CommandRow> LibraryCommands();
[[nodiscard]] std::span<const CommandRow> EditingCommands();
[[nodiscard]] std::span<const CommandRow> ViewCommands();
[[nodiscard]] std::span<const CommandRow> PlaybackCommands();
[[nodiscard]] std::span<const CommandRow> NetCommands();
[[nodiscard]] std::span<const CommandRow> FocusCommands();

/// All of them. The rows live as long as the program.
[[nodiscard]] const std::vector<const CommandRow*>& AllCommands();

/// The row of that name. There must be one: else std::out_of_range.
[[nodiscard]] const CommandRow& CommandNamed(std::string_view name);

/// The one way in. While something else is at work nothing happens, and what the command throws is
/// told in a box (run/command_run.h).
void Run(const CommandRow& row, CommandContext& context);

template <typename Argument>
void Run(const Gesture<Argument>& gesture, CommandContext& context,
         std::type_identity_t<Argument> argument) {
  Workbench& bench = context.bench;
  if (gesture.begins == Begins::kAlone && !MayBegin(bench.session)) return;
  RunAndTell(bench.interaction, [&] { gesture.run(context, argument); });
}

}  // namespace tunemeadow
