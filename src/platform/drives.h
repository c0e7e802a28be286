// SPDX-License-Identifier: GPL-3.0-or-later
// Mounted file systems as drives. A drive's root ends in "/". Paths are bytes.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tunemeadow {

enum class DriveType { kNone, kRemovable, kFixed, kRemote, kOptical, kMemory };

/// "Drive Doesn't Exist", "Removable Drive", "Fixed Drive", "Remote Drive", "CD-ROM", "RAM Disk".
[[nodiscard]] std::string_view DriveTypeText(DriveType type) noexcept;

/// One mounted file system that may hold a person's files; the kernel's own ones are none.
struct Drive {
  std::string root;  ///< with a trailing "/"
  DriveType type = DriveType::kNone;
};

/// All drives in the order in which they were mounted; of those mounted over each other the one
/// that can be seen. `system_root`: where the machine's files begin, with its trailing "/".
[[nodiscard]] std::vector<Drive> MountedDrives(const std::string& system_root = "/");

/// A drive, or a folder chosen as one, as lblConfigCDROM holds it: without a separator at its end,
/// for the locations on its discs bring their own. "/" itself stays.
[[nodiscard]] std::string StoredDrive(std::string_view folder);

/// Root of the first mounted disc; otherwise the folder where the first optical drive's discs are
/// usually mounted (as fstab says, or /media/cdrom0, or /media/cdrom, if that folder exists);
/// otherwise empty.
[[nodiscard]] std::string FirstOpticalMount(const std::string& system_root = "/");

/// The drives that a command may ask for.
class Drives {
 public:
  virtual ~Drives() = default;
  [[nodiscard]] virtual std::vector<Drive> Mounted() = 0;  ///< as MountedDrives
  [[nodiscard]] virtual std::string FirstOptical() = 0;    ///< as FirstOpticalMount
};

/// The drives that may read burnt discs, for a person to choose from: all that are mounted but the
/// fixed ones, and the first optical one where no disc is in it.
[[nodiscard]] std::vector<Drive> DrivesForDiscs(Drives& source);

/// Those of this machine.
class SystemDrives : public Drives {
 public:
  explicit SystemDrives(std::string system_root = "/") : system_root_(std::move(system_root)) {}
  [[nodiscard]] std::vector<Drive> Mounted() override { return MountedDrives(system_root_); }
  [[nodiscard]] std::string FirstOptical() override { return FirstOpticalMount(system_root_); }

 private:
  std::string system_root_;
};

}  // namespace tunemeadow
