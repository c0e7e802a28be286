// SPDX-License-Identifier: GPL-3.0-or-later
// The button that makes the code of a name.
#pragma once

#include <optional>
#include <string>

#include "views/workbench.h"

namespace tunemeadow {

/// What Command2 does: asks for a name, makes the code of it in capitals (makeaudiogalaxytag) and
/// says that it is on the clipboard, where the caller puts it. nullopt where the person cancels or
/// types nothing.
[[nodiscard]] std::optional<std::string> AudiogalaxyCode(Workbench& bench);

}  // namespace tunemeadow
