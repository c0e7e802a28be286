// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/clipboard_qt.h"

#include <QClipboard>
#include <QGuiApplication>

namespace tunemeadow {

void QtClipboard::SetText(const std::string& text) {
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

}  // namespace tunemeadow
