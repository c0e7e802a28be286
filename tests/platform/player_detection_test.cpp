// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/player_detection.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/scripted_interaction.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

TEST(PlayerKindOf, GoesByThePathAndByTheNamesOfPlayersThatTakeAList) {
  EXPECT_EQ(PlayerKindOf(""), "");
  EXPECT_EQ(PlayerKindOf("No MP3-Player"), "");
  EXPECT_EQ(PlayerKindOf("C:\\Programme\\WinAmp\\studio.exe"), "Winamp");
  EXPECT_EQ(PlayerKindOf("/opt/sonique-to-winamp/run"), "Winamp");
  EXPECT_EQ(PlayerKindOf("/opt/Sonique/x"), "Sonique");
  for (const char* path :
       {"/usr/bin/audacious", "/usr/bin/qmmp", "/usr/bin/vlc", "/usr/bin/mpv",
        "/usr/bin/strawberry", "/usr/bin/celluloid", "/usr/bin/qmmp-1", "/opt/vlc-3.0.18",
        "/x/exports/bin/org.videolan.VLC", "/x/exports/bin/io.mpv.Mpv"}) {
    EXPECT_EQ(PlayerKindOf(path), "Winamp") << path;
  }
  for (const char* path : {"/opt/audacious/play", "/usr/bin/vlc-wrapper", "/usr/bin/mpvd",
                           "/opt/vlc.sh", "/usr/bin/-1", "/usr/bin/mpv1"}) {
    EXPECT_EQ(PlayerKindOf(path), "Unknown") << path << ": the whole name counts, not the folder";
  }
  const TempFolder folder;
  std::filesystem::create_symlink(folder.Write("vlc"), folder.Path("music"));
  EXPECT_EQ(PlayerKindOf(folder.Path("music")), "Winamp") << "by the file behind the link";
}

TEST(DetectPlayer, TakesTheAssociatedProgramOnlyWhereNoneIsStored) {
  const TempFolder folder;
  struct {
    const char *stored, *command, *player, *kind;
  } cases[] = {
      {"/usr/bin/play", "/usr/bin/audacious", "/usr/bin/play", "Unknown"},
      {"No MP3-Player", "/usr/bin/audacious", "No MP3-Player", ""},
      {"", "/usr/bin/audacious", "/usr/bin/audacious", "Winamp"},
      {"", R"("/m/Winamp.Exe" /ADD "x.EXE")", "/m/Winamp.Exe", "Winamp"},
      {"", "\"/opt/my player/play\"", "/opt/my player/play", "Unknown"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.command);
    Session session(folder.Path(), "test");
    session.preferences.lblConfigWinamp = c.stored;
    ScriptedWorld world;
    world.associated = c.command;
    ScriptedInteraction interaction;
    DetectPlayer(session, world, interaction);
    EXPECT_EQ(session.preferences.lblConfigWinamp, c.player);
    EXPECT_EQ(session.PlayerKind, c.kind);
    EXPECT_EQ(world.associations_asked, *c.stored == '\0' ? 1 : 0);
  }
}

TEST(DetectPlayer, TellsThePersonOnceThatThereIsNone) {
  const TempFolder folder;
  Session session(folder.Path(), "test");
  ScriptedWorld world;
  world.associated = "\"\"";
  ScriptedInteraction interaction({Answer::kOk});
  DetectPlayer(session, world, interaction);
  ASSERT_EQ(interaction.boxes.size(), 1u);
  EXPECT_EQ(interaction.boxes[0].title, "Warning");
  EXPECT_EQ(interaction.boxes[0].text,
            "No MP3-Player found.\nEnqueuing will be disabled.\n\n"
            "Check out preferencees to change your player.");
  EXPECT_EQ(session.preferences.lblConfigWinamp, "No MP3-Player");
  EXPECT_EQ(session.PlayerKind, "");
  DetectPlayer(session, world, interaction);
  EXPECT_EQ(interaction.boxes.size(), 1u);
}

}  // namespace
}  // namespace tunemeadow
