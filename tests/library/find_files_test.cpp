// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/find_files.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <filesystem>

#include "support/plain_user.h"
#include "support/scripted_interaction.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FindFiles : public testing::Test {
 protected:
  /// The paths found in `folder`, without the temporary folder's own path.
  std::vector<std::string> Find(const std::string& folder) {
    std::vector<std::string> list;
    left_out_ = FindFilesRecursive(session_, interaction_, folder, options_, list);
    for (std::string& path : list) {
      if (path.starts_with(temp_.Path() + "/")) path.erase(0, temp_.Path().size() + 1);
    }
    return list;
  }
  std::vector<std::string> Find() { return Find(temp_.Path()); }

  TempFolder temp_, program_;
  Session session_{program_.Path(), "tunemeadow"};
  ScriptedInteraction interaction_;
  LeftOut left_out_;
  WalkOptions options_{.extensions = "mp3;mp2;mpeg;;x", .recursive = true};
};

TEST_F(FindFiles, TakesExtensionsOfThreeLettersInTheOrderOfNameBytes) {
  for (const char* name : {"b.mp3", "B.MP3", "a/z.Mp2", "a-/x.mp3", "c.mpeg", "d.x", "e.txt", "mp3",
                           "xmp3", ".mp3", "mpeg.mp3 ", "a/b/c.mp3", "dir.mp3/in.mp3"}) {
    temp_.Write(name);
  }
  EXPECT_THAT(Find(), ElementsAre(".mp3", "B.MP3", "a/b/c.mp3", "a/z.Mp2", "a-/x.mp3", "b.mp3",
                                  "dir.mp3/in.mp3"));
  options_.recursive = false;
  EXPECT_THAT(Find(), ElementsAre(".mp3", "B.MP3", "b.mp3"));
}

TEST_F(FindFiles, TestsFoldersButNotFilesForBeingHidden) {
  for (const char* name : {".cache/a.mp3", "open/.b.mp3", "open/..odd/c.mp3"}) temp_.Write(name);
  EXPECT_THAT(Find(), ElementsAre("open/.b.mp3"));
  EXPECT_THAT(Find(temp_.Path(".cache")), ElementsAre(".cache/a.mp3"))
      << "it was asked for by name";
  options_.read_hidden = true;
  EXPECT_THAT(Find(), ElementsAre(".cache/a.mp3", "open/..odd/c.mp3", "open/.b.mp3"));
}

TEST_F(FindFiles, KeepsEveryByteOfANameAndAddsASeparatorOnlyWhereNoneIs) {
  temp_.Write("AC\\DC/\xE9t\xE9 \xFF\n'\".mp3");
  temp_.Write("AC\\DC/\xC3\xA9.mp3");
  EXPECT_THAT(Find(temp_.Path("AC\\DC")),
              ElementsAre("AC\\DC/\xC3\xA9.mp3", "AC\\DC/\xE9t\xE9 \xFF\n'\".mp3"));
  EXPECT_EQ(Find(temp_.Path("AC\\DC/")).size(), 2U);
}

TEST_F(FindFiles, TakesRegularFilesAndEntersEachFolderOnceWhateverLinksSay) {
  namespace fs = std::filesystem;
  temp_.Write("real/song.mp3");
  fs::create_directory_symlink("..", temp_.Path("real/up"));
  fs::create_directory_symlink("real", temp_.Path("again"));
  fs::create_symlink("real/song.mp3", temp_.Path("link.mp3"));
  fs::create_symlink("nowhere", temp_.Path("dangling.mp3"));
  fs::create_symlink("/dev/null", temp_.Path("null.mp3"));
  fs::create_directory_symlink("/proc", temp_.Path("system"));
  ASSERT_EQ(mkfifo(temp_.Path("pipe.mp3").c_str(), 0600), 0);
  EXPECT_THAT(Find(), ElementsAre("again/song.mp3", "link.mp3"));
}

TEST_F(FindFiles, NeverReadsWhatTheKernelMakesUp) {
  options_.extensions = "rom";
  EXPECT_THAT(Find("/proc"), IsEmpty());
  EXPECT_THAT(Find("/sys"), IsEmpty());
  EXPECT_EQ(interaction_.yields, 2U) << "no folder in them was entered";
}

TEST_F(FindFiles, PassesOverFoldersThatVanishOrMayNotBeRead) {
  for (const char* name : {"a/a.mp3", "gone/b.mp3", "locked/c.mp3", "z/d.mp3"}) temp_.Write(name);
  std::filesystem::permissions(temp_.Path("locked"), std::filesystem::perms::none);
  std::filesystem::permissions(temp_.Path("gone"), std::filesystem::perms::all);
  options_.statusMode = StatusMode::kMonitor;
  options_.show_in_monitor = [&](const std::string& folder) {
    if (folder == temp_.Path("gone/")) std::filesystem::remove_all(folder);
  };
  {
    const ScopedPlainUser user(temp_.Path());
    EXPECT_THAT(Find(), ElementsAre("a/a.mp3", "z/d.mp3"));
  }
  EXPECT_EQ(left_out_.unreadable_folders, 1);
  std::filesystem::permissions(temp_.Path("locked"), std::filesystem::perms::owner_all);
  EXPECT_THAT(Find(temp_.Path("no such folder")), IsEmpty());
  EXPECT_THAT(Find("C:\\Music\\"), IsEmpty());
}

/// Makes `depth` folders of a long name in one another, with two files in each.
bool MakeDeepTree(const std::string& folder, int depth) {
  const std::string name(200, 'd');
  int at = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
  for (int i = 0; i < depth && at >= 0; ++i) {
    if (mkdirat(at, name.c_str(), 0700) != 0) return false;
    const int next = openat(at, name.c_str(), O_RDONLY | O_DIRECTORY);
    close(at);
    at = next;
    for (const std::string& file : {std::string("a.mp3"), std::string(150, 'b') + ".mp3"}) {
      if (mknodat(at, file.c_str(), S_IFREG | 0600, 0) != 0) return false;
    }
  }
  return at >= 0 && close(at) == 0;
}

TEST_F(FindFiles, GoesAsDeepAsAPathCanTell) {
  ASSERT_TRUE(MakeDeepTree(temp_.Path(), 30));
  std::vector<std::string> list;
  FindFilesRecursive(session_, interaction_, temp_.Path(), options_, list);
  const std::size_t room = PATH_MAX - 1 - temp_.Path("").size();
  EXPECT_EQ(list.size(), (room - 5) / 201 + (room - 154) / 201);
  for (const std::string& path : list) EXPECT_EQ(access(path.c_str(), R_OK), 0) << path.size();
}

TEST_F(FindFiles, ShowsWhereItIsAndStopsAtACancel) {
  for (const char* name : {"a/1.mp3", "a/2.mp3", "b/3.mp3", "c/4.mp3"}) temp_.Write(name);
  options_.statusMode = StatusMode::kImport;
  interaction_.on_yield = [&](std::size_t n) { session_.CancelRequested = n == 4; };
  EXPECT_THAT(Find(), ElementsAre("a/1.mp3", "a/2.mp3", "b/3.mp3"));
  EXPECT_THAT(interaction_.statuses, ElementsAre(temp_.Path() + "/", temp_.Path("a/"),
                                                 temp_.Path("b/"), temp_.Path("c/")));
  EXPECT_THAT(interaction_.loading_lines, ElementsAre("Found: 0 Files.", "Found: 0 Files.",
                                                      "Found: 2 Files.", "Found: 3 Files."));
  interaction_.loading_shown = false;
}

TEST_F(FindFiles, ShowsNothingWhereItIsSilentAndAppendsToTheList) {
  temp_.Write("a.mp3");
  std::vector<std::string> list = {"before.mp3"};
  FindFilesRecursive(session_, interaction_, temp_.Path(), options_, list);
  EXPECT_THAT(list, ElementsAre("before.mp3", temp_.Path("a.mp3")));
  EXPECT_THAT(interaction_.statuses, IsEmpty());
  EXPECT_THAT(interaction_.loading_lines, IsEmpty());
}

TEST(LeftOutText, NamesTheKindsOfSoundFirstAndCountsTheRest) {
  const struct {
    LeftOut left_out;
    const char* text;
  } cases[] = {
      {{}, ""},
      {{1, {{"ogg", 12}}}, "1 folder could not be read; left out: ogg 12."},
      {{2, {}}, "2 folders could not be read."},
      {{0, {{"", 3}, {"jpg", 90}, {"wav", 1}, {"flac", 2}, {"txt", 90}}},
       "Left out: flac 2, wav 1, jpg 90, txt 90, others 3."},
      {{0, {{"a", 1}, {"b", 2}, {"c", 3}, {"d", 4}, {"e", 5}, {"f", 6}, {"g", 7}, {"ogg", 1}}},
       "Left out: ogg 1, g 7, f 6, e 5, d 4, c 3, others 3."},
  };
  for (const auto& c : cases) EXPECT_EQ(LeftOutText(c.left_out), c.text);
}

}  // namespace
}  // namespace tunemeadow
