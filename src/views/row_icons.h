// SPDX-License-Identifier: GPL-3.0-or-later
// The small icon of a row, told by the file's extension.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tunemeadow {

/// Key of the icon for this file: the last three characters of `location`, upper-cased, and "MP3O"
/// for "MP3", whose image is the program's own.
[[nodiscard]] std::string IconKey(std::string_view location);

/// The distinct keys of a list, in the order of their first row.
class RowIcons {
 public:
  void Add(std::string_view location);
  [[nodiscard]] const std::vector<std::string>& Keys() const noexcept { return keys_; }

 private:
  std::vector<std::string> keys_;
  std::string last_;  ///< end of the location added last: most rows of a list share it
};

}  // namespace tunemeadow
