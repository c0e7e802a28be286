// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/play_all.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "playback/lists_test.h"
#include "playback/playlists.h"

namespace tunemeadow {
namespace {

class PlayAll : public ListsTest {
 protected:
  PlayAll() {
    session_.preferences.lblConfigWinamp = "/opt/player";
    session_.preferences.txtCDTag = "MP3-CD";
    session_.preferences.lblConfigCDROM = music_.Path();
    session_.PlayerKind = "Unknown";
    for (const char* name : {"a.mp3", "b.mp3", "x/c.mp3"}) {
      files_.push_back(music_.Write(name));
      AddTrack(name[0] == 'x' ? "MP3-CD01/x/c.mp3" : files_.back());
    }
  }

  /// The files that the player was started with, one by one.
  Texts TakePlayed() {
    const std::string start = "start /opt/player [";
    Texts files;
    for (const std::string& line : std::exchange(world_.log, {})) {
      EXPECT_TRUE(line.starts_with(start) && line.ends_with(']')) << line;
      files.push_back(line.substr(start.size(), line.size() - start.size() - 1));
    }
    return files;
  }

  TempFolder music_;
  Texts files_;
};

TEST_F(PlayAll, APlaylistIsOpenedAndPlayedInTheOrderShown) {
  ShowTracks(0);
  bench_.ListView1.SetSelected(1, 2, true);
  mnuPlaylistSave_Click(bench_, "Mine");
  mnuPlaylistPlayAll_Click(bench_);
  EXPECT_THAT(TakePlayed(), testing::IsEmpty()) << "no playlist is selected";
  ClickNode(NodeKind::kPlaylist, "Mine");
  mnuPlaylistPlayAll_Click(bench_);
  EXPECT_TRUE(bench_.playlist_in_view);
  const Texts played = TakePlayed();
  EXPECT_EQ(played.size(), 2U);
  bench_.ListView3.MoveRow(0, 1);
  bench_.ListView3.ClearSelection();
  mnuPlaylistPlayAll_Click(bench_);
  EXPECT_THAT(TakePlayed(), testing::ElementsAre(played[1], played[0]));
  EXPECT_EQ(bench_.ListView3.SelectedCount(), 2U);
}

TEST_F(PlayAll, AnArchiveIsPlayedWholeFromItsDrive) {
  Run("insert into cdarchives (CDArchive,UID) select 'MP3-CD01', uid from mp3sTabelle");
  interaction_.WillAnswer(Answer::kOk);
  mnuItem3GesamtesArchivabspielen_Click(bench_);
  EXPECT_THAT(interaction_.BoxTexts(),
              testing::ElementsAre("Tunemeadow: No CDArchive is  selected."));
  for (const NodeKind kind : {NodeKind::kArchive, NodeKind::kArchiveFolder}) {
    bench_.tree.selected = {.kind = kind, .key = "CDArchive|MP3-CD01\\x", .name = "MP3-CD01"};
    mnuItem3GesamtesArchivabspielen_Click(bench_);
    EXPECT_THAT(TakePlayed(), testing::UnorderedElementsAreArray(files_));
    EXPECT_EQ(bench_.current_view, "CDArchive");
  }
}

}  // namespace
}  // namespace tunemeadow
