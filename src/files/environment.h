// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>
#include <string>

namespace tunemeadow {

/// The value of an environment variable, bytes; empty if it is not set.
[[nodiscard]] inline std::string EnvironmentText(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

}  // namespace tunemeadow
