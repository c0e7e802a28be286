// SPDX-License-Identifier: GPL-3.0-or-later
// The menus of the main window, made of the rows of the command table.
#pragma once

#include "ui/shell/command_table.h"

class QMainWindow;
class QMenu;

namespace tunemeadow {

/// Makes the actions, the menu bar and the popups of all commands; each runs its row in `context`,
/// which must outlive the window. A menu switches its entries when it opens, by what they need.
void BuildMenus(QMainWindow& frame, CommandContext& context);

/// Connects the buttons that the rows name. They must be there.
void ConnectButtons(CommandContext& context);

/// The menu, for what is no command of the table, or to pop it up.
[[nodiscard]] QMenu& MenuOf(const QWidget& frame, Menu menu);

}  // namespace tunemeadow
