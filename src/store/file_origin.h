// SPDX-License-Identifier: GPL-3.0-or-later
// What tells one state of a file from another: its size and a checksum of all of its bytes. Times
// would not do: a copy may be younger than a change that it does not hold, and a restored file is
// as old as one likes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

struct sqlite3;

namespace tunemeadow {

/// The bytes of a file.
struct FileOrigin {
  std::int64_t bytes = 0;
  std::int64_t checksum = 0;  ///< for accidents, not against a forger
  bool operator==(const FileOrigin&) const = default;
};

/// The origin that the file of an open store would have. The caller holds a read transaction, so
/// that nothing is folded into the file meanwhile. nullopt if it cannot be read.
[[nodiscard]] std::optional<FileOrigin> OriginOf(sqlite3* store);

/// The origin of a file that is not open in this process. nullopt if it cannot be read to its end.
[[nodiscard]] std::optional<FileOrigin> OriginOfFile(const std::string& path);

/// The origin of a catalogue once a log that a crash left is folded in. nullopt if it cannot be
/// read, or where somebody else is at work in it, so that its bytes alone are not the whole of it.
[[nodiscard]] std::optional<FileOrigin> OriginOfCatalogue(const std::string& path);

}  // namespace tunemeadow
