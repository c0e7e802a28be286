// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/preferences.h"

#include <array>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

#include "core/numbers.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

using P = Preferences;

constexpr std::array kPreferenceKeys = std::to_array<PreferenceKey>({
    {"lblConfigWinamp", &P::lblConfigWinamp},
    {"lblConfigDB", &P::lblConfigDB},
    {"txtPattern", &P::txtPattern},
    {"txtpatternmp3files", &P::txtpatternmp3files},
    {"txtCDTag", &P::txtCDTag},
    {"txtautocomment", &P::txtautocomment},
    {"chkAutoComment", &P::chkAutoComment},
    {"chkWarn", &P::chkWarn},
    {"chkWarnGlobal", &P::chkWarnGlobal},
    {"chkRekursiv", &P::chkRekursiv},
    {"chkID3Read", &P::chkID3Read},
    {"chkID3v2Read", &P::chkID3v2Read},
    {"chkLyrics3", &P::chkLyrics3},
    {"optID3V2Versions", &P::optID3V2Versions},
    {"chkReadHiddenFiles", &P::chkReadHiddenFiles},
    {"lblScan", &P::lblScan},
    {"chkCapitalize", &P::chkCapitalize},
    {"chkReplace", &P::chkReplace},
    {"txtReplaceevery", &P::txtReplaceevery},
    {"txtReplacewith", &P::txtReplacewith},
    {"chkCapitalizeSave", &P::chkCapitalizeSave},
    {"chkReplaceSave", &P::chkReplaceSave},
    {"txtReplaceeverySave", &P::txtReplaceeverySave},
    {"txtReplacewithSave", &P::txtReplacewithSave},
    {"chkPreview", &P::chkPreview},
    {"lblPreviewPath", &P::lblPreviewPath},
    {"txtPreviewSize", &P::txtPreviewSize},
    {"chkSaveTags", &P::chkSaveTags},
    {"chkSaveTags11", &P::chkSaveTags11},
    {"chkSaveTags23", &P::chkSaveTags23},
    {"chkSaveLyrics1", &P::chkSaveLyrics1},
    {"chkSaveLyrics2", &P::chkSaveLyrics2},
    {"chkAlleEinlesen", &P::chkAlleEinlesen},
    {"chkBackup", &P::chkBackup},
    {"chkRepair", &P::chkRepair},
    {"lblConfigCDROM", &P::lblConfigCDROM},
    {"cboEncoder", &P::cboEncoder},
    {"lblEncoderPath", &P::lblEncoderPath},
    {"txtEncoderParams", &P::txtEncoderParams},
    {"txtDecoderParams", &P::txtDecoderParams},
    {"chkHidden", &P::chkHidden},
});

/// Each Take leaves the default standing where the text says nothing that the member can hold.
void TakeStoredText(std::string_view text, std::string& member) { member = text; }

void TakeStoredText(std::string_view text, bool& member) {
  const std::string_view word = Trim(text);
  if (const auto number = ParseNumber(word)) {
    member = *number != 0;
  } else if (EqualsNoCase(word, "True") || EqualsNoCase(word, "False")) {
    member = EqualsNoCase(word, "True");
  }
}

void TakeStoredText(std::string_view text, int& member) {
  const auto number = ParseWhole(text);
  if (number && *number >= -1 && *number <= std::numeric_limits<int>::max()) {
    member = static_cast<int>(*number);
  }
}

}  // namespace

std::span<const PreferenceKey> PreferenceKeys() noexcept { return kPreferenceKeys; }

Preferences ReadPreferences(const cINI& ini) {
  Preferences preferences;
  for (const auto& [name, text] : ini.ReadSection(kConfigSection)) {
    if (text.empty()) continue;
    if (EqualsNoCase(name, "sConnString")) preferences.sConnString = text;
    for (const PreferenceKey& key : kPreferenceKeys) {
      if (!EqualsNoCase(name, key.key)) continue;
      std::visit([&preferences,
                  &stored = text](auto member) { TakeStoredText(stored, preferences.*member); },
                 key.member);
    }
  }
  return preferences;
}

std::string StoredText(const Preferences& preferences, const PreferenceKey& key) {
  return std::visit(
      [&](auto member) -> std::string {
        const auto& value = preferences.*member;
        using Value = std::remove_cvref_t<decltype(value)>;
        if constexpr (std::is_same_v<Value, bool>) {
          return value ? "1" : "0";
        } else if constexpr (std::is_same_v<Value, int>) {
          return std::to_string(value);
        } else {
          return value;
        }
      },
      key.member);
}

bool WritePreferences(cINI& ini, const Preferences& preferences) {
  std::vector<std::pair<std::string, std::string>> values;
  values.reserve(kPreferenceKeys.size());
  for (const PreferenceKey& key : kPreferenceKeys) {
    values.emplace_back(key.key, StoredText(preferences, key));
  }
  return ini.SaveStrings(kConfigSection, values) == 1;
}

}  // namespace tunemeadow
