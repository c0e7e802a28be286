// SPDX-License-Identifier: GPL-3.0-or-later
// What the person does in the panels: the flags of a changed record, the checks of the fields that
// are left, the larger window for a long text.
#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QTextCursor>
#include <algorithm>

#include "ui/kit/plain_text.h"
#include "ui/kit/qt_text.h"
#include "ui/panes/detail_panels.h"
#include "ui/windows/editing/frmEditor.h"
#include "ui_picDetails.h"
#include "ui_picDetails2.h"

namespace tunemeadow {
namespace {

constexpr int kWaitForMouse = 20;  // milliseconds

/// Keys and what an input method makes of them.
bool IsTyping(const QEvent& event) {
  return event.type() == QEvent::KeyPress ||
         (event.type() == QEvent::InputMethod &&
          !static_cast<const QInputMethodEvent&>(event).commitString().isEmpty());
}

/// The focus goes to another field, and not only to a menu or to another window.
bool LeavesField(const QEvent& event) {
  if (event.type() != QEvent::FocusOut) return false;
  const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
  return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
         reason != Qt::MenuBarFocusReason;
}

QString TextOfControl(const QWidget& control) {
  if (const auto* line = qobject_cast<const QLineEdit*>(&control)) return line->text();
  if (const auto* combo = qobject_cast<const QComboBox*>(&control)) return combo->currentText();
  return TextOfField(static_cast<const QPlainTextEdit&>(control));
}

}  // namespace

void DetailPanels::SetUpGenres() {
  QComboBox& combo = *first_->cboGenre1;
  combo.setEditable(true);
  combo.setInsertPolicy(QComboBox::NoInsert);
  combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  combo.setMinimumContentsLength(8);
  // The combo's own completer would make "Rock" of "rock" as soon as the field is left.
  auto* completer = new QCompleter(combo.model(), &combo);
  completer->setCompletionMode(QCompleter::PopupCompletion);
  completer->setCaseSensitivity(Qt::CaseSensitive);
  combo.setCompleter(completer);
  combo.setFocusPolicy(Qt::StrongFocus);  // none by the wheel
  combo.installEventFilter(this);
  SetGenres({});
}

void DetailPanels::ConnectFields() {
  const std::array<QWidget*, 5> without_key_down = {
      first_->cboGenre1, second_->txtMoodSave, second_->txtPreferenceSave,
      second_->txtSituationSave, second_->txtTempoSave};
  for (Field& field : fields_) {  // all are there by now: none moves any more
    const auto changed = [this, &field] { Changed(field); };
    QWidget* control = field.control;
    if (std::find(without_key_down.begin(), without_key_down.end(), control) ==
        without_key_down.end()) {
      control->installEventFilter(this);
    }
    if (auto* line = qobject_cast<QLineEdit*>(control)) {
      connect(line, &QLineEdit::textChanged, this, changed);
    } else if (auto* text = qobject_cast<QPlainTextEdit*>(control)) {
      connect(text, &QPlainTextEdit::textChanged, this, changed);
    } else if (auto* combo = qobject_cast<QComboBox*>(control)) {
      connect(combo, &QComboBox::editTextChanged, this, changed);
    }
  }
  leave_timer_.setSingleShot(true);
  connect(&leave_timer_, &QTimer::timeout, this, &DetailPanels::CheckLeftFields);
}

void DetailPanels::Changed(Field& field) {
  if (showing_) return;
  QString text = TextOfControl(*field.control);
  if (field.crlf) text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
  editor_.texts[field.field] = FromQt(text);
  for (CheckedField& checked : checked_) checked.changed |= checked.line == field.control;
  // What is typed for many tracks is no change of the one that was loaded before them.
  if (editor_.save_all) return ChangedForMany(field.field);
  if (!editor_.enabled) return;
  editor_.DetailsChanged = true;
  editor_.DetailsKeyed = true;  // pasted and chosen texts are a person's changes as well
}

void DetailPanels::ChangedForMany(TrackField field) {
  for (const Box& each : boxes_) {
    if (each.field != field) continue;
    editor_.many.typed[IndexOf(field)] = true;
    each.box->setChecked(true);
  }
}

bool DetailPanels::eventFilter(QObject* watched, QEvent* event) {
  if (watched == first_->cboGenre1) {
    // A wheel that scrolls past a closed combo must not turn it.
    return event->type() == QEvent::Wheel && !first_->cboGenre1->hasFocus();
  }
  if (IsTyping(*event) && editor_.enabled && !editor_.save_all) editor_.DetailsKeyed = true;
  const bool checked = std::any_of(
      checked_.begin(), checked_.end(),
      [&](const CheckedField& field) { return field.line == watched && field.changed; });
  if (checked && !checking_ && LeavesField(*event)) leave_timer_.start(0);
  return QStackedWidget::eventFilter(watched, event);
}

/// Not while the focus is on its way: a box there would keep pressed what was clicked.
void DetailPanels::CheckLeftFields() {
  if (QApplication::mouseButtons() != Qt::NoButton) {
    leave_timer_.start(kWaitForMouse);
    return;
  }
  if (checking_ || !isVisible() || !isEnabled() || !window()->isActiveWindow()) return;
  for (const CheckedField& field : checked_) {
    if (!field.line->hasFocus() && !Stands(field)) return;
  }
}

bool DetailPanels::FieldsStand() {
  return !checking_ && std::all_of(checked_.begin(), checked_.end(),
                                   [this](const CheckedField& field) { return Stands(field); });
}

bool DetailPanels::Stands(const CheckedField& field) {
  if (!field.changed || !field.line->isEnabled()) return true;
  if (editor_.save_all && !editor_.chosen[IndexOf(field.field)]) return true;
  const auto box = field.check(FromQt(field.line->text()));
  if (!box) return true;
  const QScopedValueRollback once(checking_, true);
  leave_timer_.stop();
  interaction_.ShowMessage(*box);
  field.line->setFocus();
  field.line->selectAll();
  return false;
}

void DetailPanels::OpenBigger(QPlainTextEdit& field) {
  frmEditor editor(window());
  const QString title = field.accessibleName();
  if (!field.isEnabled()) {
    editor.ShowText(title, TextOfField(field));
    return;
  }
  const auto text = editor.EditText(title, TextOfField(field));
  if (!text || *text == TextOfField(field)) return;
  editor_.DetailsKeyed = true;
  QTextCursor whole(field.document());  // so that the field's undo takes it back
  whole.select(QTextCursor::Document);
  whole.insertText(*text);
}

}  // namespace tunemeadow
