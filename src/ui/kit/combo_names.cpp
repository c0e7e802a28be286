// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/combo_names.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

namespace tunemeadow {
namespace {

/// The words of the label that leads to the control, without its sign of a key and its colon.
QString LabelOf(const QWidget& control) {
  for (const QLabel* label : control.window()->findChildren<QLabel*>()) {
    if (label->buddy() == &control) return label->text().remove('&').remove(':').trimmed();
  }
  return {};
}

class NamedCombo : public QAccessibleWidget {
 public:
  explicit NamedCombo(QComboBox* combo) : QAccessibleWidget(combo, QAccessible::ComboBox) {}

  // The list, and behind it the text field.
  [[nodiscard]] int childCount() const override { return Combo().isEditable() ? 2 : 1; }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    if (index == 0) return QAccessible::queryAccessibleInterface(Combo().view());
    if (index == 1 && Combo().isEditable()) {
      return QAccessible::queryAccessibleInterface(Combo().lineEdit());
    }
    return nullptr;
  }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
    if (child == nullptr) return -1;
    if (child->object() == Combo().view()) return 0;
    return Combo().isEditable() && child->object() == Combo().lineEdit() ? 1 : -1;
  }

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Name) return NameForReader(Combo());
    if (kind == QAccessible::Value) return Combo().currentText();
    return QAccessibleWidget::text(kind);
  }

  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = Combo().view()->isVisible();
    state.editable = Combo().isEditable();
    return state;
  }

  [[nodiscard]] QStringList actionNames() const override { return {showMenuAction()}; }
  void doAction(const QString& name) override {
    if (name != showMenuAction()) return;
    Combo().view()->isVisible() ? Combo().hidePopup() : Combo().showPopup();
  }
  [[nodiscard]] QStringList keyBindingsForAction(const QString& /*name*/) const override {
    return {};
  }

 private:
  [[nodiscard]] QComboBox& Combo() const { return *static_cast<QComboBox*>(object()); }
};

QAccessibleInterface* MakeNamedCombo(const QString& /*type*/, QObject* object) {
  auto* const combo = qobject_cast<QComboBox*>(object);
  return combo == nullptr ? nullptr : new NamedCombo(combo);
}

}  // namespace

QString NameForReader(const QWidget& control) {
  return control.accessibleName().isEmpty() ? LabelOf(control) : control.accessibleName();
}

void NameInnerFields(const QWidget& window) {
  for (const QComboBox* combo : window.findChildren<QComboBox*>()) {
    if (combo->isEditable()) combo->lineEdit()->setAccessibleName(NameForReader(*combo));
  }
}

void InstallComboNames() { QAccessible::installFactory(MakeNamedCombo); }

}  // namespace tunemeadow
