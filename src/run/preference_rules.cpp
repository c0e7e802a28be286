// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/preference_rules.h"

#include <utility>

#include "core/paths.h"
#include "core/text.h"
#include "run/catalogue.h"

namespace tunemeadow {
namespace {

using StoredPairs = std::vector<std::pair<std::string, std::string>>;

constexpr std::size_t kLongestStored = 255;  // characters

constexpr std::string_view kDatabaseKey = "lblConfigDB";
constexpr std::array<std::string_view, 4> kFirstRunKeys{"lblConfigWinamp", kDatabaseKey,
                                                        "lblConfigCDROM", "lblScan"};

std::string TextToStore(const Session& session, const Preferences& values,
                        const PreferenceKey& key) {
  std::string text = StoredText(values, key);
  return key.key == kDatabaseKey ? StoredCatalogue(session, text) : text;
}

void WriteWithFirstRun(cINI& ini, StoredPairs values) {
  values.emplace_back("firstrun", "1");
  ini.SaveStrings(kConfigSection, values);
}

}  // namespace

const EncoderEntry& EncoderOf(int index) noexcept {
  const bool known = index > 0 && static_cast<std::size_t>(index) < kEncoders.size();
  return kEncoders[known ? static_cast<std::size_t>(index) : 0];
}

bool IsLibraryEncoder(int index) noexcept {
  return FindNoCase(EncoderOf(index).text, "DLL") != std::string_view::npos;
}

void ChooseEncoder(Preferences& preferences, int index) {
  preferences.cboEncoder = index;
  const EncoderEntry& entry = EncoderOf(index);
  if (entry.text.empty()) return;
  preferences.txtEncoderParams = entry.encode;
  preferences.txtDecoderParams = entry.decode;
  if (IsLibraryEncoder(index)) preferences.lblEncoderPath.clear();
}

SavingControls EnabledSavingControls(bool chkSaveTags, bool chkSaveTags23) noexcept {
  return {.chkSaveTags11 = chkSaveTags,
          .chkSaveTags23 = chkSaveTags,
          .lyrics_label = chkSaveTags,
          .chkSaveLyrics1 = chkSaveTags && chkSaveTags23,
          .chkSaveLyrics2 = chkSaveTags};
}

bool WritesOverSound(bool chkSaveTags, bool chkSaveTags11, bool chkSaveLyrics2) noexcept {
  return chkSaveTags && chkSaveLyrics2 && !chkSaveTags11;
}

PreferenceVerdict ValidatePreferences(const Preferences& preferences) {
  const bool chosen = !EncoderOf(preferences.cboEncoder).text.empty();
  const bool program = chosen && !IsLibraryEncoder(preferences.cboEncoder);
  const bool located = !preferences.lblEncoderPath.empty();
  const bool encodes = !preferences.txtEncoderParams.empty();
  const bool decodes = !preferences.txtDecoderParams.empty();
  if (preferences.chkPreview &&
      (preferences.lblPreviewPath.empty() || preferences.txtPreviewSize.empty())) {
    return {{"If Preview is selected you have to choose the Destination Path and the Preview "
             "size!"},
            true};
  }
  if (program && !located) {
    return {{"By choosing a program, you also have to define the location!"}, true};
  }
  if (program && !encodes && !decodes) {
    return {{"By choosing a program, you also have to define the decoding parameters and/or "
             "encoding parameters "},
            true};
  }
  PreferenceVerdict verdict;
  if (chosen && located && !encodes) {
    verdict.messages.emplace_back(
        "You didn't enter the Encoder-Parameters, so encoding will be disabled!");
  }
  if (chosen && located && !decodes) {
    verdict.messages.emplace_back(
        "You didn't enter the Decoder-Parameters, so decoding will be disabled!");
  }
  return verdict;
}

bool ConfirmPreferences(Session& session, Interaction& interaction, const Preferences& controls,
                        const std::string& database_before) {
  session.success_messages = controls.chkWarnGlobal;
  session.preferences = controls;
  StoredPairs values;
  for (const PreferenceKey& key : PreferenceKeys()) {
    values.emplace_back(key.key, TextToStore(session, controls, key));
  }
  WriteWithFirstRun(session.ini, std::move(values));
  if (controls.lblConfigDB != database_before) {
    interaction.ShowMessage(
        {.text = "Tunemeadow must be restartet to take effect the new database."});
  }
  const PreferenceVerdict verdict = ValidatePreferences(controls);
  for (const std::string& message : verdict.messages) interaction.ShowMessage({.text = message});
  return !verdict.stays_open;
}

void ConfirmFirstRun(Session& session) {
  StoredPairs values;
  for (const PreferenceKey& key : PreferenceKeys()) {
    for (const std::string_view name : kFirstRunKeys) {
      if (key.key == name) {
        values.emplace_back(name, TextToStore(session, session.preferences, key));
      }
    }
  }
  WriteWithFirstRun(session.ini, std::move(values));
}

bool PathFitsSettings(std::string_view path) noexcept { return Length(path) <= kLongestStored; }

MessageBox PathTooLongBox(std::string_view path) {
  return {.text = "This can't be used: " + DisplayPath(path) + "\n\nThe errormessage was:\n" +
                  std::string(kPathTooLong) + "\n\nNothing was changed.",
          .title = "Error",
          .icon = Icon::kExclamation};
}

}  // namespace tunemeadow
