// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/import_options.h"

#include <algorithm>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "core/text.h"

namespace tunemeadow {

bool SaveImportOptions(Session& session, Interaction& interaction, const Preferences& controls) {
  if (controls.chkPreview && (controls.lblPreviewPath.empty() || controls.txtPreviewSize.empty())) {
    interaction.ShowMessage({.text = "If Preview is selected you have to choose the Destination "
                                     "Path and the Preview size!"});
    return false;
  }
  Preferences& preferences = session.preferences;
  std::vector<std::pair<std::string, std::string>> stored;
  for (const PreferenceKey& key : PreferenceKeys()) {
    if (std::find(kImportKeys.begin(), kImportKeys.end(), key.key) == kImportKeys.end()) continue;
    std::visit([&](auto member) { preferences.*member = controls.*member; }, key.member);
    if (key.key == "lblScan" && preferences.lblScan.size() > 1 && preferences.lblScan[1] == ':') {
      preferences.lblScan[0] = UpperAscii(preferences.lblScan[0]);
    }
    stored.emplace_back(key.key, StoredText(preferences, key));
  }
  session.ini.SaveStrings(kConfigSection, stored);
  return true;
}

}  // namespace tunemeadow
