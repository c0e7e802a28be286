// SPDX-License-Identifier: GPL-3.0-or-later
// One running program for each program folder.
#pragma once

#include <string>

namespace tunemeadow {

/// A lock on `tunemeadow.lock` in a folder, held until the object goes. The system holds it on
/// behalf of the process, so one that crashed or was killed leaves no lock, whatever the file still
/// says.
class InstanceLock {
 public:
  explicit InstanceLock(const std::string& folder);
  ~InstanceLock();
  InstanceLock(const InstanceLock&) = delete;
  InstanceLock& operator=(const InstanceLock&) = delete;

  /// False if another instance holds the lock, in this process or another. True if it is held
  /// by this object now, or where the folder is such that nobody can hold one (it cannot be
  /// written, or its file system knows no locks): not to start at all would be worse.
  [[nodiscard]] bool TryLock();

  /// Process id that the holder wrote into the file; 0 where it holds none.
  [[nodiscard]] long OwnerPid() const;

 private:
  std::string path_;
  int descriptor_ = -1;
};

}  // namespace tunemeadow
