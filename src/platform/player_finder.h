// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace tunemeadow {

/// How the desktop starts a program. The last word of `program` is the program itself; what stands
/// before it starts that ("env", "LANG=C"). `arguments` are as they stand in the entry, with the
/// codes "%U", "%f" and so on where files go.
struct EntryWords {
  std::vector<std::string> program;
  std::vector<std::string> arguments;
};

/// What the desktop would start to play an MP3 file.
class PlayerFinder {
 public:
  virtual ~PlayerFinder() = default;

  /// The command that is associated with audio/mpeg, bytes: the program's path, in quotes or not,
  /// arguments after it or not. Empty if there is none.
  [[nodiscard]] virtual std::string AssociatedCommand() = 0;

  /// The words of the desktop's entry for the program at this path; both empty if there is none,
  /// or only one of a sandbox, whose program takes files by itself.
  [[nodiscard]] virtual EntryWords WordsOf(const std::string& player) = 0;
};

}  // namespace tunemeadow
