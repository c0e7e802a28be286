// SPDX-License-Identifier: GPL-3.0-or-later
// Steps of the start that reach outside of the process.
#pragma once

#include <string>

#include "platform/process.h"
#include "run/interaction.h"
#include "run/session.h"

namespace tunemeadow {

/// The name under which the repair tool is shipped.
inline constexpr const char* kRepairTool = "RepairDB.exe";

/// Starts the repair tool in the background, without waiting: it writes a compacted copy of the
/// catalogue to compact.mdb in the program folder, which a later start takes over. The tool is
/// looked for in the program folder, then in `shipped_folder`. False where there is none; a tool
/// that is there and cannot be started counts as started, as nobody waits for it.
[[nodiscard]] bool StartRepairTool(const Session& session, ProcessStarter& starter,
                                   const std::string& shipped_folder);

/// The box after a catalogue could not be opened, before another one is asked for.
[[nodiscard]] MessageBox OpenFailedBox(const std::string& database, const DatabaseError& error);

}  // namespace tunemeadow
