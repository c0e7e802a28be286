// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/program_folder.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <string_view>

#include "core/paths.h"
#include "core/text.h"
#include "files/durable_file.h"
#include "files/environment.h"
#include "files/file_facts.h"

namespace tunemeadow {
namespace {

std::string ExecutablePath() {
  std::string path(PATH_MAX, '\0');
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
  path.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
  // The kernel's mark for a program that was replaced by a newer build while it runs.
  constexpr std::string_view kReplaced = " (deleted)";
  if (path.ends_with(kReplaced) && !MyFileExists(path)) path.resize(path.size() - kReplaced.size());
  return path;
}

bool IsSystemFolder(std::string_view folder) noexcept {
  constexpr std::array<std::string_view, 3> kSystemFolders = {"/usr/", "/bin/", "/sbin/"};
  return std::any_of(kSystemFolders.begin(), kSystemFolders.end(),
                     [&](std::string_view system) { return folder.starts_with(system); });
}

bool MayMakeFilesIn(const std::string& folder) noexcept {
  return faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

std::string HomeFolder() {
  std::string home = EnvironmentText("HOME");
  if (!home.empty()) return home;
  const passwd* entry = getpwuid(getuid());
  return entry == nullptr ? "/" : entry->pw_dir;
}

std::string UserDataFolder() {
  // A relative path in this variable is to be ignored (XDG base directories).
  const std::string data_home = EnvironmentText("XDG_DATA_HOME");
  return data_home.starts_with('/') ? data_home : JoinPath(HomeFolder(), ".local/share");
}

std::string AbsolutePath(const std::string& path) {
  if (path.starts_with('/')) return path;
  std::string working(PATH_MAX, '\0');
  return getcwd(working.data(), working.size()) == nullptr ? path : JoinPath(working.c_str(), path);
}

/// Makes the folder and those above it; what is there stays.
void MakeFolders(const std::string& folder) {
  for (std::size_t end = folder.find('/', 1); end != std::string::npos;
       end = folder.find('/', end + 1)) {
    mkdir(folder.substr(0, end).c_str(), 0755);
  }
}

}  // namespace

std::string ExecutableFolder() { return std::string(FolderPart(ExecutablePath())); }

std::string ExecutableBaseName() {
  const std::string path = ExecutablePath();
  std::string name(FileNamePart(path));
  if (name.size() > 4 && EndsWithNoCase(name, ".exe")) name.resize(name.size() - 4);
  return name;
}

std::string ProgramFolderFor(const std::string& executable_folder) {
  const std::string chosen = EnvironmentText("TUNEMEADOW_FOLDER");
  std::string folder = executable_folder;
  if (!chosen.empty()) {
    folder = WithTrailingSeparator(AbsolutePath(chosen));
  } else if (folder.empty() || IsSystemFolder(folder) || !MayMakeFilesIn(folder)) {
    folder = WithTrailingSeparator(JoinPath(UserDataFolder(), "tunemeadow"));
  }
  MakeFolders(folder);
  return folder;
}

std::string ProgramFolder() { return ProgramFolderFor(ExecutableFolder()); }

void ProvideShippedFiles(const std::string& folder, const std::string& executable_folder) {
  if (MyFileExists(JoinPath(folder, ExecutableBaseName() + ".INI")) ||
      MyFileExists(JoinPath(folder, "mp3s.bak"))) {
    return;
  }
  for (const std::string name : {"mp3s.mdb", "monster.mp3"}) {
    for (const std::string place : {"../share/tunemeadow/", "../data/", ""}) {
      if (CopyFileIfMissing(JoinPath(executable_folder, place + name), JoinPath(folder, name)))
        break;
    }
  }
}

}  // namespace tunemeadow
