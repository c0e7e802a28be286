// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/program_path.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "core/paths.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

bool IsProgram(const std::string& path) noexcept {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
}

}  // namespace

std::string ProgramPath(const std::string& name) {
  if (name.empty()) return {};
  if (name.find('/') != std::string::npos) return IsProgram(name) ? name : std::string();
  const char* variable = std::getenv("PATH");
  const std::string folders = variable == nullptr ? "/usr/local/bin:/usr/bin:/bin" : variable;
  for (const std::string_view folder : Split(folders, ':')) {
    // An empty entry stands for the working folder, which is no place to find a player in.
    std::string path = JoinPath(folder, name);
    if (!folder.empty() && IsProgram(path)) return path;
  }
  return {};
}

}  // namespace tunemeadow
