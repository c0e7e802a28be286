// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/play.h"

#include <cstdint>
#include <exception>
#include <optional>
#include <string_view>

#include "core/dates.h"
#include "core/paths.h"
#include "core/text.h"
#include "playback/missing_file.h"
#include "playback/temp_list.h"
#include "run/busy.h"
#include "store/database.h"
#include "views/track_path.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr int kFindTries = 1001;

enum class KindOfPlayer { kNone, kWinamp, kSonique, kUnknown };

KindOfPlayer KindOf(const Session& session) {
  if (session.PlayerKind == "Winamp") return KindOfPlayer::kWinamp;
  if (session.PlayerKind == "Sonique") return KindOfPlayer::kSonique;
  return session.PlayerKind == "Unknown" ? KindOfPlayer::kUnknown : KindOfPlayer::kNone;
}

/// The row counts as played from now on, in the catalogue and in its cell. A statement that fails
/// leaves both.
void StampAsPlayed(Workbench& bench, std::size_t row) {
  ResultList& list = bench.ListInView();
  const std::string now = Now();
  try {
    bench.session.connection.Execute("Update mp3sTabelle set lasttimeplayed='" + now +
                                     "' where UID=" + std::to_string(list.Uid(row)));
  } catch (const DatabaseError&) {
    return;
  }
  list.SetCell(row, TrackField::lasttimeplayed, now);
  bench.Watcher().RowChanged(row);
}

/// The list that a player is started with: its text while it grows, then its file.
class PlayList {
 public:
  explicit PlayList(KindOfPlayer kind) : kind_(kind) {
    if (kind_ == KindOfPlayer::kWinamp) Line("#EXTM3U");
    if (kind_ == KindOfPlayer::kSonique) Line("[playlist]");
  }

  void Add(const std::string& path) {
    ++count_;
    if (kind_ == KindOfPlayer::kWinamp) Line(path);
    if (kind_ == KindOfPlayer::kSonique) Line("File" + std::to_string(count_) + "=" + path);
  }

  /// Writes the list and starts the player with it, if it holds anything.
  void Start(const std::string& player, ProcessStarter& processes) {
    if (count_ == 0 || kind_ == KindOfPlayer::kUnknown) return;
    if (kind_ == KindOfPlayer::kSonique) {
      Line("NumberOfEntries = " + std::to_string(count_));
      Line("Version = 2");
    }
    const std::optional<std::string> file =
        WriteTempList(kind_ == KindOfPlayer::kSonique ? "1.pls" : "1.m3u", text_);
    if (file) processes.Start(player, {*file});
  }

 private:
  void Line(std::string_view line) { text_.append(line).append(kLineEnd); }

  KindOfPlayer kind_;
  std::int64_t count_ = 0;
  std::string text_;
};

class PlayCommand {
 public:
  PlayCommand(Workbench& bench) : bench_(bench), kind_(KindOf(bench.session)), list_(kind_) {}

  void Run() {
    for (const std::size_t row : bench_.ListInView().SelectedRows()) {
      const std::string path = PathToPlay(bench_, row);
      const FileState state = LookForFile(bench_.interaction, path);
      if (state == FileState::kAborted) return;
      if (state == FileState::kIgnored) continue;
      StampAsPlayed(bench_, row);
      HandOver(path);
      bench_.interaction.KeepPainting();
    }
    list_.Start(preferences_.lblConfigWinamp, bench_.world.processes);
  }

 private:
  void HandOver(const std::string& path) {
    const bool for_player =
        kind_ != KindOfPlayer::kNone && HasOneOfExtensions(path, preferences_.txtpatternmp3files);
    if (!for_player) {
      bench_.world.shell.Open(path);
      return;
    }
    list_.Add(path);
    if (kind_ != KindOfPlayer::kUnknown) return;
    bench_.world.processes.Start(preferences_.lblConfigWinamp, {path});
  }

  Workbench& bench_;
  const Preferences& preferences_ = bench_.session.preferences;
  KindOfPlayer kind_;
  PlayList list_;
};

/// False: the command ends. `loadable` becomes false where the player cannot be loaded: it is not
/// tried again for the rows behind.
bool AppendRow(Workbench& bench, std::size_t row, bool& loadable) {
  const std::string path = PathOfRow(bench, row);
  const FileState state = LookForFile(bench.interaction, path);
  if (state == FileState::kAborted) return false;
  if (state == FileState::kIgnored) return true;
  const std::string& player = bench.session.preferences.lblConfigWinamp;
  if (FindNoCase(player, "STUDIO.EXE") != std::string_view::npos) {
    bench.world.processes.Start(player, {path, "/ADD"});
  } else if (loadable) {
    loadable = WinampAddFile(bench, path);
  }
  StampAsPlayed(bench, row);
  bench.interaction.Yield();
  return !bench.session.CancelRequested;
}

void AppendSelection(Workbench& bench) {
  bool loadable = true;
  for (const std::size_t row : bench.ListInView().SelectedRows()) {
    if (!AppendRow(bench, row, loadable)) return;
  }
}

template <typename Work>
void RunQuietly(Workbench& bench, Work work) noexcept {
  // A stamp for each of some thousand rows must not wait for the disk each time.
  const Busy busy(bench.session, bench.interaction, {.batch = true});
  bench.session.CancelRequested = false;
  try {
    work();
  } catch (const std::exception&) {
    // What went wrong belongs to one of the steps, and those fail in silence.
  }
}

}  // namespace

void cmdSpielen_Click(Workbench& bench) noexcept {
  RunQuietly(bench, [&] { PlayCommand(bench).Run(); });
}

void mnuAddToWinampsplaylist_Click(Workbench& bench) noexcept {
  RunQuietly(bench, [&] { AppendSelection(bench); });
}

bool WinampEnsureRunning(Workbench& bench) {
  const std::string& player = bench.session.preferences.lblConfigWinamp;
  bench.WinampWindow = bench.world.players.Find(player);
  if (!bench.WinampWindow.empty()) return true;
  const int tries = bench.world.processes.Start(player, {}) ? kFindTries : 0;
  for (int i = 0; i < tries && bench.WinampWindow.empty(); ++i) {
    bench.WinampWindow = bench.world.players.Find(player);
    bench.interaction.Yield();
    if (bench.session.CancelRequested) break;
  }
  if (!bench.WinampWindow.empty()) return true;
  if (!bench.session.CancelRequested) {
    bench.interaction.ShowMessage({.text = "Unable to load WinAmp"});
  }
  return false;
}

bool WinampAddFile(Workbench& bench, const std::string& path) {
  if (!WinampEnsureRunning(bench)) return false;
  (void)bench.world.players.Send(bench.WinampWindow, bench.session.preferences.lblConfigWinamp,
                                 path);
  return true;
}

}  // namespace tunemeadow
