// SPDX-License-Identifier: GPL-3.0-or-later
// Who writes a journal: one process in one run of the machine.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>

namespace tunemeadow {

struct RunIdentity {
  std::string machine_run;         ///< another text after each start of the machine; empty if the
                                   ///< system gives none
  std::int64_t machine_began = 0;  ///< that start, in seconds since 1970 by today's clock
  std::int64_t process = 0;        ///< its id; 0: not known
  std::int64_t process_began = 0;  ///< in clock ticks since the machine's start; 0: not known

  /// Whether both are known to have been written in the same run of the machine.
  [[nodiscard]] bool SameMachineRun(const RunIdentity& other) const noexcept;

  /// Whether both are known, and known to have been written in different runs of the machine.
  [[nodiscard]] bool OtherMachineRun(const RunIdentity& other) const noexcept;

  /// Whether a file last written at `time` was written in this run of the machine. A time that has
  /// not come yet was given by another clock.
  [[nodiscard]] bool Covers(const struct timespec& time) const noexcept;
};

/// Of this process.
[[nodiscard]] RunIdentity ThisRun();

/// Whether the process that `identity` names is another one than that of `own` and still runs.
[[nodiscard]] bool RunsBeside(const RunIdentity& identity, const RunIdentity& own);

}  // namespace tunemeadow
