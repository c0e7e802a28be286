// SPDX-License-Identifier: GPL-3.0-or-later
// What every command that hands files on does about one that is not there.
#pragma once

#include <string>

#include "run/interaction.h"

namespace tunemeadow {

enum class FileState {
  kThere,
  kIgnored,  ///< missing; the command goes on without it
  kAborted   ///< missing; the whole command ends
};

/// Looks for the file, bytes, and asks the person about one that is missing: Retry looks again.
[[nodiscard]] FileState LookForFile(Interaction& interaction, const std::string& path);

}  // namespace tunemeadow
