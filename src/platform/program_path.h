// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tunemeadow {

/// The path without links; the path itself if there is no such file.
[[nodiscard]] std::string RealPath(const std::string& path);

/// Absolute path of the program that a shell would start for this name: of the file itself where
/// the name holds a "/", otherwise of the first match in the folders of $PATH. Empty if there is no
/// executable file of it.
[[nodiscard]] std::string ProgramPath(const std::string& name);

}  // namespace tunemeadow
