// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/instance_lock.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>

#include "support/child_process.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

TEST(InstanceLock, IsHeldByOneOfEachFolderUntilItGoes) {
  const TempFolder folder, other;
  auto first = std::make_unique<InstanceLock>(folder.Path());
  InstanceLock second(folder.Path() + "/");
  EXPECT_TRUE(first->TryLock());
  EXPECT_TRUE(first->TryLock()) << "asked again, the holder still holds it";
  EXPECT_FALSE(second.TryLock());
  EXPECT_EQ(second.OwnerPid(), getpid());
  EXPECT_TRUE(InstanceLock(other.Path()).TryLock());
  first.reset();
  EXPECT_TRUE(second.TryLock());
}

TEST(InstanceLock, AKilledProcessLeavesNoLock) {
  const TempFolder folder;
  InstanceLock lock(folder.Path());
  WaitingChild child([&] { return lock.TryLock(); });
  EXPECT_FALSE(lock.TryLock());
  EXPECT_EQ(lock.OwnerPid(), child.Id());
  child.Kill();
  EXPECT_EQ(lock.OwnerPid(), child.Id()) << "the file still names the dead process";
  EXPECT_TRUE(lock.TryLock());
  EXPECT_EQ(lock.OwnerPid(), getpid());
}

TEST(InstanceLock, AFolderThatHoldsNoLockDoesNotKeepTheProgramFromStarting) {
  EXPECT_TRUE(InstanceLock("/proc/no such folder").TryLock());
}

}  // namespace
}  // namespace tunemeadow
