// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/trash_gio.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "support/child_process.h"
#include "support/scoped_environment.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

/// A person whose home has had no trash so far.
class GioTrashTest : public testing::Test {
 protected:
  /// "moved", "none" or "failed", and whether there is a reason.
  static std::string Answer(const std::string& path) {
    return InChildProcess([&] {
      constexpr const char* kOutcomes[] = {"moved", "none", "failed"};
      const TrashAnswer answer = GioTrash().MoveToTrash(path);
      return kOutcomes[static_cast<int>(answer.outcome)] +
             std::string(answer.reason.empty() ? "" : ", reason");
    });
  }

  const TempFolder folder_;

 private:
  const ScopedEnvironment home_{"HOME", folder_.Path().c_str()};
  const ScopedEnvironment data_{"XDG_DATA_HOME", folder_.Path("new/share").c_str()};
};

TEST_F(GioTrashTest, TakesNamesOfAnyBytesAndKeepsThem) {
  for (const std::string name : {"a.mp3", "b\xE4 \xFF 100%.mp3", "c\nd.mp3"}) {
    const std::string path = folder_.Write("music/" + name, name);
    EXPECT_EQ(Answer(path), "moved") << name;
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ(folder_.Read("new/share/Trash/files/" + name), name);
    EXPECT_TRUE(
        std::filesystem::exists(folder_.Path("new/share/Trash/info/" + name + ".trashinfo")));
  }
  EXPECT_EQ(Answer(folder_.Write("music/a.mp3", "second")), "moved");
  EXPECT_EQ(folder_.Read("new/share/Trash/files/a.mp3"), "a.mp3") << "never overwritten";
}

TEST_F(GioTrashTest, MovesALinkAndNotWhatItLeadsTo) {
  const std::string file = folder_.Write("file", "x");
  std::filesystem::create_symlink(file, folder_.Path("link"));
  EXPECT_EQ(Answer(folder_.Path("link")), "moved");
  EXPECT_TRUE(std::filesystem::is_symlink(folder_.Path("new/share/Trash/files/link")));
  EXPECT_EQ(folder_.Read("file"), "x");
}

TEST_F(GioTrashTest, TellsWhereThereIsNoTrashAndWhyAFileStays) {
  EXPECT_EQ(Answer(folder_.Path("missing")), "failed, reason");
  const std::string memory = "/dev/shm/tunemeadow-trash-" + std::to_string(getpid());
  struct stat here {
  }, there{};
  stat(folder_.Path().c_str(), &here);
  if (stat("/dev/shm", &there) != 0 || here.st_dev == there.st_dev) GTEST_SKIP() << "one volume";
  std::filesystem::copy_file(folder_.Write("x", "x"), memory);
  EXPECT_EQ(Answer(memory), "none, reason");
  EXPECT_TRUE(std::filesystem::remove(memory)) << "it was left alone";
}

}  // namespace
}  // namespace tunemeadow
