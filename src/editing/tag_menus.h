// SPDX-License-Identifier: GPL-3.0-or-later
// The menu commands that take tags away from the files of the selected rows, and those that add or
// take away a picture. Each asks first, works through the selection with a working Cancel, and
// corrects the rows as it goes.
#pragma once

#include "views/workbench.h"

namespace tunemeadow {

void mnuKillAllTags_Click(Workbench& bench);
void mnuKillID3v11Tag_Click(Workbench& bench);
void mnuKillID3v2xTag_Click(Workbench& bench);
void mnuKillLyrics3_Click(Workbench& bench);

/// Writes the picture that was chosen in the picture pane into each selected file that has none.
void mnuAddImagetoFile_Click(Workbench& bench);
void mnuRemoveImagefromfile_Click(Workbench& bench);

}  // namespace tunemeadow
