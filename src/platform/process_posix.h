// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "platform/process.h"

namespace tunemeadow {

enum class Ended { kNotStarted, kRunsOn, kEnded };

/// The started program is a child of the system, not of this process: it outlives it, gets none of
/// its signals and leaves no zombie. Its input is empty and its output goes nowhere.
class PosixProcessStarter : public ProcessStarter {
 public:
  bool Start(const std::string& program, const std::vector<std::string>& arguments) override;

  /// Starts a program as Start does and waits until it has ended, or that long at most; then it
  /// runs on by itself.
  Ended StartAndWait(const std::string& program, const std::vector<std::string>& arguments,
                     int milliseconds);
};

}  // namespace tunemeadow
