// SPDX-License-Identifier: GPL-3.0-or-later
// Which external player there is, and how it wants to be spoken to.
#pragma once

#include <string>
#include <string_view>

#include "platform/player_finder.h"
#include "run/interaction.h"
#include "run/session.h"

namespace tunemeadow {

/// Kind of a player by its path: "Winamp" for one that takes a playlist as its argument and adds to
/// its own list on request: WINAMP anywhere in the path in any case, or an executable named
/// audacious or qmmp (both know the switch -e). "Sonique" for SONIQUE anywhere in the path.
/// "Unknown" for any other; empty for an empty path and for kNoPlayer.
[[nodiscard]] std::string PlayerKindOf(std::string_view path);

/// Sets session.PlayerKind, and lblConfigWinamp where it is empty: to the program that the desktop
/// associates with MP3 files. Where there is none the person is told, and it becomes kNoPlayer.
void DetectPlayer(Session& session, PlayerFinder& finder, Interaction& interaction);

}  // namespace tunemeadow
