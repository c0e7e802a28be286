// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/player_detection.h"

#include "core/text.h"
#include "platform/known_players.h"

namespace tunemeadow {
namespace {

bool ContainsNoCase(std::string_view text, std::string_view part) noexcept {
  return FindNoCase(text, part) != std::string_view::npos;
}

/// The program of a command line: quotes gone, and what follows an ".exe".
std::string PlayerOfCommand(std::string_view command) {
  constexpr std::string_view kExecutable = ".EXE";
  std::string player = ReplaceEach(command, "\"", "");
  const std::size_t extension = FindNoCase(player, kExecutable);
  if (extension != std::string::npos) player.resize(extension + kExecutable.size());
  return player;
}

}  // namespace

std::string PlayerKindOf(const std::string& path) {
  if (path.empty() || path == kNoPlayer) return {};
  if (ContainsNoCase(path, "WINAMP")) return "Winamp";
  if (ContainsNoCase(path, "SONIQUE")) return "Sonique";
  const KnownPlayer* known = FindKnownPlayer(path);
  if (known != nullptr && known->takes_list) return "Winamp";
  return "Unknown";
}

std::string AssociatedPlayer(PlayerFinder& finder) {
  return PlayerOfCommand(finder.AssociatedCommand());
}

void DetectPlayer(Session& session, PlayerFinder& finder, Interaction& interaction) {
  std::string& player = session.preferences.lblConfigWinamp;
  if (player.empty()) player = AssociatedPlayer(finder);
  if (player.empty()) {
    interaction.ShowMessage({.text = "No MP3-Player found.\nEnqueuing will be disabled.\n\n"
                                     "Check out preferencees to change your player.",
                             .title = "Warning"});
    player = kNoPlayer;
  }
  session.PlayerKind = PlayerKindOf(player);
}

}  // namespace tunemeadow
