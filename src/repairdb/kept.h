// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of RepairDB.exe for the old bytes of files whose save was cut short and that have
// changed since, or that have gone.
#pragma once

#include <span>
#include <string>

namespace tunemeadow::repair {

/// Lists the journals that stand in the program's folder, with their files, on the standard output.
int ListKept(const std::string& folder);

/// Writes the old files of a journal into a folder that exists, each under its own name, or with a
/// number after it where that is taken. Nothing that stands there is touched.
int WriteKept(const std::string& journal, const std::string& folder);

/// Removes a journal. Refused where it is none, and where a program is running that may still need
/// it.
int DropKept(const std::string& journal);

}  // namespace tunemeadow::repair
