// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdlib.h>

#include <optional>
#include <string>
#include <utility>

namespace tunemeadow {

/// An environment variable for the time of a scope; a null value takes it away.
class ScopedEnvironment {
 public:
  ScopedEnvironment(std::string name, const char* value) : name_(std::move(name)) {
    if (const char* old = getenv(name_.c_str()); old != nullptr) old_ = old;
    Set(value);
  }
  ~ScopedEnvironment() { Set(old_ ? old_->c_str() : nullptr); }
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

 private:
  void Set(const char* value) {
    if (value == nullptr) {
      unsetenv(name_.c_str());
    } else {
      setenv(name_.c_str(), value, 1);
    }
  }

  std::string name_;
  std::optional<std::string> old_;
};

}  // namespace tunemeadow
