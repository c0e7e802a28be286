// SPDX-License-Identifier: GPL-3.0-or-later
// Locations of tracks that live on burnt discs. Such a location begins with the tag of the settings
// and a disc number where another one has its drive: "MP3-CD01/Rock/a.mp3". So it stays valid
// whichever drive reads the disc.
#pragma once

#include <string>
#include <string_view>

#include "run/preferences.h"

namespace tunemeadow {

/// Whether the location is archived: both txtCDTag and lblConfigCDROM are set, and the path begins
/// with the tag, letter case included.
[[nodiscard]] bool bCheckCDArchive(std::string_view path, const Preferences& preferences);

/// Makes the path of an archived location one that can be opened: what stands before its first
/// separator becomes lblConfigCDROM, with one separator after it. Any other path stays as it is,
/// also an archived one without a separator. Whether the disc lies in the drive is not asked.
void CheckCDArchive(std::string& path, const Preferences& preferences);

}  // namespace tunemeadow
