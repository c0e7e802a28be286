// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/known_players.h"

#include <algorithm>
#include <array>

#include "core/paths.h"
#include "core/text.h"
#include "platform/program_path.h"

namespace tunemeadow {
namespace {

using Word = std::string_view;

constexpr std::array kEnqueue{Word("-e")};
constexpr std::array kVlcStart{Word("--started-from-file")};
constexpr std::array kVlcAdd{Word("--started-from-file"), Word("--playlist-enqueue")};
constexpr std::array kMpvStart{Word("--player-operation-mode=pseudo-gui")};
constexpr std::array kStrawberryList{Word("--load"), Word("--play")};
constexpr std::array kAppend{Word("--append")};
constexpr std::array kCelluloidAdd{Word("--enqueue")};

constexpr std::array kKnownPlayers{
    KnownPlayer{"audacious", true, AddsBy::kSwitch, {}, {}, kEnqueue},
    KnownPlayer{"qmmp", true, AddsBy::kSwitch, {}, {}, kEnqueue},
    KnownPlayer{"vlc", true, AddsBy::kSwitch, kVlcStart, {}, kVlcAdd, true},
    KnownPlayer{"mpv", true, AddsBy::kSocket, kMpvStart, {}, {}},
    KnownPlayer{"strawberry", true, AddsBy::kSwitch, {}, kStrawberryList, kAppend},
    KnownPlayer{"celluloid", true, AddsBy::kSwitch, {}, {}, kCelluloidAdd},
};

/// "qmmp" of "qmmp-1.6": the version is digits and points after a "-" or "_".
std::string_view WithoutVersion(std::string_view name) noexcept {
  const std::size_t last = name.find_last_not_of("0123456789.");
  const bool version = last != std::string_view::npos && last > 0 && last + 1 < name.size() &&
                       (name[last] == '-' || name[last] == '_');
  return version ? name.substr(0, last) : name;
}

const KnownPlayer* PlayerOfName(std::string_view name) noexcept {
  name = WithoutVersion(name);
  name.remove_prefix(name.rfind('.') + 1);  // npos + 1 is 0
  const auto known =
      std::find_if(kKnownPlayers.begin(), kKnownPlayers.end(),
                   [&](const KnownPlayer& player) { return EqualsNoCase(player.name, name); });
  return known == kKnownPlayers.end() ? nullptr : &*known;
}

}  // namespace

const KnownPlayer* FindKnownPlayer(const std::string& path) {
  const KnownPlayer* known = PlayerOfName(FileNamePart(path));
  return known != nullptr ? known : PlayerOfName(FileNamePart(RealPath(path)));
}

bool IsSandboxed(std::string_view path) noexcept {
  return path.find("/exports/bin/") != std::string_view::npos;
}

bool CanAdd(const std::string& path) {
  const KnownPlayer* known = FindKnownPlayer(path);
  if (known == nullptr) return FindNoCase(path, "WINAMP") != std::string_view::npos;
  return known->adds_by == AddsBy::kSwitch ||
         (known->adds_by == AddsBy::kSocket && !IsSandboxed(path));
}

}  // namespace tunemeadow
