// SPDX-License-Identifier: GPL-3.0-or-later
// The button that makes the code of a name.
#pragma once

#include <functional>
#include <string>

#include "views/workbench.h"

namespace tunemeadow {

/// What Command2 does: asks for a name, makes the code of it in capitals (makeaudiogalaxytag),
/// hands that to `copy`, which puts it on the clipboard, and says that it is there. Nothing happens
/// where the person cancels or types nothing.
void CopyAudiogalaxyCode(Workbench& bench, const std::function<void(const std::string&)>& copy);

}  // namespace tunemeadow
