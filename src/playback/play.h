// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that hand the selected rows of the list in view to the external player. The program
// plays nothing itself.
//
// Nothing is thrown. A missing file and a player that cannot be loaded are told in boxes, a player
// that does not start on the status line; any other step that fails is skipped, and the next
// one runs. After a player that did not start the next play asks the desktop for one again.
#pragma once

#include <string>

#include "views/workbench.h"

namespace tunemeadow {

/// Plays the selected rows. Each is looked for, stamped as played now in the catalogue and in its
/// cell, and goes its way: by the extension list to the player, otherwise to the program that the
/// desktop associates with it. The kinds "Winamp" and "Sonique" get one list of all their files,
/// which they play from the start, in the window that runs where there is one; the kind "Unknown"
/// is started once per file, without a list, after one question where that is more than 20 times.
/// Answered with No, nothing is stamped or opened.
/// Abort on a missing file ends the command: no list is started, what was started before goes on.
void cmdSpielen_Click(Workbench& bench) noexcept;

/// Appends the selected rows to the list of the running player, which is started where none runs,
/// and stamps them. Where it cannot be loaded the command ends with the row at hand. Previews are
/// not considered.
void mnuAddToWinampsplaylist_Click(Workbench& bench) noexcept;

/// Finds the running player, or starts lblConfigWinamp and looks for it 1001 times, yielding
/// between the tries; its name is in bench.WinampWindow then. False, after a box, where there is
/// none; without a box where the person has asked for the end of the program meanwhile.
[[nodiscard]] bool WinampEnsureRunning(Workbench& bench);

/// Sends one path to the player, which WinampEnsureRunning has found. False if that has failed;
/// whether the player takes the path is not asked.
bool WinampAddFile(Workbench& bench, const std::string& path);

}  // namespace tunemeadow
