// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/play.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <string_view>
#include <vector>

#include "core/dates.h"
#include "core/paths.h"
#include "core/text.h"
#include "platform/file_urls.h"
#include "platform/known_players.h"
#include "playback/missing_file.h"
#include "playback/player_start.h"
#include "playback/temp_list.h"
#include "run/busy.h"
#include "store/database.h"
#include "views/track_path.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr int kFindTries = 1001;
constexpr std::ptrdiff_t kStartsWithoutQuestion = 20;

enum class KindOfPlayer { kNone, kWinamp, kSonique, kUnknown };

KindOfPlayer KindOf(const Session& session) {
  if (session.PlayerKind == "Winamp") return KindOfPlayer::kWinamp;
  if (session.PlayerKind == "Sonique") return KindOfPlayer::kSonique;
  return session.PlayerKind == "Unknown" ? KindOfPlayer::kUnknown : KindOfPlayer::kNone;
}

/// Whether the player reads the paths of a list as URLs.
bool WantsUrls(const Session& session) {
  const KnownPlayer* known = FindKnownPlayer(session.preferences.lblConfigWinamp);
  return known != nullptr && known->urls_in_list;
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
  PlayList(KindOfPlayer kind, bool urls) : kind_(kind), urls_(urls) {
    if (kind_ == KindOfPlayer::kWinamp) Line("#EXTM3U");
    if (kind_ == KindOfPlayer::kSonique) Line("[playlist]");
  }

  void Add(const std::string& path) {
    ++count_;
    if (kind_ == KindOfPlayer::kWinamp) Line(urls_ ? FileUrl(path) : path);
    if (kind_ == KindOfPlayer::kSonique) Line("File" + std::to_string(count_) + "=" + path);
  }

  /// Writes the list and has the player play it, if it holds anything.
  void Play(Workbench& bench) {
    if (count_ == 0 || kind_ == KindOfPlayer::kUnknown) return;
    if (kind_ == KindOfPlayer::kSonique) {
      Line("NumberOfEntries = " + std::to_string(count_));
      Line("Version = 2");
    }
    const std::string& player = bench.session.preferences.lblConfigWinamp;
    const std::optional<std::string> file =
        WriteTempList(kind_ == KindOfPlayer::kSonique ? "1.pls" : "1.m3u", text_,
                      IsSandboxed(player) ? GetCacheFolder() : GetTempFolder());
    if (file) PlayListFile(bench, *file);
  }

 private:
  void Line(std::string_view line) { text_.append(line).append(kLineEnd); }

  KindOfPlayer kind_;
  bool urls_;
  std::int64_t count_ = 0;
  std::string text_;
};

class PlayCommand {
 public:
  PlayCommand(Workbench& bench)
      : bench_(bench), kind_(KindOf(bench.session)), list_(kind_, WantsUrls(bench.session)) {}

  void Run() {
    if (!MayStartThatOften()) return;
    for (const std::size_t row : bench_.ListInView().SelectedRows()) {
      const std::string path = PathToPlay(bench_, row);
      const FileState state = LookForFile(bench_.interaction, path);
      if (state == FileState::kAborted) return;
      if (state == FileState::kIgnored) continue;
      StampAsPlayed(bench_, row);
      HandOver(path);
      bench_.interaction.KeepPainting();
    }
    list_.Play(bench_);
  }

 private:
  [[nodiscard]] bool IsForPlayer(const std::string& path) const {
    return kind_ != KindOfPlayer::kNone &&
           HasOneOfExtensions(path, preferences_.txtpatternmp3files);
  }

  /// Asks before a player that takes no list is started for very many tracks.
  bool MayStartThatOften() {
    const std::vector<std::size_t> rows = bench_.ListInView().SelectedRows();
    if (kind_ != KindOfPlayer::kUnknown || std::ssize(rows) <= kStartsWithoutQuestion) return true;
    const auto starts = std::count_if(rows.begin(), rows.end(), [this](std::size_t row) {
      return IsForPlayer(PathToPlay(bench_, row));
    });
    if (starts <= kStartsWithoutQuestion) return true;
    const std::string name = DisplayPath(FileNamePart(preferences_.lblConfigWinamp));
    const std::string text = "Start " + name + ' ' + std::to_string(starts) +
                             " times?\n\nTunemeadow does not know whether " + name +
                             " takes a list, so it is started once for each track.";
    return bench_.interaction.ShowMessage({.text = text,
                                           .title = "Play",
                                           .icon = Icon::kQuestion,
                                           .buttons = Buttons::kYesNo}) == Answer::kYes;
  }

  void HandOver(const std::string& path) {
    if (!IsForPlayer(path)) {
      bench_.world.shell.Open(path);
      return;
    }
    list_.Add(path);
    if (kind_ != KindOfPlayer::kUnknown) return;
    (void)StartPlayer(bench_, path);
  }

  Workbench& bench_;
  const Preferences& preferences_ = bench_.session.preferences;
  KindOfPlayer kind_;
  PlayList list_;
};

/// False: the command ends. `loadable` becomes false if the player cannot be loaded: it is not
/// tried again for the rows that follow.
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
  RunQuietly(bench, [&] {
    DetectPlayerAgain(bench);
    PlayCommand(bench).Run();
  });
}

void mnuAddToWinampsplaylist_Click(Workbench& bench) noexcept {
  RunQuietly(bench, [&] { AppendSelection(bench); });
}

bool WinampEnsureRunning(Workbench& bench) {
  const std::string& player = bench.session.preferences.lblConfigWinamp;
  bench.WinampWindow = bench.world.players.Find(player);
  if (!bench.WinampWindow.empty()) return true;
  const int tries = StartPlayer(bench) ? kFindTries : 0;
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
