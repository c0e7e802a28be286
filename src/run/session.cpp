// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/session.h"

#include "core/paths.h"

namespace tunemeadow {

Session::Session(const std::string& folder, const std::string& executable)
    : program_folder(WithTrailingSeparator(folder)),
      ini(JoinPath(program_folder, executable + ".INI")),
      journal(program_folder),
      help_file(JoinPath(program_folder, "Tunemeadow.chm")) {}

}  // namespace tunemeadow
