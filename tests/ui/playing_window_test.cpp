// SPDX-License-Identifier: GPL-3.0-or-later
// The main window while a person plays: every way to the play commands, and the searches of the
// web.
#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <filesystem>

#include "platform/file_urls.h"
#include "playback/play.h"
#include "support/scoped_environment.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"
#include "support/window_driver.h"
#include "ui/panes/result_view.h"
#include "ui/shell/frmStart.h"

namespace tunemeadow {
namespace {

class PlayingWindow : public testing::Test {
 protected:
  PlayingWindow() {
    std::filesystem::copy_file(TM_BINARY_DIR "/data/mp3s.mdb", program_.Path("mp3s.mdb"));
    session_.ini.SaveStrings(kConfigSection, {{"firstrun", "1"},
                                              {"lblConfigWinamp", "/opt/mpv"},
                                              {"lblPreviewPath", program_.Path("clips/")},
                                              {"chkRepair", "0"}});
    connection_.Open(program_.Path("mp3s.mdb"));
    connection_.Execute("delete from mp3sTabelle");
    for (const char* name : {"a", "b"}) {
      const std::string path = music_.Write(name + std::string(".mp3"));
      connection_.Execute("insert into mp3sTabelle (location,Songname,Artist,preview) values ('" +
                          path + "','" + name + "','Anna','" + (*name == 'b' ? "Available" : "") +
                          "')");
    }
    connection_.Close();
  }

  void Start() {
    window_ = std::make_unique<frmStart>(session_, world_);
    ASSERT_TRUE(window_->Form_Load());
    ASSERT_EQ(window_->Bench().ListView1.RowCount(), 2U);
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  }
  ~PlayingWindow() override {
    if (window_) window_->close();
  }

  ResultView& List() { return Find<ResultView>(*window_, "ListView1"); }
  QPoint Place(int row) { return List().visualRect(List().model()->index(row, 1)).center(); }
  QAction& Entry(const char* name) { return *window_->findChild<QAction*>(name); }
  std::string StartOf(const std::string& name) {
    return "start /opt/mpv [" + music_.Path(name) + "]";
  }

  using Log = std::vector<std::string>;
  TempFolder program_, music_;
  Connection connection_;
  Session session_{program_.Path(), "tunemeadow"};
  ScriptedWorld world_;
  std::unique_ptr<frmStart> window_;
};

TEST_F(PlayingWindow, EveryEntrancePlaysTheSelection) {
  Start();
  window_->Bench().ListView1.ClearSelection();
  Press(*window_, "cmdSpielen");
  EXPECT_EQ(world_.log, Log{}) << "nothing is selected";
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, Place(0));
  QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, Place(0));
  EXPECT_EQ(world_.log, Log{StartOf("a.mp3")}) << "once for a double click";
  Press(*window_, "cmdSpielen");
  EXPECT_FALSE(List().hasFocus());
  Press(*window_, "cmdPlaySelection");
  EXPECT_TRUE(List().hasFocus()) << "the focus goes back";
  Entry("mnuPlay").trigger();
  EXPECT_EQ(world_.log, Log(4, StartOf("a.mp3")));
  session_.connection.Execute(
      "insert into playlists (Playlist,UID) select 'All', uid from mp3sTabelle");
  window_->Bench().tree.selected = {.kind = NodeKind::kPlaylist, .key = "All|1", .name = "All"};
  Entry("mnuPlaylistPlayAll").trigger();
  EXPECT_EQ(Log(world_.log.begin() + 4, world_.log.end()),
            (Log{StartOf("a.mp3"), StartOf("b.mp3")}));
}

TEST_F(PlayingWindow, FilesAreAppendedOnlyWhereThePlayerTakesThem) {
  Start();
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, Place(1));
  auto& menu = Find<QMenu>(*window_, "mnuPlayback");
  emit menu.aboutToShow();
  EXPECT_TRUE(Entry("mnuPlay").isEnabled());
  EXPECT_FALSE(Entry("mnuAddToWinampsplaylist").isEnabled());
  session_.PlayerKind = "Winamp";
  emit menu.aboutToShow();
  ASSERT_TRUE(Entry("mnuAddToWinampsplaylist").isEnabled());
  Entry("mnuAddToWinampsplaylist").trigger();
  EXPECT_EQ(world_.log, Log{"send window " + music_.Path("b.mp3")});
}

TEST_F(PlayingWindow, TheWishForPreviewsLastsAndHoldsForDragsToo) {
  Start();
  const std::string clip =
      program_.Write("clips/" + std::to_string(window_->Bench().ListView1.Uid(1)) + ".mp3");
  auto& box = Find<QCheckBox>(*window_, "chkPlayPreview");
  EXPECT_EQ(box.text(), "Try Preview");
  EXPECT_FALSE(box.isChecked());
  box.click();
  List().selectAll();
  Press(*window_, "cmdSpielen");
  EXPECT_EQ(world_.log, (Log{StartOf("a.mp3"), "start /opt/mpv [" + clip + "]"}));
  EXPECT_EQ(List().DragData()->data("text/uri-list").toStdString(),
            FileUrl(music_.Path("a.mp3")) + "\r\n" + FileUrl(clip) + "\r\n");
  window_->close();
  EXPECT_EQ(session_.ini.GetString(kConfigSection, "chkPlayPreview", "", 0), "1");
  Start();
  EXPECT_TRUE(Find<QCheckBox>(*window_, "chkPlayPreview").isChecked());
}

TEST_F(PlayingWindow, TheChosenTextsOfTheTrackGoToTheBrowser) {
  Start();
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, Place(1));
  for (const char* box : {"chkCDDBSong", "chkCDDBArtist", "chkCDDBLocation"}) {
    Find<QCheckBox>(*window_, box).click();
  }
  for (const char* entry : {"mnuAmazoncom", "mnucddbcom", "mnuSearchCovers"}) {
    world_.log.clear();
    Entry(entry).trigger();
    ASSERT_EQ(world_.log.size(), 1U);
    EXPECT_NE(world_.log[0].find("=b Anna b.mp3"), std::string::npos) << world_.log[0];
  }
  Find<QCheckBox>(*window_, "chkCDDBSong").click();
  world_.log.clear();
  Entry("mnusonicnet").trigger();
  ASSERT_EQ(world_.log.size(), 1U);
  EXPECT_TRUE(world_.log[0].ends_with("/artistsearch.jhtml?query=Anna")) << world_.log[0];
}

}  // namespace
}  // namespace tunemeadow
