// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "platform/shell_open.h"

namespace tunemeadow {

/// Opens nothing and keeps what it was to open.
class RecordingShell : public ShellOpener {
 public:
  bool Open(const std::string& path_or_url) override {
    opened.push_back(path_or_url);
    return true;
  }
  std::vector<std::string> opened;
};

}  // namespace tunemeadow
