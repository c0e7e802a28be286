// SPDX-License-Identifier: GPL-3.0-or-later
// The button that makes the code of a name.
#pragma once

#include "views/workbench.h"

namespace tunemeadow {

/// What Command2 does: asks for a name, puts the code of it in capitals (makeaudiogalaxytag) on the
/// clipboard, and says that it is there. Nothing happens where the person cancels or types nothing.
void CopyAudiogalaxyCode(Workbench& bench);

}  // namespace tunemeadow
