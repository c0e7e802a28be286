// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/file_facts.h"

#include <sys/stat.h>

#include "core/dates.h"

namespace tunemeadow {

bool MyFileExists(const std::string& path) noexcept {
  struct stat status {};
  return !path.empty() && stat(path.c_str(), &status) == 0;
}

bool IsDirectory(const std::string& path) noexcept {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string FileTimeText(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? DateTimeText(status.st_mtime) : std::string();
}

}  // namespace tunemeadow
