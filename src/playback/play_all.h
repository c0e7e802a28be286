// SPDX-License-Identifier: GPL-3.0-or-later
// A whole playlist or archive for the external player.
#pragma once

#include "views/workbench.h"

namespace tunemeadow {

/// Plays all rows of ListView3, in the order shown. Where another list is in view, the playlist
/// that is selected in the tree is opened first; with none selected nothing happens.
void mnuPlaylistPlayAll_Click(Workbench& bench);

/// Opens the archive that is selected in the tree, or whose folder is, and plays all its rows. With
/// none selected: a box.
void mnuItem3GesamtesArchivabspielen_Click(Workbench& bench);

}  // namespace tunemeadow
