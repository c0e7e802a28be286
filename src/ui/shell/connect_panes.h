// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/shell/command_table.h"

namespace tunemeadow {

/// Lets what the person does in the panes run its commands. `context` must outlive the window.
void ConnectPanes(CommandContext& context);

}  // namespace tunemeadow
