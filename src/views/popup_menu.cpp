// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/popup_menu.h"

#include "views/workbench.h"

namespace tunemeadow {
namespace {

/// How the commands stand that both lists have.
struct ListCommands {
  const ResultList& list;
  bool appends = false;   ///< the player takes files into its own list
  bool playlist = false;  ///< ListView3
  bool playlists_exist = false;
  bool may_archive = false;  ///< the rows are those of the library
};

/// Each command adds its own entry here, with the rule that switches it: what works on the selected
/// rows has nothing to do without one.
std::vector<PopupEntry> EntriesOfList(const ListCommands& commands) {
  const bool selected = commands.list.SelectedCount() > 0;
  return {
      {.name = "mnuPlay"},  // its shortcut must not die with a menu that was opened
      {.name = "mnuAddToWinampsplaylist", .enabled = selected && commands.appends},
      {.name = ""},
      {.name = "mnuPlaylistSave", .enabled = selected},
      {.name = "mnuPlaylistAddItems", .enabled = selected && commands.playlists_exist},
      {.name = "mnuToolsRandomPlaylist", .enabled = selected, .visible = false},
      {.name = "mnuExtrasDisk2CD", .enabled = selected && commands.may_archive, .visible = false},
      {.name = ""},
      {.name = "mnuRemoveTags", .enabled = selected},
      {.name = "mnuAddImagetoFile", .enabled = selected},
      {.name = "mnuRemoveImagefromfile", .enabled = selected},
      {.name = "mnuDelete",
       .enabled = selected && commands.playlist,
       .visible = commands.playlist,
       .caption = commands.playlist ? "Delete from playlist" : ""},
      {.name = ""},
      {.name = "mnuExporttoPlaylist", .enabled = selected},
      {.name = "mnuExporttoplsPlaylist", .enabled = selected},
      {.name = ""},
      {.name = "mnuViewFields"},
      {.name = "mnuAutoSize"}};
}

}  // namespace

std::vector<PopupEntry> Prepare_Popupmenu_Listview1(const Workbench& bench) {
  return EntriesOfList({.list = bench.ListView1,
                        .appends = bench.session.PlayerKind == "Winamp",
                        .playlists_exist = !bench.tree.playlists.empty(),
                        .may_archive = bench.current_view == "Database"});
}

std::vector<PopupEntry> Prepare_Popupmenu_Listview3(const Workbench& bench) {
  return EntriesOfList({.list = bench.ListView3,
                        .appends = bench.session.PlayerKind == "Winamp",
                        .playlist = true,
                        .playlists_exist = !bench.tree.playlists.empty()});
}

std::vector<PopupEntry> PreparePopupMenu(const Workbench& bench) {
  return bench.playlist_in_view ? Prepare_Popupmenu_Listview3(bench)
                                : Prepare_Popupmenu_Listview1(bench);
}

}  // namespace tunemeadow
