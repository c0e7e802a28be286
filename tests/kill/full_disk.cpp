// SPDX-License-Identifier: GPL-3.0-or-later
#include "kill/full_disk.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <string_view>

#include "files/descriptor.h"

namespace tunemeadow::kill {
namespace {

bool WriteTo(const char* path, std::string_view text) {
  const Descriptor file(open(path, O_WRONLY));
  return file.IsOpen() && write(file.get(), text.data(), text.size()) > 0;
}

/// Who is not root can be the root of name spaces of his own, where the system lets him.
bool BecomeRootOfOwn() {
  const std::string user = "0 " + std::to_string(geteuid()) + " 1";
  const std::string group = "0 " + std::to_string(getegid()) + " 1";
  if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  return WriteTo("/proc/self/uid_map", user) && WriteTo("/proc/self/setgroups", "deny") &&
         WriteTo("/proc/self/gid_map", group);
}

}  // namespace

bool MountSmallDisk(const std::string& folder, std::int64_t bytes) {
  if (unshare(CLONE_NEWNS) != 0 && !BecomeRootOfOwn()) return false;
  if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return false;
  const std::string options = "size=" + std::to_string(bytes);
  return mount("tmpfs", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

void UnmountSmallDisk(const std::string& folder) { umount2(folder.c_str(), MNT_DETACH); }

bool FillDisk(const std::string& path, std::int64_t room) {
  const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600));
  struct statvfs disk {};
  if (!file.IsOpen() || fstatvfs(file.get(), &disk) != 0) return false;
  const auto free = static_cast<std::int64_t>(disk.f_bfree * disk.f_frsize);
  return free <= room || posix_fallocate(file.get(), 0, free - room) == 0;
}

}  // namespace tunemeadow::kill
