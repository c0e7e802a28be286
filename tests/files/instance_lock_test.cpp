// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/instance_lock.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>

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
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    InstanceLock lock(folder.Path());
    const char held = lock.TryLock() ? 'y' : 'n';
    if (write(ready[1], &held, 1) == 1) pause();
    _exit(1);
  }
  char held = 0;
  ASSERT_EQ(read(ready[0], &held, 1), 1);
  close(ready[0]);
  close(ready[1]);
  ASSERT_EQ(held, 'y');
  InstanceLock lock(folder.Path());
  EXPECT_FALSE(lock.TryLock());
  EXPECT_EQ(lock.OwnerPid(), child);
  kill(child, SIGKILL);
  ASSERT_EQ(waitpid(child, nullptr, 0), child);
  EXPECT_EQ(lock.OwnerPid(), child) << "the file still names the dead process";
  EXPECT_TRUE(lock.TryLock());
  EXPECT_EQ(lock.OwnerPid(), getpid());
}

TEST(InstanceLock, AFolderThatHoldsNoLockDoesNotKeepTheProgramFromStarting) {
  EXPECT_TRUE(InstanceLock("/proc/no such folder").TryLock());
}

}  // namespace
}  // namespace tunemeadow
