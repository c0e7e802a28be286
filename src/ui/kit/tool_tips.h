// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QWidget>

namespace tunemeadow {

/// A tool tip that shows the text as it stands, whatever it holds: a tip takes some of it for
/// formatting.
[[nodiscard]] inline QString LiteralToolTip(const QString& text) {
  return QLatin1String("<qt>") + text.toHtmlEscaped() + QLatin1String("</qt>");
}

/// The text as the control's tool tip, literally, and as what a screen reader says of it; an empty
/// text takes both away. A description that names the control for a test stays.
inline void SetLiteralToolTip(QWidget& control, const QString& text) {
  control.setToolTip(text.isEmpty() ? QString() : LiteralToolTip(text));
  if (control.accessibleDescription().startsWith(QLatin1Char('#'))) return;
  control.setAccessibleDescription(text);
}

}  // namespace tunemeadow
