// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/popup_menu.h"

#include "views/workbench.h"

namespace tunemeadow {
namespace {

/// The entries that both lists have. Each command adds its own here, with the rule that switches
/// it: what works on the selected rows has nothing to do without one.
std::vector<PopupEntry> EntriesOfBothLists(const ResultList& list) {
  const bool selected = list.SelectedCount() > 0;
  return {{.name = "mnuRemoveTags", .enabled = selected},
          {.name = "mnuAddImagetoFile", .enabled = selected},
          {.name = "mnuRemoveImagefromfile", .enabled = selected},
          {.name = ""},
          {.name = "mnuViewFields"},
          {.name = "mnuAutoSize"}};
}

}  // namespace

std::vector<PopupEntry> Prepare_Popupmenu_Listview1(const Workbench& bench) {
  return EntriesOfBothLists(bench.ListView1);
}

std::vector<PopupEntry> Prepare_Popupmenu_Listview3(const Workbench& bench) {
  return EntriesOfBothLists(bench.ListView3);
}

std::vector<PopupEntry> PreparePopupMenu(const Workbench& bench) {
  return bench.playlist_in_view ? Prepare_Popupmenu_Listview3(bench)
                                : Prepare_Popupmenu_Listview1(bench);
}

}  // namespace tunemeadow
