// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/path_field.h"

#include <QApplication>
#include <QEvent>

#include "core/paths.h"
#include "run/preference_rules.h"
#include "ui/kit/qt_text.h"

namespace tunemeadow {

PathField::PathField(QWidget* parent) : QLineEdit(parent) {
  setReadOnly(true);
  ApplyGround();
}

void PathField::ApplyGround() {
  QPalette colours = QApplication::palette(this);
  colours.setBrush(QPalette::Base, colours.brush(QPalette::Window));
  setPalette(colours);
}

QSize PathField::minimumSizeHint() const {
  constexpr int kCharacters = 26;
  return {kCharacters * fontMetrics().averageCharWidth(), QLineEdit::minimumSizeHint().height()};
}

void PathField::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange) ApplyGround();
  QLineEdit::changeEvent(event);
}

void PathField::SetPath(const std::string& path) {
  path_ = path;
  setText(PathForEye(path));
  setToolTip(text());
  setCursorPosition(0);
}

bool TakePath(PathField& field, Interaction& interaction, const std::string& path) {
  if (!PathFitsSettings(path)) {
    interaction.ShowMessage(PathTooLongBox(path));
    return false;
  }
  field.SetPath(path);
  return true;
}

void ChooseFolderFor(PathField& field, Interaction& interaction, const std::string& title) {
  const auto chosen = interaction.ChooseFolder(title, field.Path());
  if (chosen) (void)TakePath(field, interaction, WithTrailingSeparator(*chosen));
}

bool ChooseFileFor(PathField& field, Interaction& interaction, FileChoice choice) {
  if (!field.Path().empty()) choice.start = field.Path();
  const auto chosen = interaction.ChooseFile(choice);
  return chosen && TakePath(field, interaction, *chosen);
}

}  // namespace tunemeadow
