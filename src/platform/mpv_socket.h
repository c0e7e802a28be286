// SPDX-License-Identifier: GPL-3.0-or-later
// The socket over which mpv takes commands, where it was started with it. mpv has no words for a
// file that is added to a running one.
#pragma once

#include <optional>
#include <span>
#include <string>

namespace tunemeadow {

/// Where the mpv that this user's play commands have started listens: in the folder of this login,
/// which nobody else can enter. Empty if there is no such folder.
[[nodiscard]] std::string MpvSocketPath();

/// Gives one command with its arguments, bytes. The answer as mpv gives it, a line of JSON; nullopt
/// where none listens, none answers within 300 ms, or the command fails.
std::optional<std::string> AskMpv(std::span<const std::string> words);

}  // namespace tunemeadow
