// SPDX-License-Identifier: GPL-3.0-or-later
// The settings of the import as its dialog handles them: a part of the preferences. The import
// itself always reads the preferences of the session, never the dialog.
#pragma once

#include <array>
#include <string_view>

#include "run/interaction.h"
#include "run/session.h"

namespace tunemeadow {

/// Keys of the settings that frmImport shows, each the name of a member of Preferences.
inline constexpr std::array<std::string_view, 15> kImportKeys = {
    "lblScan",          "txtPattern",         "chkRekursiv", "chkID3Read",      "chkID3v2Read",
    "chkLyrics3",       "chkReadHiddenFiles", "chkPreview",  "lblPreviewPath",  "txtPreviewSize",
    "optID3V2Versions", "chkCapitalize",      "chkReplace",  "txtReplaceevery", "txtReplacewith"};

/// What the OK button of frmImport does with the values of its controls, of which only those of
/// kImportKeys count: a drive letter at the start of lblScan becomes upper case, and all of them go
/// into the preferences of the session and into the settings file.
///
/// False, after a box, where previews are wanted without a folder or a size for them; nothing is
/// changed then and the dialog stays. A settings file that cannot be written is not told.
[[nodiscard]] bool SaveImportOptions(Session& session, Interaction& interaction,
                                     const Preferences& controls);

}  // namespace tunemeadow
