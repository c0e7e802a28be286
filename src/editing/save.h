// SPDX-License-Identifier: GPL-3.0-or-later
// Saving the record in the detail panels: into the tags of its file, then into its row.
#pragma once

#include "views/workbench.h"

namespace tunemeadow {

/// The save button. With several rows selected it is SpezialSpeichern. Otherwise the record of the
/// editor goes through the rules of the preferences, into the file's tags (ID3v2, ID3v1, Lyrics3),
/// into its row and into its cells in the list, in this order. It stops before it writes anything
/// where the file is missing or the track number is no track number.
void cmdSpeichern_Click(Workbench& bench);

/// Yes to "Save your changes?": the same, but what was typed for many is saved without another
/// question.
void SaveChanges(Workbench& bench);

}  // namespace tunemeadow
