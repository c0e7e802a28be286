// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mpris_player_qt.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QStringList>
#include <QThread>
#include <optional>
#include <string_view>
#include <vector>

#include "core/paths.h"
#include "core/text.h"
#include "files/environment.h"
#include "files/file_facts.h"
#include "platform/file_urls.h"
#include "platform/known_players.h"
#include "platform/mpv_socket.h"
#include "platform/running_programs.h"

namespace tunemeadow {
namespace {

constexpr int kAnswerMilliseconds = 300;
constexpr int kSilenceMilliseconds = 600'000;
constexpr int kSenderMilliseconds = 2000;
constexpr int kPauseMilliseconds = 5;
constexpr double kSecondsUntilReady = 1;

constexpr char kPlayerPrefix[] = "org.mpris.MediaPlayer2.";
constexpr char kPlayerObject[] = "/org/mpris/MediaPlayer2";
constexpr char kRootInterface[] = "org.mpris.MediaPlayer2";
constexpr char kTrackListInterface[] = "org.mpris.MediaPlayer2.TrackList";
constexpr char kNoTrack[] = "/org/mpris/MediaPlayer2/TrackList/NoTrack";

/// Empty if there is no bus: the library would then try to start one, or complain.
QString AddressOfBus() {
  const std::string address = EnvironmentText("DBUS_SESSION_BUS_ADDRESS");
  if (!address.empty()) return QString::fromStdString(address);
  const std::string socket = JoinPath(EnvironmentText("XDG_RUNTIME_DIR"), "bus");
  return socket.starts_with('/') && MyFileExists(socket)
             ? "unix:path=" + QString::fromStdString(socket)
             : QString();
}

/// A connection of our own: the one that the window library shares is made once and for all.
QDBusConnection Bus(const QString& connection) {
  // A bus that does not greet us holds the call up for long: it is not asked again at once.
  static QDeadlineTimer silent_until(0);
  QDBusConnection bus(connection);
  const QString address = AddressOfBus();
  if (bus.isConnected() || address.isEmpty() || !silent_until.hasExpired()) return bus;
  QDBusConnection::disconnectFromBus(connection);
  QElapsedTimer asked;
  asked.start();
  QDBusConnection made = QDBusConnection::connectToBus(address, connection);
  const bool slow = asked.elapsed() > kAnswerMilliseconds;
  if (!made.isConnected() && slow) silent_until = QDeadlineTimer(kSilenceMilliseconds);
  return made;
}

/// The answer's values; nullopt if none came in time.
std::optional<QList<QVariant>> Ask(const QString& connection, const QDBusMessage& question) {
  const QDBusConnection bus = Bus(connection);
  if (!bus.isConnected()) return std::nullopt;
  const QDBusMessage answer = bus.call(question, QDBus::Block, kAnswerMilliseconds);
  if (answer.type() != QDBusMessage::ReplyMessage) return std::nullopt;
  return answer.arguments();
}

QVariant Property(const QString& connection, const QString& name, const char* interface,
                  const char* property) {
  QDBusMessage question = QDBusMessage::createMethodCall(name, QLatin1String(kPlayerObject),
                                                         "org.freedesktop.DBus.Properties", "Get");
  question << QString(QLatin1String(interface)) << QString(QLatin1String(property));
  const auto answer = Ask(connection, question);
  if (!answer || answer->isEmpty()) return {};
  return answer->first().value<QDBusVariant>().variant();
}

/// The player's name on the bus; a second one of the same kind has ".instance123" after it.
std::string NameOnBus(const QString& connection, const std::string& player) {
  const auto answer = Ask(
      connection, QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                 "org.freedesktop.DBus", "ListNames"));
  if (!answer || answer->isEmpty()) return {};
  const KnownPlayer* known = FindKnownPlayer(player);
  const std::string_view own = known == nullptr ? FileNamePart(player) : known->name;
  const std::string wanted = Lower(kPlayerPrefix + std::string(own));
  for (const QString& each : answer->first().toStringList()) {
    std::string name = each.toStdString();
    const std::string lower = Lower(name);
    if (lower == wanted || lower.starts_with(wanted + ".")) return name;
  }
  return {};
}

/// The process of the program, or of a known player by its name: a sandbox or a link hides the
/// file.
std::optional<RunningProgram> ProcessOf(const std::string& player) {
  const auto process = FindRunningProgram(player);
  const KnownPlayer* known = FindKnownPlayer(player);
  if (process || known == nullptr) return process;
  return FindRunningProgram(std::string(known->name));
}

bool SpeaksOverSocket(const std::string& player) {
  const KnownPlayer* known = FindKnownPlayer(player);
  return known != nullptr && known->adds_by == AddsBy::kSocket;
}

bool TellMpv(const std::vector<std::string>& words) { return AskMpv(words).has_value(); }

bool EditsTracks(const QString& connection, const QString& name) {
  return Property(connection, name, kRootInterface, "HasTrackList").toBool() &&
         Property(connection, name, kTrackListInterface, "CanEditTracks").toBool();
}

/// After the last track of the list.
bool AddTrack(const QString& connection, const QString& name, const std::string& path) {
  QDBusObjectPath last{QLatin1String(kNoTrack)};
  const auto tracks =
      qdbus_cast<QList<QDBusObjectPath>>(Property(connection, name, kTrackListInterface, "Tracks"));
  if (!tracks.isEmpty()) last = tracks.last();
  QDBusMessage question = QDBusMessage::createMethodCall(
      name, QLatin1String(kPlayerObject), QLatin1String(kTrackListInterface), "AddTrack");
  question << QString::fromStdString(FileUrl(path)) << QVariant::fromValue(last) << false;
  return Ask(connection, question).has_value();
}

}  // namespace

MprisPlayer::MprisPlayer(ProcessStarter& processes)
    : connection_(QStringLiteral("players-%1").arg(reinterpret_cast<quintptr>(this))),
      processes_(processes) {}

MprisPlayer::~MprisPlayer() { QDBusConnection::disconnectFromBus(connection_); }

std::string MprisPlayer::Find(const std::string& player) {
  if (player.empty()) return {};
  if (SpeaksOverSocket(player)) {
    if (TellMpv({"get_property", "pid"})) return MpvSocketPath();
  } else {
    if (std::string name = NameOnBus(connection_, player); !name.empty()) return name;
    const auto process = ProcessOf(player);
    if (process && process->seconds >= kSecondsUntilReady) return std::to_string(process->id);
  }
  QThread::msleep(kPauseMilliseconds);
  return {};
}

bool MprisPlayer::Replace(const std::string& player, const std::string& list) {
  return SpeaksOverSocket(player) && TellMpv({"loadlist", list, "replace"}) &&
         TellMpv({"set", "pause", "no"});
}

bool MprisPlayer::Send(const std::string& window, const std::string& player,
                       const std::string& path) {
  if (SpeaksOverSocket(player)) return TellMpv({"loadfile", path, "append-play"});
  if (window.starts_with(kPlayerPrefix)) {
    const QString name = QString::fromStdString(window);
    const auto known = edits_.find(window);
    const bool edits = known == edits_.end() ? EditsTracks(connection_, name) : known->second;
    edits_[window] = edits && AddTrack(connection_, name, path);
    if (edits_[window]) return true;
  }
  return SendBySwitch(player, path);
}

/// Waits for the end of the program, so that files arrive in the order in which they were sent.
bool MprisPlayer::SendBySwitch(const std::string& player, const std::string& path) {
  const KnownPlayer* known = FindKnownPlayer(player);
  std::vector<std::string> words{"-e"};
  if (known != nullptr) words.assign(known->add.begin(), known->add.end());
  words.push_back(path);
  if (hangs_) return processes_.Start(player, words);
  const Ended ended = processes_.StartAndWait(player, words, kSenderMilliseconds);
  hangs_ = ended == Ended::kRunsOn;
  return ended != Ended::kNotStarted;
}

}  // namespace tunemeadow
