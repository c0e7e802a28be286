// SPDX-License-Identifier: GPL-3.0-or-later
#include "tracks/cd_archive_path.h"

#include "core/paths.h"

namespace tunemeadow {

bool bCheckCDArchive(std::string_view path, const Preferences& preferences) {
  return !preferences.txtCDTag.empty() && !preferences.lblConfigCDROM.empty() &&
         path.starts_with(preferences.txtCDTag);
}

void CheckCDArchive(std::string& path, const Preferences& preferences) {
  if (!bCheckCDArchive(path, preferences)) return;
  const std::string& drive = preferences.lblConfigCDROM;
  const std::size_t separator = path.find(SeparatorOf(path));
  if (separator == std::string::npos) return;
  // A drive without a separator of its own, "D:", takes that of the location.
  const bool has_own = drive.find_first_of("/\\") != std::string::npos;
  const char own = has_own ? SeparatorOf(drive) : path[separator];
  path.replace(0, separator + 1, drive.back() == own ? drive : drive + own);
}

}  // namespace tunemeadow
