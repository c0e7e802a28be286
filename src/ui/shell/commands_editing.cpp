// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that change files and rows, and the moment at which a changed record is left.
#include <array>

#include "editing/audiogalaxy.h"
#include "editing/picture_panel.h"
#include "editing/save.h"
#include "editing/tag_menus.h"
#include "ui/kit/help_pages.h"
#include "ui/panes/detail_panels.h"
#include "ui/panes/result_view.h"
#include "ui/shell/gestures.h"
#include "ui/shell/windows.h"

namespace tunemeadow {
namespace {

template <void (*command)(Workbench& bench)>
void EditSelection(CommandContext& context) {
  command(context.bench);
}

void Save(CommandContext& context) {
  if (!context.windows.detail_panels->FieldsStand()) return;
  cmdSpeichern_Click(context.bench);
  // Where the save was given up, the person goes on with the record.
  if (context.bench.details.DetailsChanged) return;
  context.windows.ViewInView(context.bench).setFocus();
}

template <int index>
void LeafThrough(CommandContext& context) {
  if (context.windows.detail_panels->FieldsStand()) cmdItemBlaetter_Click(context.bench, index);
}

void AddPicture(CommandContext& context) {
  if (context.windows.detail_panels->FieldsStand()) cmdAddpic_Click(context.bench);
}

void ShowSavingHelp(CommandContext& context) {
  OpenHelpPage(context.bench.session, "saving.html", context.bench.world.shell,
               context.bench.interaction);
}

/// What is typed for many must not mix with what was typed for the one before them. False if
/// the person wants that saved and it failed.
bool MayBecomeMany(Workbench& bench) {
  return bench.ListInView().SelectedCount() < 2 || AskToSaveChanges(bench);
}

/// A record with a field that may not stand stays, and nothing else comes of the click than the box
/// on that field.
void ShowRecord(CommandContext& context, std::size_t row) {
  Workbench& bench = context.bench;
  DetailEditor& details = bench.details;
  if (!context.windows.detail_panels->FieldsStand() ||
      (!details.save_all && !MayBecomeMany(bench))) {
    KeepLoadedRecord(bench);
    return;
  }
  if (!details.save_all && bench.ListInView().SelectedCount() >= 2) {
    // What the person did not want saved for one track is not meant for many.
    if (details.DetailsChanged) ReloadDetails(bench);
    details.DetailsKeyed = details.DetailsChanged = false;
  }
  ListView1_ItemClick(bench, row);
}

constexpr std::array kEditingCommands{
    CommandRow{.name = "mnuKillAllTags",
               .caption = "&All tags",
               .run = EditSelection<mnuKillAllTags_Click>,
               .needs = Needs::kSelection,
               .places = {.bar = {Menu::kRemoveTags, 110}}},
    CommandRow{.name = "mnuKillID3v11Tag",
               .caption = "ID3v&1.x tag",
               .run = EditSelection<mnuKillID3v11Tag_Click>,
               .needs = Needs::kSelection,
               .places = {.bar = {Menu::kRemoveTags, 120}}},
    CommandRow{.name = "mnuKillID3v2xTag",
               .caption = "ID3v&2.x tag",
               .run = EditSelection<mnuKillID3v2xTag_Click>,
               .needs = Needs::kSelection,
               .places = {.bar = {Menu::kRemoveTags, 130}}},
    CommandRow{.name = "mnuKillLyrics3",
               .caption = "&LYRICS3 tag",
               .run = EditSelection<mnuKillLyrics3_Click>,
               .needs = Needs::kSelection,
               .places = {.bar = {Menu::kRemoveTags, 140}}},
    CommandRow{.name = "mnuAddImagetoFile",
               .caption = "Add &selected image to file(s)",
               .run = EditSelection<mnuAddImagetoFile_Click>,
               .needs = Needs::kSelection,
               .places = {.bar = {Menu::kEdit, 120}, .popup = {Menu::kOfList, 320}},
               .icon = "picture"},
    CommandRow{.name = "mnuRemoveImagefromfile",
               .caption = "Remove &image from file(s)",
               .run = EditSelection<mnuRemoveImagefromfile_Click>,
               .needs = Needs::kSelection,
               .places = {.bar = {Menu::kEdit, 130}, .popup = {Menu::kOfList, 330}}},
    CommandRow{.name = "mnuAudiogalaxy",
               .caption = "Audiogalaxy scrambler",
               .run = EditSelection<CopyAudiogalaxyCode>,
               .places = {.bar = {Menu::kTools, 120}}},
    CommandRow{.name = "cmdSpeichern", .caption = "", .run = Save, .button = "cmdSpeichern"},
    CommandRow{.name = "cmdHelpSave",
               .caption = "",
               .run = ShowSavingHelp,
               .button = "cmdHelpSave",
               .begins = Begins::kAnyTime},
    CommandRow{.name = "cmdItemBlaetter_0",
               .caption = "",
               .run = LeafThrough<0>,
               .button = "cmdItemBlaetter_0"},
    CommandRow{.name = "cmdItemBlaetter_1",
               .caption = "",
               .run = LeafThrough<1>,
               .button = "cmdItemBlaetter_1"},
    CommandRow{.name = "ListView1_NoItem", .caption = "", .run = EditSelection<EndModeForMany>},
    CommandRow{.name = "cmdAddpic", .caption = "", .run = AddPicture, .button = "cmdAddpic"},
    CommandRow{.name = "cmdSavePic",
               .caption = "",
               .run = EditSelection<cmdSavePic_Click>,
               .button = "cmdSavePic"},
};

}  // namespace

std::span<const CommandRow> EditingCommands() { return kEditingCommands; }

const Gesture<std::size_t> kRowChosen{"ListView1_ItemClick", ShowRecord};

}  // namespace tunemeadow
