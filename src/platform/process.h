// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace tunemeadow {

/// Starts programs that run on their own.
class ProcessStarter {
 public:
  virtual ~ProcessStarter() = default;

  /// Starts a program without waiting for its end. `program`: a path, or a name to be looked up in
  /// $PATH; `arguments` reach it byte for byte. False where it could not be started.
  virtual bool Start(const std::string& program, const std::vector<std::string>& arguments) = 0;
};

}  // namespace tunemeadow
