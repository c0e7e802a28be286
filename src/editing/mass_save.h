// SPDX-License-Identifier: GPL-3.0-or-later
// Saving many tracks at once: the ticked fields take the editor's text, all others keep what each
// track's own cells hold.
#pragma once

#include <string>

#include "views/workbench.h"

namespace tunemeadow {

/// Saves the selected rows of ListView1, after a question that names the ticked fields. The panels
/// then show what the rows hold; where the run ended early, they keep what is ticked. Files that
/// could not be written are listed with their reasons in the window of a job, behind the closing
/// box, and their rows are marked. Nothing
/// happens in the playlist view, whose rows are not those of ListView1.
void SpezialSpeichern(Workbench& bench);

/// The same without the question: the person has said already that the texts are to be saved.
void SaveTextsForMany(Workbench& bench);

}  // namespace tunemeadow
