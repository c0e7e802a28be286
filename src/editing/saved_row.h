// SPDX-License-Identifier: GPL-3.0-or-later
// What row and person are told of a file after a save.
#pragma once

#include <cstdint>
#include <string>

#include "views/workbench.h"

namespace tunemeadow {

/// The last-write time of the file as text; if there is no such file, what the row holds. Throws
/// DatabaseError.
[[nodiscard]] std::string FileTimeOfRow(Session& session, const std::string& path,
                                        std::int64_t uid);

/// A flag hasid3v1 or hasid3v2 of the row as a number: what is none counts as 0, and a 0 becomes 1
/// where the tag was written.
void SetFlagOfRow(std::string& flag, bool written);

/// Marks the track in both lists as one whose file holds what its row says, or not. The cells of
/// the row, which are set behind it, show it.
void MarkFileWritten(Workbench& bench, std::int64_t uid, bool written);

/// The status line while a box on a failed write stands: the file's name, and the writer's
/// sentence.
void ShowFault(Workbench& bench, const std::string& path, const std::string& fault);

}  // namespace tunemeadow
