// SPDX-License-Identifier: GPL-3.0-or-later
// The play commands and real players, on a display and a session bus of their own. One that is not
// installed is skipped, and says so.
#include <QDeadlineTimer>
#include <QProcess>
#include <QThread>
#include <filesystem>

#include "platform/desktop_player_finder.h"
#include "platform/known_players.h"
#include "platform/mpris_player_qt.h"
#include "platform/mpv_socket.h"
#include "platform/player_detection.h"
#include "platform/process_posix.h"
#include "platform/program_path.h"
#include "playback/play.h"
#include "support/mp3_builder.h"
#include "support/scoped_environment.h"
#include "views/catalogue_test.h"

namespace tunemeadow {
namespace {

using Names = std::vector<std::string>;

/// What a program prints; empty if it fails.
std::string Ask(const char* program, const QStringList& words) {
  QProcess tool;
  tool.setStandardErrorFile(QProcess::nullDevice());
  tool.start(program, words);
  tool.waitForFinished(3000);
  return tool.readAllStandardOutput().toStdString();
}

/// The names a.mp3 to f.mp3 in the order in which they stand in a text.
Names NamesIn(const std::string& text) {
  Names names;
  for (std::size_t at = text.find(".mp3"); at != std::string::npos;
       at = text.find(".mp3", at + 1)) {
    names.push_back(text.substr(at - 1, 5));
  }
  return names;
}

Names ListOfAudacious() {
  std::string text;
  const int length = QString::fromStdString(Ask("audtool", {"playlist-length"})).toInt();
  for (int i = 1; i <= length; ++i) {
    text += Ask("audtool", {"playlist-song-filename", QString::number(i)});
  }
  return NamesIn(text);
}

Names ListOfMpv() { return NamesIn(AskMpv(Names{"get_property", "playlist"}).value_or("")); }

struct RealOne {
  const char* program;
  Names (*list)();
  void (*end)();
};

const RealOne kRealOnes[] = {
    {"audacious", &ListOfAudacious, [] { Ask("audtool", {"shutdown"}); }},
    {"mpv", &ListOfMpv, [] { AskMpv(Names{"quit"}); }},
};

class RealPlayer : public CatalogueTest, public testing::WithParamInterface<RealOne> {
 protected:
  void SetUp() override {
    std::string& player = session_.preferences.lblConfigWinamp;
    player = ProgramPath(GetParam().program);
    if (player.empty()) GTEST_SKIP() << GetParam().program << " is not installed";
    session_.PlayerKind = PlayerKindOf(player);
    for (const char* name : {"a", "b \"1\" #\xC3\xA4 b", "c", "d", "e", "f"}) {
      const std::string path =
          folder_.Write(name + std::string(".mp3"), Mp3File().Frames(2000).Build());
      Run("insert into mp3sTabelle (location) values ('" + path + "')");
    }
    std::filesystem::create_directories(folder_.Path("tmp"));
    cmdSuchen(bench_);
  }
  /// Its folder must not go from under the player.
  void TearDown() override {
    if (IsSkipped()) return;
    GetParam().end();
    for (int i = 0; i < 100 && !players_.Find(session_.preferences.lblConfigWinamp).empty(); ++i) {
      QThread::msleep(50);
    }
  }

  void Select(std::size_t first, std::size_t last) {
    bench_.ListView1.ClearSelection();
    bench_.ListView1.SetSelected(first, last, true);
  }

  /// The player's list, once it is that; what it is after half a minute.
  static Names ListWhenIt(const Names& wanted) {
    Names list;
    const QDeadlineTimer last(30'000);
    while (list != wanted && !last.hasExpired()) {
      QThread::msleep(100);
      list = GetParam().list();
    }
    return list;
  }

  ScopedEnvironment temp_{"TMPDIR", folder_.Path("tmp").c_str()};
  PosixProcessStarter processes_;
  MprisPlayer players_{processes_};
  DesktopPlayerFinder finder_;
  /// The player and its entry are real, the rest is not.
  World player_world_{processes_, world_, players_, finder_, world_, world_, world_};
  Workbench bench_{session_, interaction_, player_world_};
};

TEST_P(RealPlayer, IsLoadedGivenFilesAndGivenAList) {
  ASSERT_EQ(session_.PlayerKind, "Winamp");
  const Names two{"a.mp3", "b.mp3"}, four{"a.mp3", "b.mp3", "c.mp3", "d.mp3"};
  const Names six{"a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3", "f.mp3"};
  Select(0, 1);
  mnuAddToWinampsplaylist_Click(bench_);
  EXPECT_EQ(ListWhenIt(two), two) << "loaded, then given both in order";
  Select(2, 3);
  mnuAddToWinampsplaylist_Click(bench_);
  EXPECT_EQ(ListWhenIt(four), four) << "the running one takes more";
  Select(0, 5);
  cmdSpielen_Click(bench_);
  EXPECT_EQ(ListWhenIt(six), six) << "a list takes its place";
  EXPECT_EQ(Rows("select count(*) from mp3sTabelle where lasttimeplayed<>''"), Texts{"6"});
  EXPECT_TRUE(world_.log.empty());
}

INSTANTIATE_TEST_SUITE_P(, RealPlayer, testing::ValuesIn(kRealOnes),
                         [](const auto& one) { return std::string(one.param.program); });

}  // namespace
}  // namespace tunemeadow
