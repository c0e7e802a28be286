// SPDX-License-Identifier: GPL-3.0-or-later
// What a row is told of its file after a save.
#pragma once

#include <cstdint>
#include <string>

#include "run/session.h"

namespace tunemeadow {

/// The last-write time of the file as text; if there is no such file, what the row holds. Throws
/// DatabaseError.
[[nodiscard]] std::string FileTimeOfRow(Session& session, const std::string& path,
                                        std::int64_t uid);

/// A flag hasid3v1 or hasid3v2 of the row as a number: what is none counts as 0, and a 0 becomes 1
/// where the tag was written.
void SetFlagOfRow(std::string& flag, bool written);

}  // namespace tunemeadow
