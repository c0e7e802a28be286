// SPDX-License-Identifier: GPL-3.0-or-later
// Which external player there is, and how it wants to be spoken to.
#pragma once

#include <string>

#include "platform/player_finder.h"
#include "run/interaction.h"
#include "run/session.h"

namespace tunemeadow {

/// Kind of a player by its path: "Winamp" for one that takes an M3U list as its argument: WINAMP
/// anywhere in the path in any case, or a player that platform/known_players.h knows to do so.
/// "Sonique" for SONIQUE anywhere in the path. "Unknown" for any other; empty for an empty path and
/// for kNoPlayer.
[[nodiscard]] std::string PlayerKindOf(const std::string& path);

/// Path of the program that the desktop associates with MP3 files; empty if there is none.
[[nodiscard]] std::string AssociatedPlayer(PlayerFinder& finder);

/// Sets session.PlayerKind, and lblConfigWinamp where it is empty: to the program that the desktop
/// associates with MP3 files. Where there is none the person is told, and it becomes kNoPlayer.
void DetectPlayer(Session& session, PlayerFinder& finder, Interaction& interaction);

}  // namespace tunemeadow
