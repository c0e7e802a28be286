// SPDX-License-Identifier: GPL-3.0-or-later
// The main window while a person plays: every way to the play commands, and the searches of the
// web.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QMenu>
#include <QMimeData>

#include "platform/file_urls.h"
#include "playback/play.h"
#include "support/main_window.h"
#include "support/scoped_environment.h"

namespace tunemeadow {
namespace {

class PlayingWindow : public MainWindowTest {
 protected:
  PlayingWindow() {
    Configure(program_,
              {{"lblConfigWinamp", "/opt/play"}, {"lblPreviewPath", program_.Path("clips/")}});
    Fill(program_, {TrackOf("a", ""), TrackOf("b", "Available")});
    Start();
    EXPECT_EQ(Bench().ListView1.RowCount(), 2U);
    Activate();
  }

  std::string TrackOf(const std::string& name, const std::string& preview) {
    return "insert into mp3sTabelle (location,Songname,Artist,preview) values ('" +
           music_.Write(name + ".mp3") + "','" + name + "','Anna','" + preview + "')";
  }
  std::string StartOf(const std::string& name) {
    return "start /opt/play [" + music_.Path(name) + "]";
  }

  using Log = std::vector<std::string>;
};

TEST_F(PlayingWindow, EveryEntrancePlaysTheSelection) {
  Bench().ListView1.ClearSelection();
  Press(*window_, "cmdSpielen");
  EXPECT_EQ(world_.log, Log{}) << "nothing is selected";
  ClickRow(List(), 0);
  QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, Place(List(), 0));
  EXPECT_EQ(world_.log, Log{StartOf("a.mp3")}) << "once for a double click";
  Press(*window_, "cmdSpielen");
  EXPECT_FALSE(List().hasFocus());
  Press(*window_, "cmdPlaySelection");
  EXPECT_TRUE(List().hasFocus()) << "the focus goes back";
  Action("mnuPlay").trigger();
  EXPECT_EQ(world_.log, Log(4, StartOf("a.mp3")));
  Catalogue().Execute("insert into playlists (Playlist,UID) select 'All', uid from mp3sTabelle");
  Bench().tree.selected = {.kind = NodeKind::kPlaylist, .key = "All|1", .name = "All"};
  Action("mnuPlaylistPlayAll").trigger();
  EXPECT_EQ(Log(world_.log.begin() + 4, world_.log.end()),
            (Log{StartOf("a.mp3"), StartOf("b.mp3")}));
}

TEST_F(PlayingWindow, FilesAreAppendedOnlyWhereThePlayerTakesThem) {
  ClickRow(List(), 1);
  auto& menu = Find<QMenu>(*window_, "mnuPlayback");
  emit menu.aboutToShow();
  EXPECT_TRUE(Action("mnuPlay").isEnabled());
  EXPECT_FALSE(Action("mnuAddToWinampsplaylist").isEnabled());
  session_->PlayerKind = "Winamp";
  session_->preferences.lblConfigWinamp = "/opt/audacious";
  emit menu.aboutToShow();
  ASSERT_TRUE(Action("mnuAddToWinampsplaylist").isEnabled());
  Action("mnuAddToWinampsplaylist").trigger();
  EXPECT_EQ(world_.log, Log{"send window " + music_.Path("b.mp3")});
}

TEST_F(PlayingWindow, TheWishForPreviewsLastsAndHoldsForDragsToo) {
  const std::string clip =
      program_.Write("clips/" + std::to_string(Bench().ListView1.Uid(1)) + ".mp3");
  auto& box = Find<QCheckBox>(*window_, "chkPlayPreview");
  EXPECT_EQ(box.text(), "Try Preview");
  EXPECT_FALSE(box.isChecked());
  box.click();
  List().selectAll();
  Press(*window_, "cmdSpielen");
  EXPECT_EQ(world_.log, (Log{StartOf("a.mp3"), "start /opt/play [" + clip + "]"}));
  EXPECT_EQ(List().DragData()->data("text/uri-list").toStdString(),
            FileUrl(music_.Path("a.mp3")) + "\r\n" + FileUrl(clip) + "\r\n");
  window_->close();
  EXPECT_EQ(session_->ini.GetString(kConfigSection, "chkPlayPreview", "", 0), "1");
  Start();
  EXPECT_TRUE(Find<QCheckBox>(*window_, "chkPlayPreview").isChecked());
}

TEST_F(PlayingWindow, TheChosenTextsOfTheTrackGoToTheBrowser) {
  ClickRow(List(), 1);
  for (const char* box : {"chkCDDBSong", "chkCDDBArtist", "chkCDDBLocation"}) {
    Find<QCheckBox>(*window_, box).click();
  }
  for (const char* entry : {"mnuAmazoncom", "mnucddbcom", "mnuSearchCovers"}) {
    world_.log.clear();
    Action(entry).trigger();
    ASSERT_EQ(world_.log.size(), 1U);
    EXPECT_NE(world_.log[0].find("=b Anna b.mp3"), std::string::npos) << world_.log[0];
  }
  Find<QCheckBox>(*window_, "chkCDDBSong").click();
  world_.log.clear();
  Action("mnusonicnet").trigger();
  ASSERT_EQ(world_.log.size(), 1U);
  EXPECT_TRUE(world_.log[0].ends_with("/artistsearch.jhtml?query=Anna")) << world_.log[0];
}

}  // namespace
}  // namespace tunemeadow
