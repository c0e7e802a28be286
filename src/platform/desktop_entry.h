// SPDX-License-Identifier: GPL-3.0-or-later
// The text files of the desktop: groups in brackets, lines of key, equals sign and value, comments
// after "#" (freedesktop.org desktop entries 1.5). Names match exactly.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tunemeadow {

/// Value of the first such key in the first such group, blanks around it cut; empty where it is
/// missing. A view into `text`.
[[nodiscard]] std::string_view DesktopValue(std::string_view text, std::string_view group,
                                            std::string_view key) noexcept;

/// The program's words of an Exec value: escapes and quotes undone, field codes (%U) gone, "%%" a
/// plain "%".
[[nodiscard]] std::vector<std::string> ExecWords(std::string_view exec);

}  // namespace tunemeadow
