// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/drives.h"

#include <mntent.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

#include "core/paths.h"
#include "core/text.h"
#include "files/durable_file.h"
#include "files/file_facts.h"

namespace tunemeadow {
namespace {

template <std::size_t N>
bool IsOneOf(std::string_view text, const std::array<std::string_view, N>& texts) noexcept {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

/// One line of a table of file systems.
struct MountEntry {
  std::string device;  ///< as the table names it: "/dev/sr0", "tmpfs", "host:/export"
  std::string folder;
  std::string kind;  ///< file system: "iso9660", "ext4", "nfs4"
};

/// The entries of such a table (fstab(5), /proc/self/mounts); none where it can not be read.
std::vector<MountEntry> ReadMounts(const std::string& path) {
  constexpr int kLongestLine = 8192;  // what goes over it is a line's options
  std::vector<MountEntry> mounts;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> table(setmntent(path.c_str(), "r"),
                                                              &endmntent);
  if (table == nullptr) return mounts;
  std::array<char, kLongestLine> line{};
  mntent entry{};
  while (getmntent_r(table.get(), &entry, line.data(), kLongestLine) != nullptr) {
    if (*entry.mnt_type == '\0') continue;
    mounts.push_back({entry.mnt_fsname, entry.mnt_dir, entry.mnt_type});
  }
  return mounts;
}

bool IsOpticalDevice(std::string_view device) noexcept {
  return device.starts_with("/dev/sr") || device.starts_with("/dev/scd") ||
         IsOneOf<3>(device, {"/dev/cdrom", "/dev/dvd", "/dev/dvdrw"});
}

/// The kernel says of the whole disk that its medium can be taken out, not of its partitions.
bool IsRemovable(std::string_view device, const std::string& system_root) {
  constexpr std::string_view kDevices = "/dev/";
  if (!device.starts_with(kDevices)) return false;
  const std::string name(device.substr(kDevices.size()));
  const std::size_t digits = name.find_last_not_of("0123456789");
  std::string disk = name.substr(0, digits == std::string::npos ? 0 : digits + 1);
  if (name.starts_with("mmcblk") && disk.ends_with('p')) disk.pop_back();
  const std::string flag =
      ReadWholeFile(system_root + "sys/block/" + disk + "/removable").value_or("0");
  return flag.starts_with('1');
}

DriveType TypeOfMount(const MountEntry& mount, const std::string& system_root) {
  constexpr std::array<std::string_view, 12> kRemoteKinds = {
      "nfs",  "nfs4", "cifs",  "smb3",       "smbfs",      "9p",
      "ceph", "afs",  "ncpfs", "fuse.sshfs", "fuse.davfs", "fuse.glusterfs"};
  // A disc image is mounted from a loop device; UDF is also what some cards and disks carry.
  if (mount.kind == "iso9660" || (mount.kind == "udf" && IsOpticalDevice(mount.device))) {
    return DriveType::kOptical;
  }
  if (IsOneOf(mount.kind, kRemoteKinds)) return DriveType::kRemote;
  if (mount.kind == "tmpfs" || mount.kind == "ramfs" || mount.device.starts_with("/dev/ram") ||
      mount.device.starts_with("/dev/zram")) {
    return DriveType::kMemory;
  }
  return IsRemovable(mount.device, system_root) ? DriveType::kRemovable : DriveType::kFixed;
}

/// File systems that show the kernel's state, and folders that belong to the machine.
bool IsOfTheSystem(const MountEntry& mount) noexcept {
  constexpr std::array<std::string_view, 4> kSystemFolders = {"/proc", "/sys", "/dev", "/run"};
  const bool is_backed =
      mount.device.starts_with('/') || mount.device.find(':') != std::string::npos;
  const bool is_shared = mount.kind == "tmpfs" || mount.kind == "ramfs" || mount.kind == "9p" ||
                         mount.kind == "overlay" || mount.kind == "zfs" ||
                         mount.kind == "virtiofs" || mount.kind == "cifs" ||
                         mount.kind.starts_with("fuse.");
  if (mount.folder.starts_with("/run/media/")) return false;
  return (!is_backed && !is_shared) ||
         std::any_of(kSystemFolders.begin(), kSystemFolders.end(), [&](std::string_view folder) {
           return mount.folder == folder || mount.folder.starts_with(std::string(folder) + "/");
         });
}

bool HasOpticalDevice(const std::string& system_root) {
  const std::string info = ReadWholeFile(system_root + "proc/sys/dev/cdrom/info").value_or("");
  for (std::string_view line : Split(info, '\n')) {
    constexpr std::string_view kNames = "drive name:";
    if (!line.starts_with(kNames)) continue;
    line.remove_prefix(kNames.size());
    return line.find_first_not_of(" \t") != std::string_view::npos;
  }
  return MyFileExists(system_root + "dev/sr0");
}

/// Where discs are usually mounted, without a trailing "/"; empty if no such folder exists.
std::string UsualOpticalFolder(const std::string& system_root) {
  std::vector<std::string> folders;
  for (const MountEntry& entry : ReadMounts(system_root + "etc/fstab")) {
    if (IsOpticalDevice(entry.device)) folders.push_back(entry.folder);
  }
  folders.insert(folders.end(), {"/media/cdrom0", "/media/cdrom"});
  for (std::string& folder : folders) {
    if (folder.starts_with('/') && IsDirectory(system_root + folder.substr(1))) return folder;
  }
  return {};
}

}  // namespace

std::string_view DriveTypeText(DriveType type) noexcept {
  switch (type) {
    case DriveType::kRemovable:
      return "Removable Drive";
    case DriveType::kFixed:
      return "Fixed Drive";
    case DriveType::kRemote:
      return "Remote Drive";
    case DriveType::kOptical:
      return "CD-ROM";
    case DriveType::kMemory:
      return "RAM Disk";
    case DriveType::kNone:
      break;
  }
  return "Drive Doesn't Exist";
}

std::vector<Drive> MountedDrives(const std::string& system_root) {
  std::vector<Drive> drives;
  for (const MountEntry& mount : ReadMounts(system_root + "proc/self/mounts")) {
    if (IsOfTheSystem(mount)) continue;
    const Drive drive{WithTrailingSeparator(mount.folder), TypeOfMount(mount, system_root)};
    const auto covered = std::find_if(drives.begin(), drives.end(),
                                      [&](const Drive& d) { return d.root == drive.root; });
    if (covered != drives.end()) {
      *covered = drive;
    } else {
      drives.push_back(drive);
    }
  }
  return drives;
}

std::vector<Drive> DrivesForDiscs(Drives& source) {
  std::vector<Drive> drives = source.Mounted();
  std::erase_if(drives, [](const Drive& drive) { return drive.type == DriveType::kFixed; });
  const std::string optical = source.FirstOptical();
  const bool listed = std::any_of(drives.begin(), drives.end(),
                                  [&](const Drive& drive) { return drive.root == optical; });
  if (!optical.empty() && !listed) drives.push_back({optical, DriveType::kOptical});
  return drives;
}

std::string StoredDrive(std::string_view folder) {
  while (folder.size() > 1 && (folder.ends_with('/') || folder.ends_with('\\'))) {
    folder.remove_suffix(1);
  }
  return std::string(folder);
}

std::string FirstOpticalMount(const std::string& system_root) {
  for (const Drive& drive : MountedDrives(system_root)) {
    if (drive.type == DriveType::kOptical) return drive.root;
  }
  if (!HasOpticalDevice(system_root)) return {};
  return WithTrailingSeparator(UsualOpticalFolder(system_root));
}

}  // namespace tunemeadow
