// SPDX-License-Identifier: GPL-3.0-or-later
#include "kill/full_disk.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include "core/descriptor.h"

namespace tunemeadow::kill {

bool MountSmallDisk(const std::string& folder, std::int64_t bytes) {
  // Who is not root can be the root of name spaces of his own.
  if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return false;
  const std::string options = "size=" + std::to_string(bytes);
  return mount("tmpfs", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

bool FillDisk(const std::string& path, std::int64_t room) {
  const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600));
  struct statvfs disk {};
  if (!file.IsOpen() || fstatvfs(file.get(), &disk) != 0) return false;
  const auto free = static_cast<std::int64_t>(disk.f_bfree * disk.f_frsize);
  return free <= room || posix_fallocate(file.get(), 0, free - room) == 0;
}

}  // namespace tunemeadow::kill
