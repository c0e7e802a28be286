// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop_player_finder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "support/child_process.h"
#include "support/scoped_environment.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

/// A desktop of its own, with programs that can be found.
class DesktopPlayerFinderTest : public testing::Test {
 protected:
  void Program(const std::string& name) {
    ASSERT_EQ(chmod(folder_.Write(name, "#!/bin/sh\n").c_str(), 0755), 0);
  }
  void Entry(const std::string& name, const std::string& lines) {
    folder_.Write(name, "[Desktop Entry]\nType=Application\nMimeType=audio/mpeg;\n" + lines);
  }
  void List(const std::string& name, const std::string& text) { folder_.Write(name, text); }
  /// The words of the program's entry, in brackets; those of the files and codes as they are there.
  static std::string Words(const std::string& program) {
    return InChildProcess([&] {
      const EntryWords words = DesktopPlayerFinder().WordsOf(program);
      std::string text;
      for (const std::string& word : words.program) text += "[" + word + "]";
      for (const std::string& word : words.arguments) text += "<" + word + ">";
      return text;
    });
  }
  static std::string Found() {
    return InChildProcess([] { return DesktopPlayerFinder().AssociatedCommand(); });
  }

  const TempFolder folder_;

 private:
  const ScopedEnvironment home_{"HOME", folder_.Path("home").c_str()};
  const ScopedEnvironment config_{"XDG_CONFIG_HOME", nullptr};
  const ScopedEnvironment config_dirs_{"XDG_CONFIG_DIRS", folder_.Path("etc").c_str()};
  const ScopedEnvironment data_{"XDG_DATA_HOME", nullptr};
  const ScopedEnvironment data_dirs_{"XDG_DATA_DIRS", folder_.Path("share").c_str()};
  const ScopedEnvironment desktop_{"XDG_CURRENT_DESKTOP", "Meadow:GNOME"};
  const ScopedEnvironment path_{"PATH",
                                (folder_.Path("empty") + ":" + folder_.Path("bin")).c_str()};
};

TEST_F(DesktopPlayerFinderTest, FindsNothingWhereNothingIsInstalled) {
  EXPECT_EQ(Found(), "");
  List("home/.config/mimeapps.list", "[Default Applications]\naudio/mpeg=gone.desktop\n");
  Entry("share/applications/gone.desktop", "Exec=gone %U\n");
  EXPECT_EQ(Found(), "") << "an entry whose program is not there";
}

TEST_F(DesktopPlayerFinderTest, EachSourceYieldsToTheOneBeforeIt) {
  for (const std::string name : {"a", "b", "c", "d", "e", "f"}) {
    Program("bin/" + name);
    Entry("share/applications/" + name + ".desktop", "Exec=" + name + " %U\n");
  }
  List("share/applications/mimeinfo.cache", "[MIME Cache]\naudio/mpeg=a.desktop;b.desktop;\n");
  EXPECT_EQ(Found(), folder_.Path("bin/a"));
  List("home/.local/share/applications/mimeapps.list",
       "[Removed Associations]\naudio/mpeg=a.desktop;\n");
  EXPECT_EQ(Found(), folder_.Path("bin/b"));
  List("etc/mimeapps.list", "[Added Associations]\naudio/mpeg=c.desktop;\n");
  EXPECT_EQ(Found(), folder_.Path("bin/c"));
  List("etc/gnome-mimeapps.list", "[Default Applications]\naudio/mpeg=missing.desktop;d.desktop\n");
  EXPECT_EQ(Found(), folder_.Path("bin/d"));
  List("home/.config/mimeapps.list",
       "[Added Associations]\naudio/mpeg=f.desktop;\n[Default Applications]\naudio/mpeg = "
       "e.desktop;\n");
  EXPECT_EQ(Found(), folder_.Path("bin/e"));
  List("home/.config/meadow-mimeapps.list", "[Default Applications]\naudio/mpeg=f.desktop;\n");
  EXPECT_EQ(Found(), folder_.Path("bin/f"));
}

TEST_F(DesktopPlayerFinderTest, ReadsTheProgramOutOfTheEntry) {
  Program("bin/play");
  Program("apps/exports/bin/org.example.Play");
  for (const char* starter : {"bin/flatpak", "bin/env"}) Program(starter);
  const std::string play = folder_.Path("bin/play");
  List("share/applications/mimeinfo.cache", "[MIME Cache]\naudio/mpeg=kde-sub-play.desktop;\n");
  const std::string path = "share/applications/kde/sub-play.desktop";
  Entry(path, "Exec=\"" + play + "\" --quiet %U\n");
  EXPECT_EQ(Found(), play) << "a path in quotes, in a folder that the id names";
  Entry(path, "Exec=env LANG=C X=1 play %U\n");
  EXPECT_EQ(Found(), play);
  Entry(path, "TryExec=missing\nExec=play %U\n");
  EXPECT_EQ(Found(), "");
  Entry(path, "Exec=play\n");
  Entry("home/.local/share/applications/kde-sub-play.desktop", "Hidden=true\nExec=play\n");
  EXPECT_EQ(Found(), "") << "the user has hidden it";
  const ScopedEnvironment data("XDG_DATA_DIRS", folder_.Path("apps/exports/share").c_str());
  List("apps/exports/share/applications/mimeinfo.cache",
       "[MIME Cache]\naudio/mpeg=org.example.Play.desktop;\n");
  Entry("apps/exports/share/applications/org.example.Play.desktop",
        "Exec=flatpak run org.example.Play @@u %U @@\n");
  EXPECT_EQ(Found(), folder_.Path("apps/exports/bin/org.example.Play"));
}

TEST_F(DesktopPlayerFinderTest, TellsTheWordsOfTheEntryThatAPersonSees) {
  const std::string player = "Categories=Player;\n";
  for (const char* name : {"bin/play", "bin/flatpak", "bin/env"}) Program(name);
  Program("apps/exports/bin/org.example.Play");
  std::filesystem::create_symlink(folder_.Path("bin/play"), folder_.Path("bin/other"));
  EXPECT_EQ(Words(folder_.Path("bin/play")), "");
  Entry("share/applications/a.desktop", "NoDisplay=true\nExec=play --add %F\n" + player);
  Entry("share/applications/b.desktop", "Exec=env X=1 play --gui \"a b\" -- %U\n" + player);
  List("share/applications/mimeinfo.cache", "[MIME Cache]\naudio/mpeg=a.desktop;\n");
  const std::string words = "[env][X=1][play]<--gui><a b><--><%U>";
  EXPECT_EQ(Words(folder_.Path("bin/play")), words);
  EXPECT_EQ(Words(folder_.Path("bin/other")), words) << "by the file behind the link";
  EXPECT_EQ(Words(folder_.Path("bin/flatpak")), "");
  const ScopedEnvironment data("XDG_DATA_DIRS", folder_.Path("apps/exports/share").c_str());
  Entry("apps/exports/share/applications/org.example.Play.desktop",
        "Exec=flatpak run org.example.Play @@u %U @@\n" + player);
  EXPECT_EQ(Words(folder_.Path("apps/exports/bin/org.example.Play")), "");
}

TEST_F(DesktopPlayerFinderTest, WithoutAListOfTypesThePlayersSpeakForThemselves) {
  const std::string player = "Categories=AudioVideo;Player;\n";
  const struct {
    const char* id;
    std::string lines;
  } entries[] = {
      {"a", "Categories=AudioVideo;Audio;\nExec=a %F\n"},  // a tag editor, for example
      {"b", player + "NoDisplay=true\nExec=b --add %F\n"},
      {"c", player + "Exec=missing\n"},
      {"d", player + "Exec=d %U\n"},
      {"e", player + "Exec=e %U\n"},
  };
  for (const auto& entry : entries) {
    Program(std::string("bin/") + entry.id);
    Entry(std::string("share/applications/") + entry.id + ".desktop", entry.lines);
  }
  folder_.Write("share/applications/0.desktop",
                "[Desktop Entry]\nType=Application\nMimeType=video/mp4;\nExec=a\n" + player);
  EXPECT_EQ(Found(), folder_.Path("bin/d"));
  List("home/.config/mimeapps.list", "[Removed Associations]\naudio/mpeg=d.desktop;\n");
  EXPECT_EQ(Found(), folder_.Path("bin/e"));
  List("share/applications/mimeinfo.cache", "[MIME Cache]\naudio/mpeg=a.desktop;\n");
  EXPECT_EQ(Found(), folder_.Path("bin/a")) << "a list comes first";
}

}  // namespace
}  // namespace tunemeadow
