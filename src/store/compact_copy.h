// SPDX-License-Identifier: GPL-3.0-or-later
// The compacted copy of the catalogue: the repair tool makes it beside the running program, a later
// start puts it in the catalogue's place. Between the two the person may have written to the
// catalogue, and a file's times tell little about that: a copy that is finished after a row was
// written is younger than the row and does not hold it, and a restored backup is as old as one
// likes. So the copy carries the size and a checksum of the very bytes that it was made from, and
// is taken over only if the catalogue consists of these bytes still. In write-ahead logging a clean
// end folds every write into the file, and a start without a write leaves each byte as it was.
#pragma once

#include <optional>
#include <string>

#include "store/file_origin.h"

namespace tunemeadow {

/// Makes a compacted copy of the catalogue `source` at `output`, replacing an older one; both are
/// paths in bytes. The copy appears under its name only when it is whole, checked and synced; it
/// carries its origin and the source's modification time. "" for success, otherwise what went
/// wrong; then `output` is as before. Fails rather than copies a catalogue that is written to
/// meanwhile.
[[nodiscard]] std::string MakeCompactCopy(const std::string& source, const std::string& output);

/// Takes `compact.mdb` of the program's folder away where it is hardly smaller than the catalogue
/// of these bytes, which it was made from: to put it in place would cost more than it saves. True
/// if so; any other copy stays.
[[nodiscard]] bool RemoveUselessCopy(const FileOrigin& catalogue,
                                     const std::string& program_folder);

/// A catalogue before and after a compact copy was put in its place: other bytes, the same rows.
struct TakenOver {
  std::optional<FileOrigin> before;  ///< nullopt for a copy from elsewhere, of other rows
  std::optional<FileOrigin> after;   ///< nullopt if it cannot be read
};

/// Puts `compact.mdb` of the program's folder in place of the catalogue, if nothing was written
/// to the catalogue since the copy was made and the copy is a sound catalogue; any other copy is
/// removed. A copy without an origin, from elsewhere, must not be older than the catalogue's last
/// change. Copy and catalogue both stay where the catalogue is missing, locked or damaged, or where
/// a journal or log still lies beside it (it would be rolled into the new file). At no moment is
/// there no catalogue. Must run before the catalogue is opened. A value if the copy is in its
/// place.
std::optional<TakenOver> TakeOverCompactCopy(const std::string& database_path,
                                             const std::string& program_folder);

}  // namespace tunemeadow
