// SPDX-License-Identifier: GPL-3.0-or-later
// The settings of the run and the controls that bear their names: check boxes, radio buttons,
// lists, lines of text and paths. A setting without a control in the window is left alone.
#pragma once

#include <QWidget>

#include "run/preferences.h"

namespace tunemeadow {

/// Shows every setting in the control of `window` whose object name is its key; optID3V2Versions in
/// the pair optID3V2Versions_0, optID3V2Versions_1.
void FillControls(const QWidget& window, const Preferences& preferences);

/// Takes the values of those controls over. A text that shows what the setting holds leaves it as
/// it is, byte for byte.
void ReadControls(const QWidget& window, Preferences& preferences);

}  // namespace tunemeadow
