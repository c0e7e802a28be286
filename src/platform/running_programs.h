// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace tunemeadow {

/// One process of this user.
struct RunningProgram {
  pid_t id = 0;
  double seconds = 0;  ///< since its start
};

/// The oldest living process that was started from the program at this path: the kernel knows it by
/// that file, or by the file's name (at most 15 bytes of it; a script is known by its own name).
/// nullopt if there is none. This process itself is none. `table`: where the kernel shows its
/// processes.
[[nodiscard]] std::optional<RunningProgram> FindRunningProgram(const std::string& program,
                                                               const std::string& table = "/proc");

}  // namespace tunemeadow
