// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/preference_controls.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <algorithm>

#include "ui/kit/path_field.h"
#include "ui/kit/qt_text.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kVersionsKey = "optID3V2Versions";

/// Setting by setting, for each kind of value and its kind of control.
void FillControl(const QWidget& window, const QString& name, bool value) {
  const bool pair = FromQt(name) == kVersionsKey;
  const QString button = pair ? name + (value ? "_1" : "_0") : name;
  auto* control = window.findChild<QAbstractButton*>(button);
  if (control != nullptr) control->setChecked(pair || value);
}

void FillControl(const QWidget& window, const QString& name, int value) {
  auto* list = window.findChild<QComboBox*>(name);
  if (list != nullptr) list->setCurrentIndex(value < 0 || value >= list->count() ? 0 : value);
}

void FillControl(const QWidget& window, const QString& name, const std::string& value) {
  if (auto* path = window.findChild<PathField*>(name)) {
    path->SetPath(value);
  } else if (auto* line = window.findChild<QLineEdit*>(name)) {
    line->setText(ToQt(value));
    line->setCursorPosition(0);
  }
}

void ReadControl(const QWidget& window, const QString& name, bool& value) {
  const QString button = FromQt(name) == kVersionsKey ? name + "_1" : name;
  if (const auto* control = window.findChild<QAbstractButton*>(button)) {
    value = control->isChecked();
  }
}

void ReadControl(const QWidget& window, const QString& name, int& value) {
  if (const auto* list = window.findChild<QComboBox*>(name)) value = list->currentIndex();
}

void ReadControl(const QWidget& window, const QString& name, std::string& value) {
  if (const auto* path = window.findChild<PathField*>(name)) {
    value = path->Path();
  } else if (const auto* line = window.findChild<QLineEdit*>(name)) {
    if (line->text() != ToQt(value)) value = FromQt(line->text());
  }
}

/// Calls `visit` with the name and the member of every setting that may have a control.
template <typename Visitor>
void ForEachSetting(const Visitor& visit) {
  for (const PreferenceKey& key : PreferenceKeys()) {
    std::visit([&](auto member) { visit(ToQt(key.key), member); }, key.member);
  }
  visit(QStringLiteral("chkaudiogalaxy"), &Preferences::chkaudiogalaxy);
}

}  // namespace

void FillControls(const QWidget& window, const Preferences& preferences) {
  ForEachSetting(
      [&](const QString& name, auto member) { FillControl(window, name, preferences.*member); });
}

void ReadControls(const QWidget& window, Preferences& preferences) {
  ForEachSetting(
      [&](const QString& name, auto member) { ReadControl(window, name, preferences.*member); });
}

}  // namespace tunemeadow
