// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPlainTextEdit>
#include <QString>
#include <QTextDocument>

namespace tunemeadow {

/// The text of the field with "\n" between its lines. The field's own answer would make blanks of
/// no-break spaces, and so change a text in places that nobody has touched.
[[nodiscard]] inline QString TextOfField(const QPlainTextEdit& field) {
  QString text = field.document()->toRawText();
  text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
  text.replace(QChar::LineSeparator, QLatin1Char('\n'));
  return text;
}

}  // namespace tunemeadow
