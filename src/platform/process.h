// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace tunemeadow {

enum class Ended { kNotStarted, kRunsOn, kEnded };

/// Starts programs that run on their own.
class ProcessStarter {
 public:
  virtual ~ProcessStarter() = default;

  /// Starts a program without waiting for its end. `program`: a path, or a name to be looked up in
  /// $PATH; `arguments` reach it byte for byte. False if it could not be started.
  virtual bool Start(const std::string& program, const std::vector<std::string>& arguments) = 0;

  /// Starts a program as Start does and waits until it has ended, or that long at most; then it
  /// runs on by itself.
  virtual Ended StartAndWait(const std::string& program, const std::vector<std::string>& arguments,
                             int milliseconds) = 0;
};

}  // namespace tunemeadow
