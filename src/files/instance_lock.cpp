// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/instance_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "core/numbers.h"
#include "core/paths.h"
#include "files/durable_file.h"

namespace tunemeadow {

InstanceLock::InstanceLock(const std::string& folder)
    : path_(JoinPath(folder, "tunemeadow.lock")) {}

InstanceLock::~InstanceLock() {
  if (descriptor_ < 0) return;
  // The file stays: were it removed, one instance could lock the old file while another locks a
  // new.
  if (ftruncate(descriptor_, 0) != 0) errno = 0;
  close(descriptor_);
}

bool InstanceLock::TryLock() {
  if (descriptor_ >= 0) return true;
  constexpr int kFlags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
  int descriptor = open(path_.c_str(), O_RDWR | O_CREAT | kFlags, 0644);
  // A lock file that another user made can be locked all the same.
  if (descriptor < 0) descriptor = open(path_.c_str(), O_RDONLY | kFlags);
  if (descriptor < 0) return true;
  if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    const bool is_held = errno == EWOULDBLOCK;
    close(descriptor);
    return !is_held;
  }
  descriptor_ = descriptor;
  const std::string pid = std::to_string(getpid()) + "\n";
  // Only a person reads the number; a disk too full for it is no reason not to start.
  if (ftruncate(descriptor_, 0) != 0 || pwrite(descriptor_, pid.data(), pid.size(), 0) < 0)
    errno = 0;
  return true;
}

long InstanceLock::OwnerPid() const {
  const std::string text = ReadWholeFile(path_, 64).value_or(std::string());
  return static_cast<long>(ParseWhole(text.substr(0, text.find('\n'))).value_or(0));
}

}  // namespace tunemeadow
