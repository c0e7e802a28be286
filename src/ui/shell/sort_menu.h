// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/shell/command_table.h"

namespace tunemeadow {

/// View > "Sort by": the visible columns of the list in view, in their order, each sorting as a
/// click on its header does; the sorted one is ticked. Made anew whenever the menu opens.
void ConnectSortMenu(CommandContext& context);

}  // namespace tunemeadow
