// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/popup_menu.h"

#include "views/workbench.h"

namespace tunemeadow {
namespace {

/// The entries that both lists have. Each command adds its own here, with the rule that switches
/// it.
std::vector<PopupEntry> EntriesOfBothLists() {
  return {{.name = "mnuViewFields"}, {.name = "mnuAutoSize"}};
}

}  // namespace

std::vector<PopupEntry> Prepare_Popupmenu_Listview1(const Workbench& /*bench*/) {
  return EntriesOfBothLists();
}

std::vector<PopupEntry> Prepare_Popupmenu_Listview3(const Workbench& /*bench*/) {
  return EntriesOfBothLists();
}

std::vector<PopupEntry> PreparePopupMenu(const Workbench& bench) {
  return bench.playlist_in_view ? Prepare_Popupmenu_Listview3(bench)
                                : Prepare_Popupmenu_Listview1(bench);
}

}  // namespace tunemeadow
