// SPDX-License-Identifier: GPL-3.0-or-later
// What the dialog of the settings does with their values: which of them fit together, which boxes
// depend on which, what is written when.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "run/interaction.h"
#include "run/session.h"

namespace tunemeadow {

/// One entry of cboEncoder. The templates hold the placeholders %Bitrate%, %Inputfile% and
/// %Outputfile%.
struct EncoderEntry {
  std::string_view text;
  std::string_view encode;
  std::string_view decode;
};

/// By index; the first entry is empty: no encoder.
inline constexpr std::array<EncoderEntry, 8> kEncoders{{
    {"", "", ""},
    {"bladeenc.exe", "-%Bitrate% -quit %Inputfile% %Outputfile%", ""},
    {"lame.exe", "-S -b %Bitrate% -m s %Inputfile% %Outputfile%",
     "--decode -S -b 128 -m s %Inputfile% %Outputfile%"},
    {"mp3enc31.exe (MPEG Layer-3 Encoder V3.1 by Fraunhofer IIS-A)",
     // Without a bit rate, and with a blank at the end: this program is called so.
     "-br 128000 -if %Inputfile% -of %Outputfile% ", "%Inputfile% %Outputfile% -wav"},
    {"l3dec.exe (ISO-MPEG Audio Layer 3 software only Decoder)", "",
     "%Inputfile% %Outputfile% -wav"},
    {"another program (.exe)", "", ""},
    {"lame_enc.DLL (must be in Tunemeadow folder)", "", ""},
    {"bladeenc.dll (must be in Tunemeadow folder)", "", ""},
}};

/// The entry of an index as it is stored; the empty one for an index that the list does not have.
[[nodiscard]] const EncoderEntry& EncoderOf(int index) noexcept;

/// Whether the entry is a library, with neither a program to look for nor templates to fill.
[[nodiscard]] bool IsLibraryEncoder(int index) noexcept;

/// The choice of an entry of cboEncoder: its templates take the place of those that stood there; a
/// library empties the location too. The empty entry leaves them alone.
void ChooseEncoder(Preferences& preferences, int index);

/// Which controls of the page "Saving" take input.
struct SavingControls {
  bool chkSaveTags11 = true;
  bool chkSaveTags23 = true;
  bool lyrics_label = true;
  bool chkSaveLyrics1 = true;
  bool chkSaveLyrics2 = true;
};
[[nodiscard]] SavingControls EnabledSavingControls(bool chkSaveTags, bool chkSaveTags23) noexcept;

/// Whether saves write the LYRICS3 tag over the last 128 bytes of sound of a file that has no ID3v1
/// tag: they write no ID3v1 tag first, which the LYRICS3 tag would stand before.
[[nodiscard]] bool WritesOverSound(bool chkSaveTags, bool chkSaveTags11,
                                   bool chkSaveLyrics2) noexcept;

/// What does not fit together.
struct PreferenceVerdict {
  std::vector<std::string> messages;  ///< in the order in which they are shown
  bool stays_open = false;            ///< the dialog is not done
};

/// The checks of OK. The first one that fails is told and keeps the dialog open; a lonely template
/// of the encoder is told and is no reason to stay.
[[nodiscard]] PreferenceVerdict ValidatePreferences(const Preferences& preferences);

/// OK of frmPreferences with the values of its controls: they become those of the session and are
/// written whatever they are, `firstrun` as "1" with them, in one replacement of the file; then
/// they are checked. A database other than `database_before` is told to need a new start. A file
/// that cannot be written is not told. True if the dialog may close.
[[nodiscard]] bool ConfirmPreferences(Session& session, Interaction& interaction,
                                      const Preferences& controls,
                                      const std::string& database_before);

/// OK of the welcome: writes what the first start has found (player, database, CD drive, folder of
/// the import) and `firstrun` as "1".
void ConfirmFirstRun(Session& session);

inline constexpr std::string_view kPathTooLong = "the path is longer than 255 characters";

/// Whether the settings file can hold the path. It cuts a value at 255 characters, so a longer path
/// would come back as another one.
[[nodiscard]] bool PathFitsSettings(std::string_view path) noexcept;

/// What the person is told of a path that does not fit.
[[nodiscard]] MessageBox PathTooLongBox(std::string_view path);

}  // namespace tunemeadow
