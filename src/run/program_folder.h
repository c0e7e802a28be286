// SPDX-License-Identifier: GPL-3.0-or-later
// Where the program's own files lie: settings, catalogue, backup, logs.
#pragma once

#include <string>

namespace tunemeadow {

/// The folder that holds settings, catalogue and backup, absolute, with a trailing separator:
/// 1. the folder that the environment variable TUNEMEADOW_FOLDER names, if it is set and not empty;
/// 2. the executable's folder, if files can be made there and it is none of the system's own (below
///    /usr, /bin, /sbin), which belong to the package manager even where root runs the program;
/// 3. $XDG_DATA_HOME/tunemeadow, or ~/.local/share/tunemeadow.
/// It is made where it is missing; that this failed shows at the first file in it.
[[nodiscard]] std::string ProgramFolder();

/// ProgramFolder of a program whose executable lies in that folder, given with a trailing
/// separator.
[[nodiscard]] std::string ProgramFolderFor(const std::string& executable_folder);

/// The folder of the running executable, with a trailing separator; empty if the system does not
/// tell.
[[nodiscard]] std::string ExecutableFolder();

/// The executable's name without ".exe". The settings file is named after it.
[[nodiscard]] std::string ExecutableBaseName();

/// Puts the catalogue and the demonstration track into a program folder that the program has not
/// run in yet: one without settings file and without backup. Where it has, a missing catalogue is
/// an accident that an empty one would only cover up. Files that are there are never touched; a
/// copy appears whole or not at all. The originals are looked for in ../share/tunemeadow, in
/// ../data, and beside the executable, as seen from its folder.
void ProvideShippedFiles(const std::string& folder = ProgramFolder(),
                         const std::string& executable_folder = ExecutableFolder());

}  // namespace tunemeadow
