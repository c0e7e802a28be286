// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/player_finder.h"

namespace tunemeadow {

/// Asks the files in which the desktop keeps its associations (MIME Applications
/// Associations 1.0.1); starts no process. The order: the defaults of each mimeapps.list, the
/// user's before the system's; the associations that these add; what the installed programs say of
/// themselves (mimeinfo.cache). Entries that are hidden, removed by the user, or whose program is
/// not installed are passed over.
class DesktopPlayerFinder : public PlayerFinder {
 public:
  /// Absolute path of the program, without arguments.
  [[nodiscard]] std::string AssociatedCommand() override;
};

}  // namespace tunemeadow
