// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "platform/process.h"

namespace tunemeadow {

/// The started program is a child of the system, not of this process: it outlives it, gets none of
/// its signals and leaves no zombie. Its input is empty and its output goes nowhere.
class PosixProcessStarter : public ProcessStarter {
 public:
  bool Start(const std::string& program, const std::vector<std::string>& arguments) override;
  Ended StartAndWait(const std::string& program, const std::vector<std::string>& arguments,
                     int milliseconds) override;
};

}  // namespace tunemeadow
