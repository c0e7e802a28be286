// SPDX-License-Identifier: GPL-3.0-or-later
// Searching the web for the track in the editor.
#include <array>

#include "net/web_lookup.h"
#include "ui/panes/detail_panels.h"
#include "ui/shell/command_table.h"
#include "ui/shell/windows.h"

namespace tunemeadow {
namespace {

template <void (*search)(Workbench& bench, const LookupChoice& choice)>
void LookUp(CommandContext& context) {
  search(context.bench, context.windows.detail_panels->Lookup());
}

constexpr std::array kNetCommands{
    CommandRow{.name = "mnuAmazoncom",
               .caption = "Search &Amazon",
               .run = LookUp<mnuAmazoncom_Click>,
               .places = {.bar = {Menu::kWeb, 110}}},
    CommandRow{.name = "mnucddbcom",
               .caption = "Search &CDDB",
               .run = LookUp<mnucddbcom_Click>,
               .places = {.bar = {Menu::kWeb, 120}}},
    CommandRow{.name = "mnuSearchCovers",
               .caption = "Search c&overs",
               .run = LookUp<mnuSearchCovers_Click>,
               .places = {.bar = {Menu::kWeb, 130}}},
    CommandRow{.name = "mnusonicnet",
               .caption = "Search &music guide",
               .run = LookUp<mnusonicnet_Click>,
               .places = {.bar = {Menu::kWeb, 140}}},
};

}  // namespace

std::span<const CommandRow> NetCommands() { return kNetCommands; }

}  // namespace tunemeadow
