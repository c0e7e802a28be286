// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/player_start.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "core/paths.h"
#include "core/text.h"
#include "platform/known_players.h"
#include "platform/mpv_socket.h"
#include "platform/player_detection.h"

namespace tunemeadow {
namespace {

std::string PlayerForEye(const std::string& player) {
  return DisplayPath(std::string(FileNamePart(player)));
}

/// One word of an entry. The codes of files become the file, which is `placed` then; those of the
/// entry itself (its name, its icon) are of no use here and go.
std::string FilledWord(std::string_view word, const std::string& file, bool& placed) {
  constexpr std::string_view kFileCodes = "fFuU";
  std::string filled;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (word[i] != '%' || i + 1 == word.size()) {
      filled += word[i];
    } else if (const char code = word[++i]; code == '%') {
      filled += '%';
    } else if (kFileCodes.find(code) != std::string_view::npos) {
      filled += file;
      placed = true;
    }
  }
  return filled;
}

/// What a known player is started with, before the words of its entry.
std::vector<std::string> OwnWords(const std::string& player, bool is_list) {
  const KnownPlayer* known = FindKnownPlayer(player);
  if (known == nullptr) return {};
  std::vector<std::string> words(known->start.begin(), known->start.end());
  if (is_list) words.insert(words.end(), known->list.begin(), known->list.end());
  const bool by_socket = known->adds_by == AddsBy::kSocket && CanAdd(player);
  if (by_socket && !MpvSocketPath().empty()) {
    words.push_back("--input-ipc-server=" + MpvSocketPath());
  }
  return words;
}

}  // namespace

std::vector<std::string> PlayerArguments(const std::string& player, const EntryWords& entry,
                                         const std::string& file, bool is_list) {
  std::vector<std::string> words = OwnWords(player, is_list);
  std::erase_if(words, [&](const std::string& word) {
    return std::find(entry.arguments.begin(), entry.arguments.end(), word) != entry.arguments.end();
  });
  bool placed = file.empty();
  for (const std::string& word : entry.arguments) {
    std::string filled = FilledWord(word, file, placed);
    if (!filled.empty() || word.empty()) words.push_back(std::move(filled));
  }
  if (!placed) words.push_back(file);
  return words;
}

bool StartPlayer(Workbench& bench, const std::string& file, bool is_list) {
  const std::string& player = bench.session.preferences.lblConfigWinamp;
  const EntryWords entry = bench.world.player_finder.WordsOf(player);
  std::vector<std::string> words = entry.program;
  // By the path that the person sees, whatever name the entry has for it.
  if (words.empty()) {
    words.push_back(player);
  } else {
    words.back() = player;
  }
  for (std::string& word : PlayerArguments(player, entry, file, is_list)) {
    words.push_back(std::move(word));
  }
  const std::string program = words.front();
  words.erase(words.begin());
  if (bench.world.processes.Start(program, words)) {
    bench.failed_player.clear();
    return true;
  }
  bench.failed_player = player;
  bench.interaction.SetStatus(PlayerForEye(player) +
                              " could not be started and plays nothing; the next play looks for a "
                              "player again.");
  return false;
}

void PlayListFile(Workbench& bench, const std::string& list) {
  const std::string& player = bench.session.preferences.lblConfigWinamp;
  if (!bench.world.players.Replace(player, list)) (void)StartPlayer(bench, list, true);
}

void DetectPlayerAgain(Workbench& bench) {
  std::string& player = bench.session.preferences.lblConfigWinamp;
  if (bench.failed_player.empty() || bench.failed_player != player) return;
  const std::string found = AssociatedPlayer(bench.world.player_finder);
  if (found.empty() || found == player) return;
  bench.interaction.SetStatus(PlayerForEye(found) + " plays in the place of " +
                              PlayerForEye(player) + ", which could not be started.");
  player = found;
  bench.session.PlayerKind = PlayerKindOf(player);
  bench.failed_player.clear();
}

}  // namespace tunemeadow
