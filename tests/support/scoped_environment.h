// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdlib.h>

#include <ctime>
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

/// A time zone for the time of a scope, by its rule, so that no zone files are needed.
class ScopedZone {
 public:
  explicit ScopedZone(const char* rule) {
    variable_.emplace("TZ", rule);
    tzset();
  }
  ~ScopedZone() {
    variable_.reset();
    tzset();
  }
  ScopedZone(const ScopedZone&) = delete;
  ScopedZone& operator=(const ScopedZone&) = delete;

 private:
  std::optional<ScopedEnvironment> variable_;
};

}  // namespace tunemeadow
