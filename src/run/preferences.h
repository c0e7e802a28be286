// SPDX-License-Identifier: GPL-3.0-or-later
// The values behind the controls of frmPreferences, and the keys that the main window keeps beside
// them. One table of key, member, default and kind serves reading, writing and resetting.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "run/ini.h"

namespace tunemeadow {

/// All settings of the run, named as their controls. Paths are bytes; texts are UTF-8. The members
/// hold the defaults that apply where nothing is stored, but for those that depend on the machine
/// (player, database, CD drive, folder to scan), which the start fills in.
struct Preferences {
  // Main
  std::string lblConfigWinamp;  ///< path of the player, or kNoPlayer
  std::string lblConfigDB;      ///< path of the catalogue, or kOtherDatabase
  std::string sConnString;      ///< connection string; wins over lblConfigDB where it is not empty.
                                ///< Read from the file and never written: it is edited by hand
  std::string txtCDTag = "MP3-CD";
  bool chkAutoComment = true;
  std::string txtautocomment = "https://tunemeadow.example/";
  bool chkAlleEinlesen = true;
  bool chkBackup = true;
  bool chkRepair = true;
  bool chkWarn = true;
  bool chkWarnGlobal = true;
  // Import
  std::string lblScan;
  std::string txtPattern = "mp3;mp2";
  bool chkRekursiv = true;
  bool chkID3Read = true;
  bool chkID3v2Read = true;
  bool chkLyrics3 = true;
  bool optID3V2Versions = false;  ///< false: only 2.4.0, 2.3.0, 2.2.0; true: ignore subversion
  bool chkReadHiddenFiles = false;
  bool chkPreview = false;
  std::string lblPreviewPath;
  std::string txtPreviewSize;
  bool chkCapitalize = false;
  bool chkReplace = false;
  std::string txtReplaceevery = "_";
  std::string txtReplacewith = " ";
  // Playing
  std::string txtpatternmp3files = "mp3;mp2";
  std::string lblConfigCDROM;
  // Saving
  bool chkSaveTags = true;
  bool chkSaveTags11 = true;
  bool chkSaveTags23 = true;
  bool chkSaveLyrics1 = true;
  bool chkSaveLyrics2 = true;
  bool chkCapitalizeSave = false;
  bool chkReplaceSave = false;
  std::string txtReplaceeverySave = "_";
  std::string txtReplacewithSave = " ";
  bool chkaudiogalaxy = false;  ///< has no key: it lasts for the run only
  // MP3 En/Decoder
  int cboEncoder = 0;
  std::string lblEncoderPath;
  std::string txtEncoderParams;
  std::string txtDecoderParams;
  bool chkHidden = true;

  bool operator==(const Preferences&) const = default;
};

inline constexpr std::string_view kNoPlayer = "No MP3-Player";
inline constexpr std::string_view kOtherDatabase = "andere";

using PreferenceMember =
    std::variant<bool Preferences::*, int Preferences::*, std::string Preferences::*>;

/// One stored setting. Its default is the value of the member in a fresh Preferences. Booleans are
/// stored as "0" and "1".
struct PreferenceKey {
  std::string_view key;
  PreferenceMember member;
};

/// Every stored setting that a control of frmPreferences holds, in the order of the file.
[[nodiscard]] std::span<const PreferenceKey> PreferenceKeys() noexcept;

/// The settings of the file; the default where a key is missing, empty, or nothing that its kind of
/// setting can hold. A number other than zero and "True" are an "on" of a check box.
[[nodiscard]] Preferences ReadPreferences(const cINI& ini);

/// Writes every key in one replacement of the file; false if that failed.
bool WritePreferences(cINI& ini, const Preferences& preferences);

/// Text of one setting as the file holds it.
[[nodiscard]] std::string StoredText(const Preferences& preferences, const PreferenceKey& key);

}  // namespace tunemeadow
