// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/temp_list.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/paths.h"
#include "files/descriptor.h"
#include "files/environment.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kFolderBuffer = 255;
constexpr mode_t kOwnerOnly = S_IRWXU;

/// A folder, no link to one, that nobody but this user can enter.
bool IsPrivateFolder(const std::string& folder) {
  struct stat status {};
  return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == geteuid() && (status.st_mode & ALLPERMS) == kOwnerOnly;
}

/// Empty if none can be made.
std::string PrivateFolder(const std::string& place) {
  const std::string base = JoinPath(place, "tunemeadow-");
  std::string folder = base + std::to_string(geteuid());
  if (mkdir(folder.c_str(), kOwnerOnly) == 0 || IsPrivateFolder(folder)) return folder;
  // Somebody else was there first.
  folder = base + "XXXXXX";
  return mkdtemp(folder.data()) != nullptr ? folder : std::string();
}

}  // namespace

std::string GetTempFolder() {
  std::string folder = EnvironmentText("TMPDIR");
  return folder.starts_with('/') && folder.size() < kFolderBuffer ? folder : "/tmp";
}

std::string GetCacheFolder() {
  std::string folder = EnvironmentText("XDG_CACHE_HOME");
  if (!folder.starts_with('/')) folder = JoinPath(EnvironmentText("HOME"), ".cache");
  mkdir(folder.c_str(), kOwnerOnly);
  return folder;
}

std::optional<std::string> WriteTempList(const std::string& name, std::string_view bytes,
                                         const std::string& base) {
  const std::string folder = PrivateFolder(base);
  if (folder.empty()) return std::nullopt;
  std::string path = JoinPath(folder, name);
  unlink(path.c_str());
  Descriptor file(
      open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
  if (!file.IsOpen() || !WriteAllAt(file.get(), bytes, 0) || !file.Close()) return std::nullopt;
  return path;
}

}  // namespace tunemeadow
