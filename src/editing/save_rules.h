// SPDX-License-Identifier: GPL-3.0-or-later
// The rules that a text passes on its way from the editor into tags and row. Pure: no file, no
// statement, no window.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "run/interaction.h"
#include "run/preferences.h"

namespace tunemeadow {

/// The checks of a field that loses the focus after the person has changed it: the box to be shown,
/// the focus then goes back; nullopt if the text may stand. Empty texts may.
[[nodiscard]] std::optional<MessageBox> CheckTracknumber(std::string_view text);
[[nodiscard]] std::optional<MessageBox> CheckYear(std::string_view text);

/// Title, artist and album: Capitalize, then Replace each/with, each where its setting is on.
[[nodiscard]] std::string ApplySaveRules(std::string text, const Preferences& preferences);

/// A text of the editor for use between two `quote` characters of an update: with the delimiter '
/// every ' becomes ", otherwise every " becomes ''.
[[nodiscard]] std::string EscapeEditorText(std::string_view text, char quote);

/// Seconds of "m:ss"; 0 for a text without ":".
[[nodiscard]] std::int64_t PlaytimeSeconds(std::string_view playtime);

/// The code of a file name: the name without what follows its last ".", of which each capital
/// A to Z gives the first digit of its place in the alphabet.
[[nodiscard]] std::string makeaudiogalaxytag(std::string_view name);

}  // namespace tunemeadow
