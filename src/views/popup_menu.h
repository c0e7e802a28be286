// SPDX-License-Identifier: GPL-3.0-or-later
// The list's context menu, as data: its entries, and how they stand for the list in view.
#pragma once

#include <string_view>
#include <vector>

namespace tunemeadow {

struct Workbench;

/// One entry. What it does and its usual caption belong to the menu command, or to the submenu, of
/// that name. Without a name it is a line between two groups.
struct PopupEntry {
  std::string_view name;
  bool enabled = true;
  bool visible = true;       ///< false: stands in a menu of the bar only
  std::string_view caption;  ///< where it differs from the usual one; else empty
};

/// The entries for ListView1 and for ListView3, in their order.
[[nodiscard]] std::vector<PopupEntry> Prepare_Popupmenu_Listview1(const Workbench& bench);
[[nodiscard]] std::vector<PopupEntry> Prepare_Popupmenu_Listview3(const Workbench& bench);

/// Those of the list in view.
[[nodiscard]] std::vector<PopupEntry> PreparePopupMenu(const Workbench& bench);

}  // namespace tunemeadow
