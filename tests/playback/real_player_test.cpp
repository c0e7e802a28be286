// SPDX-License-Identifier: GPL-3.0-or-later
// The play commands and a real player: audacious, on a display and a session bus of its own.
#include <QProcess>
#include <QThread>
#include <filesystem>

#include "library/player_detection.h"
#include "platform/mpris_player_qt.h"
#include "platform/process_posix.h"
#include "platform/program_path.h"
#include "playback/play.h"
#include "support/mp3_builder.h"
#include "support/scoped_environment.h"
#include "views/catalogue_test.h"

namespace tunemeadow {
namespace {

/// What the player tells of itself; empty while it does not answer.
std::string Ask(const QStringList& words) {
  QProcess tool;
  tool.setStandardErrorFile(QProcess::nullDevice());
  tool.start("audtool", words);
  tool.waitForFinished(10'000);
  return tool.readAllStandardOutput().trimmed().toStdString();
}

/// The files in the player's list, once there are `count`; what there is after half a minute.
std::vector<std::string> ListOfPlayer(std::size_t count) {
  std::string length;
  for (int i = 0; i < 300 && length != std::to_string(count); ++i) {
    QThread::msleep(100);
    length = Ask({"playlist-length"});
  }
  std::vector<std::string> paths;
  for (std::size_t i = 1; i <= count; ++i) {
    paths.push_back(Ask({"playlist-song-filename", QString::number(i)}));
  }
  EXPECT_EQ(length, std::to_string(count));
  return paths;
}

class RealPlayer : public CatalogueTest {
 protected:
  RealPlayer() {
    session_.preferences.lblConfigWinamp = ProgramPath("audacious");
    session_.PlayerKind = PlayerKindOf(session_.preferences.lblConfigWinamp);
    for (const char* name : {"a.mp3", "b \"1\" #\xC3\xA4.mp3", "c.mp3", "d.mp3"}) {
      paths_.push_back(folder_.Write(name, Mp3File().Frames(2000).Build()));
      Run("insert into mp3sTabelle (location) values ('" + paths_.back() + "')");
    }
    std::filesystem::create_directories(folder_.Path("tmp"));
    cmdSuchen(bench_);
  }
  ~RealPlayer() override {
    Ask({"shutdown"});
    // Its folder must not go from under it.
    for (int i = 0; i < 100 && !Ask({"playlist-length"}).empty(); ++i) QThread::msleep(50);
  }

  void Select(std::size_t first, std::size_t last) {
    bench_.ListView1.ClearSelection();
    bench_.ListView1.SetSelected(first, last, true);
  }

  Texts paths_;
  ScopedEnvironment temp_{"TMPDIR", folder_.Path("tmp").c_str()};
  PosixProcessStarter processes_;
  MprisPlayer players_{processes_};
  /// The player is real, the rest is not.
  World player_world_{processes_, world_, players_, world_, world_, world_, world_};
  Workbench bench_{session_, interaction_, player_world_};
};

TEST_F(RealPlayer, IsLoadedGivenFilesAndGivenAList) {
  ASSERT_EQ(session_.PlayerKind, "Winamp");
  Select(0, 1);
  mnuAddToWinampsplaylist_Click(bench_);
  EXPECT_EQ(ListOfPlayer(2), (Texts{paths_[0], paths_[1]})) << "loaded, then given both in order";
  EXPECT_EQ(bench_.WinampWindow, "org.mpris.MediaPlayer2.audacious");
  Select(2, 3);
  mnuAddToWinampsplaylist_Click(bench_);
  EXPECT_EQ(ListOfPlayer(4), paths_) << "the running one takes more";
  Select(1, 3);
  cmdSpielen_Click(bench_);
  EXPECT_EQ(ListOfPlayer(3), (Texts{paths_[1], paths_[2], paths_[3]})) << "a list takes its place";
  EXPECT_EQ(Rows("select count(*) from mp3sTabelle where lasttimeplayed<>''"), Texts{"4"});
  EXPECT_TRUE(world_.log.empty());
}

}  // namespace
}  // namespace tunemeadow
