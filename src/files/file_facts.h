// SPDX-License-Identifier: GPL-3.0-or-later
// What the system knows of a file by its path.
#pragma once

#include <string>

namespace tunemeadow {

/// Plain existence test.
[[nodiscard]] bool MyFileExists(const std::string& path) noexcept;

/// Whether the path names a directory (links followed).
[[nodiscard]] bool IsDirectory(const std::string& path) noexcept;

/// Text of the last-write time of the file; "" where it cannot be read.
[[nodiscard]] std::string FileTimeText(const std::string& path);

}  // namespace tunemeadow
