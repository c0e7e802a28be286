// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QWidget;

namespace tunemeadow {

/// What a screen reader calls the control: its accessible name, otherwise the words of its label.
[[nodiscard]] QString NameForReader(const QWidget& control);

/// From here on a combo box is known to screen readers by its name, and what it holds is its value;
/// Qt gives what it holds for both.
void InstallComboNames();

/// Gives the text fields inside the editable combo boxes of the window the names of these.
void NameInnerFields(const QWidget& window);

}  // namespace tunemeadow
