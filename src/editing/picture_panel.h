// SPDX-License-Identifier: GPL-3.0-or-later
// The buttons of the picture pane.
#pragma once

#include <string>

#include "views/workbench.h"

namespace tunemeadow {

/// Caption of cmdAddpic: "del" where the pane shows a picture, otherwise "add".
[[nodiscard]] std::string AddPictureCaption(const DetailEditor& details);

/// Takes the shown picture out of the file, or lets the person choose one and writes it into the
/// file with the tags as the editor holds them; then corrects the row and shows the pane again.
void cmdAddpic_Click(Workbench& bench);

/// Saves a copy of the shown picture where the person chooses.
void cmdSavePic_Click(Workbench& bench);

/// Removes the picture file that ShowPic left in the program's folder. For the end of the program.
void RemovePictureFile(Workbench& bench);

}  // namespace tunemeadow
