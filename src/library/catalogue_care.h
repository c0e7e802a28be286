// SPDX-License-Identifier: GPL-3.0-or-later
// What the start does for the catalogue before it is opened: a compacted copy and a backup. Both
// cost as much as the catalogue is large, so neither is made again while nothing has been written:
// the settings file remembers, in a section of its own, the size and checksum of the catalogue and
// of its backup as the last start left them, and a start looks whether they still are these very
// bytes.
#pragma once

#include <string>

#include "library/start_up.h"

namespace tunemeadow {

/// Takes over the compacted copy that the repair tool has left, starts the tool where the catalogue
/// is not the one that was compacted last, and backs it up where `mp3s.bak` does not hold it; each
/// as far as the preferences want it, and only for a catalogue that is a file of our own. What
/// takes long is told on the progress window. Where there is no tool, its preference goes off.
void CareForCatalogue(Workbench& bench, StartWindow& window, const std::string& shipped_folder);

}  // namespace tunemeadow
