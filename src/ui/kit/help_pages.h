// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

#include "platform/shell_open.h"
#include "run/session.h"

namespace tunemeadow {

/// Opens a page of the help ("preferences.html"), a local file: in the folder "help" of the program
/// folder, beside the executable, or where the system keeps what is shared. Nothing happens where
/// there is no such page. `shell` null: the desktop's own.
void OpenHelpPage(const Session& session, std::string_view page, ShellOpener* shell = nullptr);

/// Opens a page of the web. `shell` null: the desktop's own.
void OpenWebPage(std::string_view url, ShellOpener* shell = nullptr);

}  // namespace tunemeadow
