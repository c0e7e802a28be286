// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tunemeadow {

/// What the desktop would start to play an MP3 file.
class PlayerFinder {
 public:
  virtual ~PlayerFinder() = default;

  /// The command that is associated with audio/mpeg, bytes: the program's path, in quotes or not,
  /// arguments behind it or not. Empty where there is none.
  [[nodiscard]] virtual std::string AssociatedCommand() = 0;
};

}  // namespace tunemeadow
