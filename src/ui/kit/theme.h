// SPDX-License-Identifier: GPL-3.0-or-later
// The look of the program: style, icons, palette; and the names by which tests find its controls.
#pragma once

class QApplication;

namespace tunemeadow {

/// To be called before the application object is made: what Qt reads only there.
void PrepareApplication();

/// Style Fusion, our own icons, the desktop's palette. TUNEMEADOW_PALETTE=dark or =light chooses a
/// palette where the desktop offers none.
void ApplyTheme();

/// With TESTNAMES=1 in the environment, "#" and the object name become the accessible description
/// of every widget, so that the program can be driven from outside by its control names.
void ApplyTestNames(QApplication& application);

}  // namespace tunemeadow
