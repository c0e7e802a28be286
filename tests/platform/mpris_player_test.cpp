// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QThread>
#include <QUrl>
#include <array>
#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

#include "files/descriptor.h"
#include "files/durable_file.h"
#include "platform/mpris_player_qt.h"
#include "platform/mpv_socket.h"
#include "platform/process_posix.h"
#include "support/scoped_environment.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

/// A session bus of the test's own.
class PrivateBus {
 public:
  PrivateBus() {
    daemon_.setStandardErrorFile(QProcess::nullDevice());
    daemon_.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
    if (!daemon_.waitForReadyRead(10'000)) ADD_FAILURE() << "no dbus-daemon";
    address_ = daemon_.readLine().trimmed();
  }
  ~PrivateBus() {
    daemon_.kill();
    daemon_.waitForFinished();
  }
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;
  [[nodiscard]] const QByteArray& Address() const { return address_; }

 private:
  QProcess daemon_;
  QByteArray address_;
};

/// A player on the bus, by the rules of MPRIS 2. Lives in a thread of its own, as another program
/// would.
class BusPlayer : public QDBusVirtualObject {
 public:
  bool edits = true;
  bool answers = true;
  QList<QDBusObjectPath> tracks;
  std::vector<std::string> calls;

  QString introspect(const QString& /*path*/) const override { return {}; }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    if (!answers) return true;
    const QList<QVariant> arguments = message.arguments();
    if (message.member() == "AddTrack") {
      calls.push_back(arguments.at(0).toString().toStdString() + " after " +
                      arguments.at(1).value<QDBusObjectPath>().path().toStdString());
      tracks.append(QDBusObjectPath("/t/" + QString::number(tracks.size() + 1)));
      return bus.send(message.createReply());
    }
    const QVariant value =
        arguments.value(1) == "Tracks" ? QVariant::fromValue(tracks) : QVariant(edits);
    return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
  }
};

/// Without a session bus, unless a test brings one; the runtime folder is the test's own.
class MprisPlayerTest : public testing::Test {
 protected:
  std::string Program(const std::string& name, const std::string& script) {
    std::string path = folder_.Write(name, "#!/bin/sh\ncd \"$(dirname \"$0\")\"\n" + script);
    EXPECT_EQ(chmod(path.c_str(), 0755), 0);
    return path;
  }
  /// A program that logs its arguments.
  std::string LoggingPlayer(const std::string& name) {
    return Program(name, "printf '[%s]' \"$@\" >> log\n");
  }

  const TempFolder folder_;
  const ScopedEnvironment no_bus_{"DBUS_SESSION_BUS_ADDRESS", nullptr};
  const ScopedEnvironment runtime_{"XDG_RUNTIME_DIR", folder_.Path().c_str()};
  PosixProcessStarter processes_;
  MprisPlayer port_{processes_};
};

TEST_F(MprisPlayerTest, WithoutABusAPlayerIsItsProcess) {
  const std::string player = LoggingPlayer("tm-a-player");
  EXPECT_EQ(port_.Find(player), "");
  EXPECT_EQ(port_.Find(""), "");
  EXPECT_TRUE(port_.Send("123", player, "/m/a \"1\" \xFF.mp3"));
  EXPECT_TRUE(port_.Send("org.mpris.MediaPlayer2.gone", player, "/m/b.mp3"));
  EXPECT_EQ(folder_.Read("log"), "[-e][/m/a \"1\" \xFF.mp3][-e][/m/b.mp3]")
      << "one behind the other";
  EXPECT_FALSE(port_.Send("123", folder_.Path("missing"), "/m/a.mp3"));
}

TEST_F(MprisPlayerTest, APlayerThatDoesNotComeBackIsWaitedForOnce) {
  folder_.Write("go on");
  const std::string player = Program("tm-hangs", "while [ -e 'go on' ]; do sleep 0.1; done\n");
  const auto before = std::chrono::steady_clock::now();
  for (int i = 0; i < 20; ++i) EXPECT_TRUE(port_.Send("1", player, "/m/a.mp3"));
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(30))
      << "a wait for each of them would take longer";
  EXPECT_NE(port_.Find(player), "") << "it has run for two seconds, so it is found";
  std::filesystem::remove(folder_.Path("go on"));
}

/// What listens at the end of mpv's socket: it says yes to each command but one.
class FakeMpv {
 public:
  FakeMpv() {
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    MpvSocketPath().copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(bind(end_.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(end_.get(), 5), 0);
    thread_ = std::thread([this] {
      for (;;) {
        const Descriptor client(accept(end_.get(), nullptr, nullptr));
        std::array<char, 4096> bytes{};
        const ssize_t got = recv(client.get(), bytes.data(), bytes.size(), 0);
        if (got <= 0) return;
        log.emplace_back(bytes.data(), static_cast<std::size_t>(got));
        const std::string error =
            log.back().find("loadlist") == std::string::npos ? "success" : "x";
        const std::string answer =
            "{\"event\":\"idle\"}\n{\"data\":1,\"request_id\":71,\"error\":\"" + error + "\"}\n";
        send(client.get(), answer.data(), answer.size(), MSG_NOSIGNAL);
      }
    });
  }
  ~FakeMpv() {
    shutdown(end_.get(), SHUT_RDWR);
    thread_.join();
  }
  FakeMpv(const FakeMpv&) = delete;
  FakeMpv& operator=(const FakeMpv&) = delete;

  std::vector<std::string> log;

 private:
  Descriptor end_{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  std::thread thread_;
};

TEST_F(MprisPlayerTest, AKnownPlayerIsGivenAFileInItsOwnWay) {
  EXPECT_TRUE(port_.Send("1", LoggingPlayer("vlc"), "/m/a.mp3"));
  EXPECT_TRUE(port_.Send("1", LoggingPlayer("strawberry"), "/m/b.mp3"));
  EXPECT_EQ(folder_.Read("log"),
            "[--started-from-file][--playlist-enqueue][/m/a.mp3][--append][/m/b.mp3]");
  const std::string mpv = LoggingPlayer("mpv");
  EXPECT_EQ(port_.Find(mpv), "");
  EXPECT_FALSE(port_.Send("1", mpv, "/m/c.mp3")) << "none listens";
  EXPECT_FALSE(port_.Replace(folder_.Path("vlc"), "/l.m3u"));
  const FakeMpv fake;
  EXPECT_EQ(port_.Find(mpv), folder_.Path("tunemeadow-mpv"));
  EXPECT_TRUE(port_.Send(MpvSocketPath(), mpv, "/m/\"\\\n\xFF.mp3"));
  EXPECT_FALSE(port_.Replace(mpv, "/l.m3u")) << "it says no";
  const std::string end = "],\"request_id\":71}\n";
  EXPECT_EQ(fake.log,
            (std::vector<std::string>{
                R"({"command":["get_property","pid")" + end,
                "{\"command\":[\"loadfile\",\"/m/\\\"\\\\\\u000a\xFF.mp3\",\"append-play\"" + end,
                R"({"command":["loadlist","/l.m3u","replace")" + end}));
}

TEST_F(MprisPlayerTest, AFileGoesBehindTheLastTrackOfAListThatTakesIt) {
  const PrivateBus daemon;
  const std::string program = LoggingPlayer("Some-Player");
  const ScopedEnvironment address("DBUS_SESSION_BUS_ADDRESS", daemon.Address().constData());
  QDBusConnection bus = QDBusConnection::connectToBus(QString(daemon.Address()), "player");
  QThread thread;
  BusPlayer player;
  player.moveToThread(&thread);
  thread.start();
  ASSERT_TRUE(bus.registerVirtualObject("/org/mpris/MediaPlayer2", &player));
  EXPECT_EQ(port_.Find(program), "");
  ASSERT_TRUE(bus.registerService("org.mpris.MediaPlayer2.some-player.instance7"));
  const std::string window = port_.Find(program);
  EXPECT_EQ(window, "org.mpris.MediaPlayer2.some-player.instance7");
  EXPECT_EQ(port_.Find(folder_.Path("some")), "") << "another player's name begins like this";

  EXPECT_TRUE(port_.Send(window, program, "/m/a #1.mp3"));
  EXPECT_TRUE(port_.Send(window, program, "/m/\xFF.mp3"));
  EXPECT_EQ(player.calls,
            (std::vector<std::string>{
                "file:///m/a%20%231.mp3 after /org/mpris/MediaPlayer2/TrackList/NoTrack",
                "file:///m/%FF.mp3 after /t/1"}));
  EXPECT_FALSE(ReadWholeFile(folder_.Path("log"))) << "its program is not needed";

  // One that has stopped answering, and one that keeps its list to itself.
  player.answers = false;
  EXPECT_TRUE(port_.Send(window, program, "/m/b.mp3"));
  EXPECT_EQ(folder_.Read("log"), "[-e][/m/b.mp3]");
  player.answers = true;
  player.edits = false;
  EXPECT_TRUE(MprisPlayer(processes_).Send(window, program, "/m/c.mp3"));
  EXPECT_EQ(folder_.Read("log"), "[-e][/m/b.mp3][-e][/m/c.mp3]");
  EXPECT_EQ(player.calls.size(), 2U);
  thread.quit();
  thread.wait();
  QDBusConnection::disconnectFromBus("player");
}

}  // namespace
}  // namespace tunemeadow
