// SPDX-License-Identifier: GPL-3.0-or-later
// A small disk of its own, to be filled up.
#pragma once

#include <cstdint>
#include <string>

namespace tunemeadow::kill {

/// Puts a disk of `bytes` in memory over `folder`, for this process and its children alone. False
/// where the system does not allow it.
[[nodiscard]] bool MountSmallDisk(const std::string& folder, std::int64_t bytes);

/// Takes it away with what is on it.
void UnmountSmallDisk(const std::string& folder);

/// Makes the file `path` so long that `room` bytes stay free on its disk. False if that failed.
[[nodiscard]] bool FillDisk(const std::string& path, std::int64_t room);

}  // namespace tunemeadow::kill
