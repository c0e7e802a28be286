// SPDX-License-Identifier: GPL-3.0-or-later
// Whole small files, read and replaced so that a crash or a full disk leaves the old bytes or the
// new ones, never a mixture and never an empty file.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tunemeadow {

/// All bytes of a regular file. nullopt if it is missing, is anything else than a regular file,
/// holds more than `limit` bytes, or cannot be read to its end.
[[nodiscard]] std::optional<std::string> ReadWholeFile(const std::string& path,
                                                       std::size_t limit = std::size_t{64} << 20);

/// Puts `bytes` in place of the file, which need not exist: a new file beside it, synced,
/// renamed over it, folder synced. Permission bits of an existing file stay; a symbolic link stays
/// one and what it leads to is replaced. False if that failed, also for a file that is
/// write-protected; the old file is as before then and nothing is left beside it.
[[nodiscard]] bool ReplaceFile(const std::string& path, std::string_view bytes);

/// The same with what `write` puts into the new file, whose descriptor it is handed; what it writes
/// need never be in memory as a whole. False from it leaves the old file as it is.
[[nodiscard]] bool ReplaceFileBy(const std::string& path,
                                 const std::function<bool(int descriptor)>& write);

/// Puts a copy of the file `from` at `to` unless something stands there, whole or not at all,
/// synced. True if `to` exists afterwards; what already stood there is never touched.
[[nodiscard]] bool CopyFileIfMissing(const std::string& from, const std::string& to);

/// Waits until the names in the folder that holds `path` are on the disk. False if that failed.
bool SyncFolderOf(const std::string& path) noexcept;

}  // namespace tunemeadow
