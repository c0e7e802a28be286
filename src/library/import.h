// SPDX-License-Identifier: GPL-3.0-or-later
// The import: from a folder, a list of paths or a drop on the list to rows of the catalogue. Each
// row is committed before the next file is opened, so whatever ends an import leaves all rows so
// far. A file whose path the catalogue knows keeps its row and its key; the store sees to that.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "views/workbench.h"

namespace tunemeadow {

enum class ImportEnd {
  kNothingDone,  ///< no folder, no file, or the person did not want it
  kCancelled,    ///< CancelRequested in the middle; the rows so far stand
  kComplete,
};

/// The import button: takes ImportList where ImportGivenFiles or ImportFromMonitor is set,
/// otherwise the files of lblScan by the settings of the session, asks, imports, tells, and renews
/// lists, count and search. Without lblScan it asks for a folder first. Empty entries of the list
/// are passed over but counted. With ImportFromMonitor it neither asks nor tells, but for a cancel.
///
/// However it ends, ImportList is empty and both flags are cleared. A statement that the store
/// refuses is shown with its reason, and the next file follows.
ImportEnd Command1_Click(Workbench& bench);

/// The same, for the other windows.
inline ImportEnd Command1_ClickExternal(Workbench& bench) { return Command1_Click(bench); }

/// What a drop on ListView1 does. `paths` are the files dropped, nullopt for a drop of anything
/// else. One folder becomes lblScan and is imported like it; of anything else those files with an
/// extension that txtPattern holds are.
ImportEnd ImportDropped(Workbench& bench, const std::optional<std::vector<std::string>>& paths);

}  // namespace tunemeadow
