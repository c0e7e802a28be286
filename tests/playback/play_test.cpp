// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/play.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "core/dates.h"
#include "files/durable_file.h"
#include "platform/file_urls.h"
#include "playback/player_start.h"
#include "playback/temp_list.h"
#include "support/list_rows.h"
#include "support/scoped_environment.h"
#include "views/catalogue_test.h"

namespace tunemeadow {
namespace {

class Play : public CatalogueTest {
 protected:
  Play() {
    std::filesystem::create_directories(folder_.Path("tmp"));
    session_.preferences.lblConfigWinamp = "/opt/player";
    session_.preferences.lblPreviewPath = folder_.Path("clips") + "/";
    session_.PlayerKind = "Winamp";
  }

  /// Files and their rows, all of them selected. "-" before a name: its file is missing.
  void AddRows(const Texts& names, const std::string& preview = "") {
    for (std::string name : names) {
      const bool missing = name.starts_with('-');
      if (missing) name.erase(0, 1);
      if (!missing) folder_.Write("m/" + name);
      Run("insert into mp3sTabelle (location,preview) values ('" + folder_.Path("m/" + name) +
          "','" + preview + "')");
    }
    Fill();
  }

  void Fill() {
    cmdSuchen(bench_);
    bench_.ListView1.SetSelected(0, bench_.ListView1.RowCount() - 1, true);
  }

  void Do(void (*command)(Workbench&), std::initializer_list<Answer> answers) {
    for (const Answer answer : answers) interaction_.WillAnswer(answer);
    command(bench_);
    interaction_.ExpectPutBack();
    EXPECT_FALSE(session_.busy);
  }
  void Press(std::initializer_list<Answer> answers = {}) { Do(cmdSpielen_Click, answers); }
  void Append(std::initializer_list<Answer> answers = {}) {
    Do(mnuAddToWinampsplaylist_Click, answers);
  }

  std::string M(const std::string& name) { return folder_.Path("m/" + name); }
  std::string ListPath(const std::string& name) {
    return folder_.Path("tmp/tunemeadow-" + std::to_string(geteuid()) + "/" + name);
  }
  std::string ListBytes(const std::string& name) {
    return ReadWholeFile(ListPath(name)).value_or("missing");
  }
  /// "1" for each row that is stamped, in the order of the locations.
  std::string Stamps() {
    std::string stamps;
    for (const std::string& text :
         Rows("select lasttimeplayed from mp3sTabelle order by location")) {
      stamps += text.empty() ? "0" : "1";
    }
    return stamps;
  }

  ScopedEnvironment temp_{"TMPDIR", folder_.Path("tmp").c_str()};
};

TEST_F(Play, TheListOfEachKindIsWrittenByteForByteAndStartedOnce) {
  AddRows({"a.mp3", "b \"1\" \xC3\xA4.MP2"});
  Press();
  EXPECT_EQ(ListBytes("1.m3u"),
            "#EXTM3U\r\n" + M("a.mp3") + "\r\n" + M("b \"1\" \xC3\xA4.MP2") + "\r\n");
  session_.PlayerKind = "Sonique";
  Press();
  EXPECT_EQ(ListBytes("1.pls"), "[playlist]\r\nFile1=" + M("a.mp3") +
                                    "\r\nFile2=" + M("b \"1\" \xC3\xA4.MP2") +
                                    "\r\nNumberOfEntries = 2\r\nVersion = 2\r\n");
  EXPECT_EQ(world_.log, (Texts{"start /opt/player [" + ListPath("1.m3u") + "]",
                               "start /opt/player [" + ListPath("1.pls") + "]"}));
  bench_.ListView1.SelectOnly(0);
  Press();
  EXPECT_EQ(ListBytes("1.pls"),
            "[playlist]\r\nFile1=" + M("a.mp3") + "\r\nNumberOfEntries = 1\r\nVersion = 2\r\n")
      << "nothing is left of the longer list before";
}

TEST_F(Play, AMissingFileIsIgnoredLookedForAgainOrEndsAll) {
  session_.PlayerKind = "Sonique";
  AddRows({"a.mp3", "-b.mp3", "c.mp3"});
  const std::string box = "File not found: The file " + M("b.mp3") + " was not found.";
  Press({Answer::kAbort});
  EXPECT_EQ(Stamps(), "100");
  EXPECT_TRUE(world_.log.empty()) << "no list is started";
  Press({Answer::kIgnore});
  EXPECT_EQ(Stamps(), "101");
  EXPECT_EQ(ListBytes("1.pls"), "[playlist]\r\nFile1=" + M("a.mp3") + "\r\nFile2=" + M("c.mp3") +
                                    "\r\nNumberOfEntries = 2\r\nVersion = 2\r\n");
  int shown = 0;
  interaction_.on_box = [&](const MessageBox& shown_box) {
    EXPECT_EQ(shown_box.icon, Icon::kCritical);
    if (++shown == 2) folder_.Write("m/b.mp3");
  };
  Press({Answer::kRetry, Answer::kRetry});
  EXPECT_EQ(Stamps(), "111");
  EXPECT_EQ(interaction_.BoxTexts(), (Texts{box, box, box, box}));
  EXPECT_EQ(world_.log.size(), 2U);
}

TEST_F(Play, AnUnknownPlayerIsStartedOncePerTrackAndEachIsStampedBefore) {
  session_.PlayerKind = "Unknown";
  AddRows({"a.mp3", "b.mp3", "c.mp3"});
  Texts stamped;
  world_.before_start = [&] {
    stamped.push_back(Stamps());
    EXPECT_EQ(interaction_.busy_depth, 1);
  };
  Press();
  EXPECT_EQ(world_.log, (Texts{"start /opt/player [" + M("a.mp3") + "]",
                               "start /opt/player [" + M("b.mp3") + "]",
                               "start /opt/player [" + M("c.mp3") + "]"}));
  EXPECT_EQ(stamped, (Texts{"100", "110", "111"}));
  for (std::size_t row = 0; row < 3; ++row) {
    EXPECT_TRUE(ParseDateTime(bench_.ListView1.Cell(row, TrackField::lasttimeplayed)));
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path("tmp"))) << "no list is written";
}

TEST_F(Play, OtherExtensionsAndAllWithoutAPlayerGoToTheDesktop) {
  AddRows({"a.mp3", "b.wav", "c.mp3", "d.flac"});
  session_.preferences.txtpatternmp3files = "mp3;flac";
  Press();
  EXPECT_EQ(world_.log, (Texts{"open " + M("b.wav"), "open " + M("d.flac"),
                               "start /opt/player [" + ListPath("1.m3u") + "]"}));
  EXPECT_EQ(ListBytes("1.m3u"), "#EXTM3U\r\n" + M("a.mp3") + "\r\n" + M("c.mp3") + "\r\n");
  EXPECT_EQ(Stamps(), "1111");
  world_.log.clear();
  session_.preferences.lblConfigWinamp = kNoPlayer;
  session_.PlayerKind.clear();
  bench_.ListView1.SelectOnly(0);
  Press();
  EXPECT_EQ(world_.log, Texts{"open " + M("a.mp3")});
}

TEST_F(Play, APreviewIsPlayedWhereItIsWantedAndThere) {
  AddRows({"a.mp3"}, "Available");
  AddRows({"b.mp3"});
  const std::string clip =
      folder_.Write("clips/" + std::to_string(bench_.ListView1.Uid(0)) + ".mp3");
  Press();
  EXPECT_EQ(ListBytes("1.m3u"), "#EXTM3U\r\n" + M("a.mp3") + "\r\n" + M("b.mp3") + "\r\n");
  bench_.try_preview = true;
  Press();
  EXPECT_EQ(ListBytes("1.m3u"), "#EXTM3U\r\n" + clip + "\r\n" + M("b.mp3") + "\r\n");
  Append();
  EXPECT_EQ(world_.log.at(2), "send window " + M("a.mp3")) << "appending knows no previews";
}

TEST_F(Play, ATrackOnABurntDiscIsReadFromTheDrive) {
  folder_.Write("drive/Rock/a.mp3");
  Run("insert into mp3sTabelle (location) values ('MP3-CD01/Rock/a.mp3')");
  Fill();
  session_.preferences.lblConfigCDROM = folder_.Path("drive");
  Press();
  Append();
  EXPECT_EQ(ListBytes("1.m3u"), "#EXTM3U\r\n" + folder_.Path("drive/Rock/a.mp3") + "\r\n");
  EXPECT_EQ(world_.log.back(), "send window " + folder_.Path("drive/Rock/a.mp3"));
  session_.preferences.lblConfigCDROM.clear();
  Press({Answer::kIgnore});
  EXPECT_EQ(interaction_.BoxTexts(),
            Texts{"File not found: The file MP3-CD01/Rock/a.mp3 was not found."});
}

TEST_F(Play, TheListInViewIsTheOneThatIsPlayed) {
  AddRows({"a.mp3", "b.mp3"});
  const std::string one = std::to_string(bench_.ListView1.Uid(0)), a = M("a.mp3");
  const std::string two = std::to_string(bench_.ListView1.Uid(1)), b = M("b.mp3");
  bench_.ListView3.Fill(ListRows({{{TrackField::uid, one}, {TrackField::location, a}},
                                  {{TrackField::uid, two}, {TrackField::location, b}}}));
  bench_.ListView3.SelectOnly(1);
  bench_.playlist_in_view = true;
  Press();
  EXPECT_EQ(ListBytes("1.m3u"), "#EXTM3U\r\n" + M("b.mp3") + "\r\n");
  EXPECT_NE(bench_.ListView3.Cell(1, TrackField::lasttimeplayed), "");
  bench_.ListView3.ClearSelection();
  Press();
  EXPECT_EQ(world_.log.size(), 1U) << "nothing selected, nothing started";
}

TEST_F(Play, APlayerIsStartedWithTheWordsOfItsEntryAndItsOwn) {
  const ScopedEnvironment runtime("XDG_RUNTIME_DIR", "/run/me");
  const std::string socket = "--input-ipc-server=/run/me/tunemeadow-mpv";
  const std::string pseudo = "--player-operation-mode=pseudo-gui";
  const struct {
    const char* player;
    Texts entry;
    const char* file;
    Texts words;
  } cases[] = {
      {"/p/play", {}, "/l", {"/l"}},
      {"/p/play", {"-q", "%F", "--", "%i", "50%%"}, "/l", {"-q", "/l", "--", "50%"}},
      {"/p/play", {"--file=%f"}, "/l 1", {"--file=/l 1"}},
      {"/p/play", {"-x", "", "%c", "%"}, "/l", {"-x", "", "%", "/l"}},
      {"/p/play", {"-x", "%U"}, "", {"-x"}},
      {"/p/audacious", {"%U"}, "/l", {"/l"}},
      {"/p/vlc", {"--started-from-file", "%U"}, "/l", {"--started-from-file", "/l"}},
      {"/p/vlc", {}, "/l", {"--started-from-file", "/l"}},
      {"/p/mpv", {pseudo, "--", "%U"}, "/l", {socket, pseudo, "--", "/l"}},
      {"/p/mpv", {}, "", {pseudo, socket}},
      {"/x/exports/bin/io.mpv.Mpv", {}, "/l", {pseudo, "/l"}},
      {"/p/strawberry", {"%U"}, "/l", {"--load", "--play", "/l"}},
      {"/p/strawberry", {"%U"}, "", {}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(PlayerArguments(c.player, {{"x"}, c.entry}, c.file, *c.file != '\0'), c.words)
        << c.player;
  }
  EXPECT_EQ(PlayerArguments("/p/strawberry", {}, "/l", false), Texts{"/l"}) << "no list";
  AddRows({"a.mp3"});
  world_.entry = {{"env", "X=1", "play"}, {"--new", "%U"}};
  Press();
  EXPECT_EQ(world_.log, Texts{"start env [X=1] [/opt/player] [--new] [" + ListPath("1.m3u") + "]"});
}

TEST_F(Play, AListGoesToTheRunningPlayerThatTakesIt) {
  AddRows({"a #1.mp3", "b.mp3"});
  world_.takes_lists = true;
  Press();
  EXPECT_EQ(world_.log, Texts{"replace " + ListPath("1.m3u")});
  // A sandbox hides the temporary folder, and shows the user's own.
  const ScopedEnvironment cache("XDG_CACHE_HOME", folder_.Path("cache").c_str());
  const std::string list = "cache/tunemeadow-" + std::to_string(geteuid()) + "/1.m3u";
  session_.preferences.lblConfigWinamp = "/x/exports/bin/org.videolan.VLC";
  Press();
  EXPECT_EQ(world_.log.back(), "replace " + folder_.Path(list));
  EXPECT_EQ(folder_.Read(list),
            "#EXTM3U\r\n" + FileUrl(M("a #1.mp3")) + "\r\n" + FileUrl(M("b.mp3")) + "\r\n")
      << "this player would cut the path at the #";
}

TEST_F(Play, ManyStartsOfAPlayerAreAskedAboutOnce) {
  session_.PlayerKind = "Unknown";
  for (char name = 'a'; name < 'u'; ++name) AddRows({std::string(1, name) + ".mp3"});
  Press();
  EXPECT_EQ(world_.log.size(), 20U) << "without a question";
  AddRows({"v.wav"});
  Press();
  EXPECT_EQ(world_.log.size(), 41U) << "the desktop's program does not count";
  Run("update mp3sTabelle set lasttimeplayed=''");
  AddRows({"w.mp3"});
  Press({Answer::kNo});
  EXPECT_EQ(world_.log.size(), 41U);
  EXPECT_EQ(Stamps(), std::string(22, '0'));
  Press({Answer::kYes});
  EXPECT_EQ(world_.log.size(), 63U);
  EXPECT_EQ(interaction_.BoxTexts(),
            Texts(2,
                  "Play: Start player 21 times?\n\nTunemeadow does not know whether player takes "
                  "a list, so it is started once for each track."));
}

TEST_F(Play, AfterAPlayerThatDoesNotStartTheNextPlayLooksForOne) {
  const std::string failed =
      "player could not be started and plays nothing; the next play looks for a player again.";
  AddRows({"a.mp3"});
  interaction_.statuses.clear();
  world_.starts = false;
  Press();
  EXPECT_EQ(interaction_.statuses, Texts{failed});
  EXPECT_EQ(world_.associations_asked, 0);
  Press();
  EXPECT_EQ(interaction_.statuses, (Texts{failed, failed})) << "there is no other one";
  EXPECT_EQ(session_.preferences.lblConfigWinamp, "/opt/player") << "the choice stays";
  world_.starts = true;
  world_.associated = "/opt/found";
  Press();
  EXPECT_EQ(world_.log.back(), "start /opt/found [" + M("a.mp3") + "]") << "of an unknown kind";
  EXPECT_EQ(interaction_.statuses.back(),
            "found plays in the place of player, which could not be started.");
  Press();
  EXPECT_EQ(world_.associations_asked, 2) << "not after a start that went well";
  bench_.failed_player = "/opt/player";
  Press();
  EXPECT_EQ(world_.associations_asked, 2) << "another one has been chosen meanwhile";
}

TEST_F(Play, AFailureIsNoBoxAndNoneStopsTheOthers) {
  AddRows({"a.mp3", "b.mp3"});
  world_.starts = false;
  Press();
  session_.PlayerKind = "Unknown";
  Press();
  EXPECT_EQ(world_.log.size(), 3U);
  Run("update mp3sTabelle set lasttimeplayed=''");
  Fill();
  Run("alter table mp3sTabelle rename to gone");
  Press();
  EXPECT_EQ(world_.log.size(), 5U);
  EXPECT_EQ(bench_.ListView1.Cell(0, TrackField::lasttimeplayed), "") << "as in the catalogue";
  world_.throws = true;
  Press();
  session_.busy = true;
  RunCommand(session_, interaction_, [this] { cmdSpielen_Click(bench_); });
  EXPECT_TRUE(session_.busy);
  EXPECT_TRUE(interaction_.boxes.empty());
}

TEST_F(Play, RowsAreAppendedToTheRunningPlayerOneByOne) {
  AddRows({"a.wav", "-b.mp3", "c.mp3"});
  Append({Answer::kIgnore});
  EXPECT_EQ(world_.log, (Texts{"send window " + M("a.wav"), "send window " + M("c.mp3")}));
  EXPECT_EQ(Stamps(), "101");
  EXPECT_EQ(bench_.WinampWindow, "window");
  session_.preferences.lblConfigWinamp = "/opt/winamp/BPMStudio.exe";
  bench_.ListView1.SelectOnly(0);
  Append();
  EXPECT_EQ(world_.log.back(), "start /opt/winamp/BPMStudio.exe [" + M("a.wav") + "] [/ADD]");
}

TEST_F(Play, APlayerThatDoesNotRunIsStartedAndWaitedFor) {
  AddRows({"a.mp3", "b.mp3"});
  world_.finds_until_there = 40;
  Append();
  EXPECT_EQ(world_.log,
            (Texts{"start /opt/player", "send window " + M("a.mp3"), "send window " + M("b.mp3")}));
  EXPECT_GE(interaction_.yields, 40U) << "the window lives meanwhile";
}

TEST_F(Play, APlayerThatNeverComesIsToldOnce) {
  AddRows({"a.mp3", "b.mp3"});
  world_.finds_until_there = 1'000'000;
  Append({Answer::kOk});
  EXPECT_EQ(interaction_.BoxTexts(), Texts{"Tunemeadow: Unable to load WinAmp"});
  EXPECT_EQ(world_.finds, 1002) << "one look and 1001 tries";
  EXPECT_EQ(world_.log, Texts{"start /opt/player"}) << "nothing is sent";
  EXPECT_EQ(Stamps(), "11");
  world_.finds = 0;
  world_.starts = false;
  Append({Answer::kOk});
  EXPECT_EQ(world_.finds, 1) << "what did not start need not be waited for";
  world_.starts = true;
  interaction_.on_yield = [this](std::size_t) { session_.CancelRequested = true; };
  Append();
  EXPECT_EQ(world_.finds, 3) << "the end of the program does not wait for it";
}

TEST_F(Play, TheListLiesWhereNobodyElseCanReachIt) {
  const std::string folder = std::filesystem::path(ListPath("x")).parent_path();
  const auto path = WriteTempList("1.m3u", "one");
  ASSERT_TRUE(path);
  EXPECT_EQ(*path, ListPath("1.m3u"));
  struct stat status {};
  ASSERT_EQ(stat(folder.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700U);
  std::filesystem::remove(*path);
  const std::string victim = folder_.Write("victim", "mine");
  std::filesystem::create_symlink(victim, *path);
  ASSERT_EQ(WriteTempList("1.m3u", "two"), path);
  EXPECT_EQ(folder_.Read("victim"), "mine");
  // A folder that others can write to, or that is a link, is not ours.
  std::filesystem::permissions(folder, std::filesystem::perms::all);
  const auto other = WriteTempList("1.m3u", "three");
  ASSERT_TRUE(other && *other != *path);
  EXPECT_EQ(ListBytes("1.m3u"), "two");
  std::filesystem::remove_all(folder);
  std::filesystem::create_directory_symlink(folder_.Path("m"), folder);
  const auto beside = WriteTempList("1.m3u", "four");
  ASSERT_TRUE(beside && *beside != *path);
  const ScopedEnvironment nowhere("TMPDIR", folder_.Path("no").c_str());
  EXPECT_EQ(GetTempFolder(), folder_.Path("no"));
  EXPECT_FALSE(WriteTempList("1.m3u", "five"));
  const ScopedEnvironment too_long("TMPDIR", ("/" + std::string(254, 'x')).c_str());
  EXPECT_EQ(GetTempFolder(), "/tmp");
}

}  // namespace
}  // namespace tunemeadow
