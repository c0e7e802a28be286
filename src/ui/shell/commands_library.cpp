// SPDX-License-Identifier: GPL-3.0-or-later
// Import, preferences, help and the end of the program.
#include <QWidget>
#include <array>

#include "library/import.h"
#include "ui/kit/help_pages.h"
#include "ui/shell/gestures.h"
#include "ui/shell/windows.h"
#include "ui/windows/library/frmImport.h"
#include "ui/windows/library/frmPreferences.h"

namespace tunemeadow {
namespace {

void Import(CommandContext& context) {
  Workbench& bench = context.bench;
  frmImport dialog(bench.session, bench.interaction, bench.world.shell, &context.frame);
  if (dialog.exec() == QDialog::Accepted) Command1_Click(bench);
}

void ImportFiles(CommandContext& context, const std::vector<std::string>& paths) {
  ImportDropped(context.bench, paths);
}

void ShowPreferences(CommandContext& context) { context.windows.preferences->exec(); }

void ShowHelp(CommandContext& context) {
  OpenHelpPage(context.bench.session, "index.html", context.bench.world.shell,
               context.bench.interaction);
}

void ShowAbout(CommandContext& context) {
  context.bench.interaction.ShowMessage(
      {.text = "Tunemeadow " TM_VERSION "\nA catalogue for one person's collection of audio files.",
       .title = "About Tunemeadow",
       .icon = Icon::kInformation});
}

/// While something is at work the window asks it to end instead of closing.
void Exit(CommandContext& context) { context.frame.close(); }

constexpr std::array kLibraryCommands{
    CommandRow{.name = "mnuFileImport",
               .caption = "&Import files...",
               .run = Import,
               .places = {.bar = {Menu::kFile, 110}},
               .icon = "import",
               .shortcut = "Ctrl+I"},
    CommandRow{.name = "mnuPreferences",
               .caption = "&Preferences...",
               .run = ShowPreferences,
               .places = {.bar = {Menu::kFile, 220}},
               .icon = "preferences",
               .shortcut = "Ctrl+,"},
    CommandRow{.name = "mnuExit",
               .caption = "E&xit",
               .run = Exit,
               .places = {.bar = {Menu::kFile, 310}},
               .icon = "exit",
               .shortcut = "Ctrl+Q",
               .begins = Begins::kAnyTime},
    CommandRow{.name = "mnuHelpContents",
               .caption = "&Contents",
               .run = ShowHelp,
               .places = {.bar = {Menu::kHelp, 110}},
               .icon = "help",
               .shortcut = "F1",
               .begins = Begins::kAnyTime},
    CommandRow{.name = "mnuAbout",
               .caption = "&About...",
               .run = ShowAbout,
               .places = {.bar = {Menu::kHelp, 120}},
               .icon = "tunemeadow"},
};

}  // namespace

std::span<const CommandRow> LibraryCommands() { return kLibraryCommands; }

const Gesture<const std::vector<std::string>&> kFilesDropped{"ListView1_OLEDragDrop", ImportFiles};

}  // namespace tunemeadow
