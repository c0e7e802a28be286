// SPDX-License-Identifier: GPL-3.0-or-later
// The players that are known by name: what each takes, and with which words. One line stands in the
// table for each player that was seen to do it.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tunemeadow {

/// How a player takes a file after those of its list, while what it plays goes on.
enum class AddsBy {
  kNothing,
  kSwitch,  ///< its program, called again with the words of `add` and the path
  kSocket,  ///< the socket that it was started with (platform/mpv_socket.h)
};

struct KnownPlayer {
  std::string_view name;  ///< of its program and of its process; on the bus in any case
  bool takes_list;        ///< one M3U file with all tracks, which it plays in their order
  AddsBy adds_by;
  std::span<const std::string_view> start;  ///< words after its program, whenever it is started
  std::span<const std::string_view> list;  ///< further ones where a list takes the place of its own
  std::span<const std::string_view> add;   ///< words before a path that is added
  bool urls_in_list = false;               ///< it would cut the path of a track at a "#"
};

/// The player that the path names; null for any other. What counts is the file's name, or that of
/// the file that a link leads to: in any case, without a version ("qmmp-1", "vlc-3.0"), and of a
/// reverse-domain name the last part ("org.videolan.VLC").
[[nodiscard]] const KnownPlayer* FindKnownPlayer(const std::string& path);

/// Whether the program is the door of a sandbox: BASE/exports/bin/NAME. Behind it the system's
/// temporary folder and the runtime folder are others than here.
[[nodiscard]] bool IsSandboxed(std::string_view path) noexcept;

/// Whether the player at this path, known or with "WINAMP" in its path in any case, takes files
/// after those of its list.
[[nodiscard]] bool CanAdd(const std::string& path);

}  // namespace tunemeadow
