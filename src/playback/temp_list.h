// SPDX-License-Identifier: GPL-3.0-or-later
// The short-lived lists that a player is started with. They lie in a folder of this user alone: in
// the shared one somebody else could have put a link under their names.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tunemeadow {

/// The system's temporary folder, bytes: $TMPDIR where that is an absolute path of less than 255
/// bytes, otherwise "/tmp".
[[nodiscard]] std::string GetTempFolder();

/// The user's folder for what can be made again, bytes: $XDG_CACHE_HOME, otherwise ".cache" in
/// $HOME. A player in a sandbox sees it where it sees the user's files; the temporary one it does
/// not. Made where it is missing.
[[nodiscard]] std::string GetCacheFolder();

/// Replaces the file `name` in the private folder below `base` by these bytes. Its full
/// path; nullopt if that failed. The file stays until the next list of its name.
[[nodiscard]] std::optional<std::string> WriteTempList(const std::string& name,
                                                       std::string_view bytes,
                                                       const std::string& base = GetTempFolder());

}  // namespace tunemeadow
