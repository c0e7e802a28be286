// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/clipboard.h"

namespace tunemeadow {

/// The clipboard of the desktop. Needs a running QGuiApplication.
class QtClipboard : public Clipboard {
 public:
  void SetText(const std::string& text) override;
};

}  // namespace tunemeadow
