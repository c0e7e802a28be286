// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

#include "platform/shell_open.h"
#include "run/interaction.h"
#include "run/session.h"

namespace tunemeadow {

/// Opens a page of the help ("preferences.html"), a local file: in the folder "help" of the program
/// folder, beside the executable, or where the system keeps what is shared. Nothing happens where
/// there is no such page; where nothing can show it, a box tells its path.
void OpenHelpPage(const Session& session, std::string_view page, ShellOpener& shell,
                  Interaction& interaction);

/// Opens a page of the web.
void OpenWebPage(std::string_view url, ShellOpener& shell);

}  // namespace tunemeadow
