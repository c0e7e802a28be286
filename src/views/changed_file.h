// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "views/workbench.h"

namespace tunemeadow {

/// The status line says so where the file of the row has another time stamp than the catalogue
/// knows of: another program has changed it since it was read, and a save would write the
/// catalogue's old texts over its tags. A row without such a file takes that sentence away again.
void TellChangedFile(Workbench& bench, std::int64_t uid, const std::string& path);

}  // namespace tunemeadow
