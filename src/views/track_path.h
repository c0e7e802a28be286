// SPDX-License-Identifier: GPL-3.0-or-later
// Which file a row of the list in view stands for. Paths are bytes; no disk is asked.
#pragma once

#include <cstddef>
#include <string>

namespace tunemeadow {

struct Workbench;

/// The row's location; that of a track on a burnt disc, with the drive in place of the disc.
[[nodiscard]] std::string PathOfRow(Workbench& bench, std::size_t row);

/// What is heard of the row: its preview clip where "Try Preview" is on and the row has one,
/// otherwise PathOfRow.
[[nodiscard]] std::string PathToPlay(Workbench& bench, std::size_t row);

}  // namespace tunemeadow
