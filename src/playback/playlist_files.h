// SPDX-License-Identifier: GPL-3.0-or-later
// The two playlist files that other programs read: M3U and PLS. Bytes with CRLF line ends; paths
// stand in them as they are on the disk, those of archived tracks with the drive in place of their
// tag.
#pragma once

#include <span>
#include <string>

#include "views/workbench.h"

namespace tunemeadow {

/// The bytes of a file that lists the paths.
[[nodiscard]] std::string M3uText(std::span<const std::string> paths);
[[nodiscard]] std::string PlsText(std::span<const std::string> paths);

/// Writes such a file of the selected rows of the list in view, at a place that the person chooses.
/// Missing files are asked about one by one. The status line tells how many of the list's tracks
/// were written, or that the file cannot be; one that was there stays as it was then. The name of
/// an open playlist and the folder of the last such file are offered.
void mnuExporttoPlaylist_Click(Workbench& bench);
void mnuExporttoplsPlaylist_Click(Workbench& bench);

}  // namespace tunemeadow
