// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/drives.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

TEST(MountedDrives, TellsTheTypesOfWhatAPersonMaySee) {
  const TempFolder root;
  root.Write("sys/block/sdb/removable", "1\n");
  root.Write("sys/block/sda/removable", "0\n");
  root.Write("sys/block/mmcblk0/removable", "1\n");
  root.Write(
      "proc/self/mounts",
      "proc /proc proc rw 0 0\nsysfs /sys sysfs rw 0 0\ntmpfs /run tmpfs rw 0 0\n"
      "gvfsd-fuse /run/user/0/gvfs fuse.gvfsd-fuse rw 0 0\ncgroup2 /x cgroup2 rw 0 0\n"
      "/dev/sda2 / ext4 rw 0 0\n/dev/sda3 /home ext4 rw 0 0\ntmpfs /tmp tmpfs rw 0 0\n"
      "/dev/sdb1 /media/My\\040Stick\\134x vfat rw 0 0\n/dev/mmcblk0p1 /card udf rw 0 0\n"
      "host:/music /net nfs4 rw 0 0\n//host/share /home cifs rw 0 0\n"
      "me@host: /ssh fuse.sshfs rw 0 0\n/dev/sr0 /run/media/me/DVD udf ro 0 0\nshort line\n");
  std::string seen;
  for (const Drive& drive : MountedDrives(root.Path(""))) {
    seen.append(drive.root).append(" ").append(DriveTypeText(drive.type)).append("\n");
  }
  EXPECT_EQ(
      seen,
      "/ Fixed Drive\n/home/ Remote Drive\n/tmp/ RAM Disk\n/media/My Stick\\x/ Removable Drive\n"
      "/card/ Removable Drive\n/net/ Remote Drive\n/ssh/ Remote Drive\n/run/media/me/DVD/ "
      "CD-ROM\n");
  EXPECT_EQ(FirstOpticalMount(root.Path("")), "/run/media/me/DVD/");
  std::string for_discs;
  SystemDrives drives(root.Path(""));
  for (const Drive& drive : DrivesForDiscs(drives)) for_discs += drive.root + " ";
  EXPECT_EQ(for_discs, "/home/ /tmp/ /media/My Stick\\x/ /card/ /net/ /ssh/ /run/media/me/DVD/ ");
}

TEST(FirstOpticalMount, FallsBackToTheFolderWhereDiscsUsuallyGo) {
  const TempFolder root;
  const std::string system = root.Path("");
  root.Write("proc/self/mounts", "/dev/sda2 / ext4 rw 0 0\n");
  std::filesystem::create_directories(root.Path("media/cdrom0"));
  EXPECT_EQ(FirstOpticalMount(system), "") << "a folder without a drive";
  root.Write("proc/sys/dev/cdrom/info", "CD-ROM information\n\ndrive name:\t\t\ndrive speed:\n");
  root.Write("dev/sr0", "");
  EXPECT_EQ(FirstOpticalMount(system), "") << "the kernel knows better than /dev";
  root.Write("proc/sys/dev/cdrom/info", "CD-ROM information\n\ndrive name:\t\tsr1\tsr0\n");
  EXPECT_EQ(FirstOpticalMount(system), "/media/cdrom0/");
  root.Write("etc/fstab",
             "# /dev/sr0 /comment udf\n/dev/sr0 /mnt/missing udf ro 0 0\n"
             "/dev/cdrom\t/mnt/my\\040disc iso9660 ro,noauto 0 0\n");
  std::filesystem::create_directories(root.Path("mnt/my disc"));
  EXPECT_EQ(FirstOpticalMount(system), "/mnt/my disc/");
  SystemDrives drives(system);
  ASSERT_EQ(DrivesForDiscs(drives).size(), 1U) << "no disc is in it";
  EXPECT_EQ(DrivesForDiscs(drives)[0].root, "/mnt/my disc/");
  root.Write("proc/self/mounts", "/dev/loop3 /image iso9660 ro 0 0\n/dev/sr0 /late udf ro 0 0\n");
  EXPECT_EQ(FirstOpticalMount(system), "/image/");
  EXPECT_EQ(FirstOpticalMount(root.Path("no such machine/")), "");
}

}  // namespace
}  // namespace tunemeadow
