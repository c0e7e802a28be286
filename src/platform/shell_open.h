// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace tunemeadow {

/// Opens a file, folder or URL with the program that the desktop associates with it.
class ShellOpener {
 public:
  virtual ~ShellOpener() = default;

  /// `path_or_url`: bytes of a path, or a URL with its scheme. False if nothing could be
  /// started, also for a file that is not there; nothing is shown then. Does not wait for the
  /// program.
  virtual bool Open(const std::string& path_or_url) = 0;
};

/// Whether the text begins with a scheme: "https://...", "mailto:...". A path never does.
[[nodiscard]] bool IsUrl(std::string_view path_or_url) noexcept;

}  // namespace tunemeadow
