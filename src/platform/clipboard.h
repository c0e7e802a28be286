// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tunemeadow {

/// What other programs paste.
class Clipboard {
 public:
  virtual ~Clipboard() = default;

  /// Replaces what was there. `text`: UTF-8.
  virtual void SetText(const std::string& text) = 0;
};

}  // namespace tunemeadow
