// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/shell_open.h"

namespace tunemeadow {

/// ShellOpener through QDesktopServices. Needs a running QGuiApplication.
class QtShellOpener : public ShellOpener {
 public:
  bool Open(const std::string& path_or_url) override;
};

}  // namespace tunemeadow
