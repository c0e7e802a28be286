// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/audiogalaxy.h"

#include "core/text.h"
#include "editing/save_rules.h"

namespace tunemeadow {

void CopyAudiogalaxyCode(Workbench& bench) {
  const std::string title = "Audiogalaxy scrambler";
  const auto name = bench.interaction.AskText("Enter Name", title, "");
  if (!name || name->empty()) return;
  bench.world.clipboard.SetText(makeaudiogalaxytag(Upper(*name)));
  bench.interaction.ShowMessage({.text = "Your Code is copied to the clipboard.",
                                 .title = title,
                                 .icon = Icon::kInformation});
}

}  // namespace tunemeadow
