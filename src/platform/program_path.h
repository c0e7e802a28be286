// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tunemeadow {

/// Path of the program that a shell would start for this name: the name itself where it holds a
/// "/", else the first match in the folders of $PATH. Empty where there is no executable file of
/// it.
[[nodiscard]] std::string ProgramPath(const std::string& name);

}  // namespace tunemeadow
