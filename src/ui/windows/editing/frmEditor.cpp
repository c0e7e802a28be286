// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/editing/frmEditor.h"

#include "ui/kit/placing.h"
#include "ui/kit/plain_text.h"
#include "ui_frmEditor.h"

namespace tunemeadow {

frmEditor::frmEditor(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmEditor>()) {
  ui_->setupUi(this);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmEditor::~frmEditor() = default;

int frmEditor::Run(const QString& title, const QString& text, bool read_only) {
  setWindowTitle(title);
  ui_->txtEditor->setAccessibleName(title);
  ui_->txtEditor->setPlainText(text);
  ui_->txtEditor->setReadOnly(read_only);
  ui_->cmdOK->setVisible(!read_only);
  ui_->cmdCancel->setText(read_only ? "&Close" : "&Cancel");
  ui_->cmdCancel->setDefault(read_only);
  ui_->txtEditor->setFocus();
  PlaceOverParent(*this);
  return exec();
}

void frmEditor::ShowText(const QString& title, const QString& text) {
  (void)Run(title, text, true);
}

std::optional<QString> frmEditor::EditText(const QString& title, const QString& text) {
  if (Run(title, text, false) != QDialog::Accepted) return std::nullopt;
  return TextOfField(*ui_->txtEditor);
}

}  // namespace tunemeadow
