// SPDX-License-Identifier: GPL-3.0-or-later
// What a row is told of its file after a save.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "run/session.h"

namespace tunemeadow {

/// The last-write time of the file as text; where there is no such file, what the row holds. Throws
/// DatabaseError.
[[nodiscard]] std::string FileTimeOfRow(Session& session, const std::string& path,
                                        std::int64_t uid);

/// A flag hasid3v1 or hasid3v2 of the row: `cell` as it was, an empty one counting as 0; a 0
/// becomes 1 where the tag was written.
[[nodiscard]] std::int64_t FlagOfRow(std::string_view cell, bool written) noexcept;

}  // namespace tunemeadow
