// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/missing_file.h"

#include "core/paths.h"
#include "files/file_facts.h"

namespace tunemeadow {

FileState LookForFile(Interaction& interaction, const std::string& path) {
  while (!MyFileExists(path)) {
    const Answer answer =
        interaction.ShowMessage({.text = "The file " + DisplayPath(path) + " was not found.",
                                 .title = "File not found",
                                 .icon = Icon::kCritical,
                                 .buttons = Buttons::kAbortRetryIgnore});
    if (answer == Answer::kIgnore) return FileState::kIgnored;
    if (answer != Answer::kRetry) return FileState::kAborted;
  }
  return FileState::kThere;
}

}  // namespace tunemeadow
