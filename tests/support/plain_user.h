// SPDX-License-Identifier: GPL-3.0-or-later
// Makes tests of missing permissions mean something where root runs them.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

namespace tunemeadow {

/// For the time of a scope the process acts as a user without privileges; where it runs as one
/// anyhow, nothing changes. The folder, not its contents, is given to that user.
class ScopedPlainUser {
 public:
  explicit ScopedPlainUser(const std::string& folder) {
    constexpr uid_t kNobody = 65534;
    if (geteuid() != 0) return;
    if (chown(folder.c_str(), kNobody, kNobody) != 0 || seteuid(kNobody) != 0) ADD_FAILURE();
  }
  ~ScopedPlainUser() {
    if (getuid() == 0 && seteuid(0) != 0) ADD_FAILURE();
  }
  ScopedPlainUser(const ScopedPlainUser&) = delete;
  ScopedPlainUser& operator=(const ScopedPlainUser&) = delete;
};

}  // namespace tunemeadow
