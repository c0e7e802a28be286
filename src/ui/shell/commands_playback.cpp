// SPDX-License-Identifier: GPL-3.0-or-later
// Playing, playlists and CD archives.
#include <QWidget>
#include <array>

#include "platform/drives.h"
#include "playback/cd_archives.h"
#include "playback/play.h"
#include "playback/play_all.h"
#include "playback/playlist_files.h"
#include "playback/playlists.h"
#include "run/preference_rules.h"
#include "ui/panes/result_view.h"
#include "ui/shell/gestures.h"
#include "ui/shell/windows.h"
#include "ui/windows/playback/frmLaufwerke.h"
#include "ui/windows/playback/name_pickers.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

template <void (*command)(Workbench& bench)>
void PlayBack(CommandContext& context) {
  command(context.bench);
}

void PlaySelection(CommandContext& context) {
  cmdSpielen_Click(context.bench);
  context.windows.ViewInView(context.bench).setFocus();
}

void SavePlaylist(CommandContext& context) { mnuPlaylistSave_Click(context.bench); }

void AddToPlaylist(CommandContext& context) {
  frmShowPlaylists window(PlaylistNames(context.bench), &context.frame);
  if (window.exec() == QDialog::Accepted) {
    mnuPlaylistAddItems_Click(context.bench, window.Chosen());
  }
}

void Delete(CommandContext& context) {
  if (context.bench.playlist_in_view) DeleteFromPlaylist(context.bench);
}

void MoveToArchive(CommandContext& context) { mnuExtrasDisk2CD_Click(context.bench); }

void ChooseDrive(CommandContext& context) {
  Session& session = context.bench.session;
  frmLaufwerke window(DrivesForDiscs(context.bench.world.drives),
                      session.preferences.lblConfigCDROM, context.bench.interaction,
                      &context.frame);
  if (window.exec() != QDialog::Accepted) return;
  const std::string drive = window.Chosen();
  if (!PathFitsSettings(drive)) {
    context.bench.interaction.ShowMessage(PathTooLongBox(drive));
    return;
  }
  session.preferences.lblConfigCDROM = drive;
  session.ini.SaveString(kConfigSection, "lblConfigCDROM", drive);
}

void DeleteArchive(CommandContext& context) {
  mnuItem3CDArchivloeschen_Click(context.bench, [&context] { ChooseDrive(context); });
}

void DropRowsOnNode(CommandContext& context, const TreeSelection& node) {
  if (node.kind == NodeKind::kPlaylist || node.kind == NodeKind::kPlaylists) {
    mnuPlaylistSave_Click(context.bench, node.name);
  } else if (ArchivesTakeRows(context.bench)) {
    mnuExtrasDisk2CD_Click(context.bench, node.name);
  }
}

void MoveRows(CommandContext& context, std::size_t before) {
  MoveSelectedPlaylistRows(context.bench, before);
}

void MoveRowTo(CommandContext& context, std::size_t place) {
  const auto row = RowToOrder(context.bench.ListView3);
  if (row) MovePlaylistRow(context.bench, *row, place);
}

constexpr std::array kPlaybackCommands{
    CommandRow{.name = "mnuPlay",
               .caption = "&Play",
               .run = PlayBack<cmdSpielen_Click>,
               .places = {.bar = {Menu::kPlay, 110}, .popup = {Menu::kOfList, 110}},
               .icon = "play",
               .shortcut = "Ctrl+P",
               .button = "cmdSpielen"},
    CommandRow{.name = "mnuAddToWinampsplaylist",
               .caption = "&Add to player's playlist",
               .run = PlayBack<mnuAddToWinampsplaylist_Click>,
               .needs = Needs::kAppendingPlayer,
               .places = {.bar = {Menu::kPlay, 120}, .popup = {Menu::kOfList, 120}}},
    CommandRow{.name = "cmdPlaySelection",
               .caption = "",
               .run = PlaySelection,
               .button = "cmdPlaySelection"},
    CommandRow{.name = "mnuPlaylistSave",
               .caption = "&Save to playlist...",
               .run = SavePlaylist,
               .needs = Needs::kSelection,
               .places = {.bar = {Menu::kPlaylists, 110}, .popup = {Menu::kOfList, 210}},
               .icon = "playlists"},
    CommandRow{.name = "mnuPlaylistAddItems",
               .caption = "&Add to existing playlist...",
               .run = AddToPlaylist,
               .needs = Needs::kPlaylist,
               .places = {.bar = {Menu::kPlaylists, 120}, .popup = {Menu::kOfList, 220}},
               .icon = "add"},
    CommandRow{.name = "mnuToolsRandomPlaylist",
               .caption = "&Random playlist...",
               .run = PlayBack<mnuToolsRandomPlaylist_Click>,
               .needs = Needs::kSelection,
               .places = {.bar = {Menu::kPlaylists, 130}}},
    CommandRow{.name = "mnuDelete",
               .caption = "&Delete from database (Del)",
               .run = Delete,
               .needs = Needs::kPlaylistRows,
               .places = {.bar = {Menu::kEdit, 210}, .popup = {Menu::kOfList, 340}},
               .icon = "delete",
               .playlist_caption = "Delete from playlist"},
    CommandRow{.name = "mnuExporttoPlaylist",
               .caption = "to M3U &Playlist...",
               .run = PlayBack<mnuExporttoPlaylist_Click>,
               .needs = Needs::kSelection,
               .places = {.bar = {Menu::kExport, 110}, .popup = {Menu::kOfList, 410}}},
    CommandRow{.name = "mnuExporttoplsPlaylist",
               .caption = "to P&LS Playlist...",
               .run = PlayBack<mnuExporttoplsPlaylist_Click>,
               .needs = Needs::kSelection,
               .places = {.bar = {Menu::kExport, 120}, .popup = {Menu::kOfList, 420}}},
    CommandRow{.name = "mnuPlaylistPlayAll",
               .caption = "&Play all",
               .run = PlayBack<mnuPlaylistPlayAll_Click>,
               .needs = Needs::kPlaylistNode,
               .places = {.bar = {Menu::kPlaylists, 210}, .popup = {Menu::kOfPlaylist, 110}},
               .icon = "play"},
    CommandRow{.name = "mnuPlaylistUmbenennen",
               .caption = "Re&name...",
               .run = PlayBack<mnuPlaylistUmbenennen_Click>,
               .needs = Needs::kPlaylistNode,
               .places = {.bar = {Menu::kPlaylists, 220}, .popup = {Menu::kOfPlaylist, 120}},
               .icon = "edit"},
    CommandRow{.name = "mnuPlaylistDelete",
               .caption = "&Delete...",
               .run = PlayBack<mnuPlaylistDelete_Click>,
               .needs = Needs::kPlaylistNode,
               .places = {.bar = {Menu::kPlaylists, 230}, .popup = {Menu::kOfPlaylist, 130}},
               .icon = "delete"},
    CommandRow{.name = "mnuExtrasDisk2CD",
               .caption = "&Move items to CD Archive...",
               .run = MoveToArchive,
               .needs = Needs::kLibraryRows,
               .places = {.bar = {Menu::kTools, 110}},
               .icon = "archives"},
    CommandRow{.name = "mnuItem3GesamtesArchivabspielen",
               .caption = "&Play whole archive",
               .run = PlayBack<mnuItem3GesamtesArchivabspielen_Click>,
               .needs = Needs::kArchiveNode,
               .places = {.bar = {Menu::kTools, 120}, .popup = {Menu::kOfArchive, 110}},
               .icon = "play"},
    CommandRow{.name = "mnuItem3CDArchivlöschen",
               .caption = "&Delete CD archive...",
               .run = DeleteArchive,
               .needs = Needs::kArchiveNode,
               .places = {.bar = {Menu::kTools, 130}, .popup = {Menu::kOfArchive, 120}},
               .icon = "delete"},
};

}  // namespace

std::span<const CommandRow> PlaybackCommands() { return kPlaybackCommands; }

const Gesture<const TreeSelection&> kRowsDroppedOnNode{"TreeView1_OLEDragDrop", DropRowsOnNode};
const Gesture<std::size_t> kRowsMoved{"ListView3_OLEDragDrop", MoveRows};
const Gesture<std::size_t> kPlaceChosen{"vsOrder", MoveRowTo};

}  // namespace tunemeadow
