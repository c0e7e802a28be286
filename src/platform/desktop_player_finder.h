// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/player_finder.h"

namespace tunemeadow {

/// Asks for the desktop's associations (MIME Applications Associations 1.0.1); starts no process.
/// The order: the defaults, the user's before the system's; the associations that a user or a
/// system has added; what the installed programs were found to take (mimeinfo.cache); last, where
/// all of this names none, the visible players whose own entries name the type, by the entry's
/// name. Entries that are hidden, removed by the user, or whose program is not installed are passed
/// over. Costs some milliseconds at the first call.
class DesktopPlayerFinder : public PlayerFinder {
 public:
  /// Absolute path of the program, without arguments.
  [[nodiscard]] std::string AssociatedCommand() override;

  /// Of several entries for the program the associated one, then the first visible player; the
  /// program may stand in it by another link than `player`.
  [[nodiscard]] EntryWords WordsOf(const std::string& player) override;
};

}  // namespace tunemeadow
