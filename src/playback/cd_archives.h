// SPDX-License-Identifier: GPL-3.0-or-later
// CD archives: tracks that now live on burnt discs. Their locations begin with a name, "MP3-CD01",
// where others have their drive; the table `cdarchives` groups them by that name. How such a
// location becomes a path again is told in tracks/cd_archive_path.h.
//
// Each statement stands alone; the first one that the store refuses is told in a box and ends the
// command, and what was written before it stays.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "views/workbench.h"

namespace tunemeadow {

/// A location without its root: the drive "X:", the server part "\\server\share", or the mount
/// point that it lies below, the deepest one. `mounts` are folders with a trailing "/"; "/" itself
/// is cut from nothing. What is left begins with a separator, if the location had a root.
[[nodiscard]] std::string_view PathWithoutRoot(std::string_view location,
                                               std::span<const std::string> mounts);

/// The number of the next disc: the largest one after the tag in these locations, plus 1, with two
/// digits or more. "01" if there is none.
[[nodiscard]] std::string NextDiscNumber(std::span<const std::string> locations,
                                         std::string_view tag);

/// Moves the selected rows of ListView1 that are not archived yet to the disc whose name the person
/// gives; `offered` is the name that stands in the box, or empty for the tag and the next number. A
/// name that begins with a separator or is a drive ("C:", "C:\x") is refused in a box.
void mnuExtrasDisk2CD_Click(Workbench& bench, const std::string& offered = {});

/// Opens frmLaufwerke, which stores a drive in lblConfigCDROM or leaves it.
using DriveChooser = std::function<void()>;

/// Deletes the archive that is selected in the tree, after a question: first its rows of
/// `cdarchives`, then the locations of its tracks get lblConfigCDROM in place of the name. Where no
/// drive is set one is chosen; without one nothing is deleted. Where the search is limited to this
/// archive, the whole library comes into view.
void mnuItem3CDArchivloeschen_Click(Workbench& bench, const DriveChooser& choose_drive);

/// The names of all archives, in their order; none where the store does not answer.
[[nodiscard]] std::vector<std::string> ArchiveNames(Workbench& bench);

}  // namespace tunemeadow
