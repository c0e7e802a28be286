// SPDX-License-Identifier: GPL-3.0-or-later
// Starting the external player, with the words of its entry on the desktop.
#pragma once

#include <string>
#include <vector>

#include "platform/player_finder.h"
#include "views/workbench.h"

namespace tunemeadow {

/// What a player is started with. `file`: a list or one track, in place of the entry's "%U",
/// "%F" and the like or after everything; empty if there is none. `is_list`: it takes the place of
/// the player's own list, and the words that a known player wants for that are added; each word
/// that the entry has already is not repeated.
[[nodiscard]] std::vector<std::string> PlayerArguments(const std::string& player,
                                                       const EntryWords& entry,
                                                       const std::string& file, bool is_list);

/// Starts lblConfigWinamp. Where it cannot be started that stands on the status line, and
/// bench.failed_player remembers it for DetectPlayerAgain.
bool StartPlayer(Workbench& bench, const std::string& file = {}, bool is_list = false);

/// Plays a list file: in the running player where that takes it, otherwise StartPlayer.
void PlayListFile(Workbench& bench, const std::string& list);

/// After a start that failed, with the same player still set: asks the desktop again, and says on
/// the status line where another player took its place. Where the desktop names none, or where
/// nothing failed, nothing changes.
void DetectPlayerAgain(Workbench& bench);

}  // namespace tunemeadow
