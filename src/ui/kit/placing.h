// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace tunemeadow {

/// Gives a dialog the place and size of the window that it was opened from; without one it keeps
/// its own.
inline void PlaceOverParent(QWidget& dialog) {
  const QWidget* parent = dialog.parentWidget();
  if (parent != nullptr) dialog.setGeometry(parent->window()->geometry());
}

}  // namespace tunemeadow
