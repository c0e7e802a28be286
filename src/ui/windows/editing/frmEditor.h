// SPDX-License-Identifier: GPL-3.0-or-later
// A long text in a large field. Opens over the window that it was called from, in its size.
#pragma once

#include <QDialog>
#include <memory>
#include <optional>

namespace Ui {
class frmEditor;
}

namespace tunemeadow {

class frmEditor : public QDialog {
  Q_OBJECT

 public:
  explicit frmEditor(QWidget* parent = nullptr);
  ~frmEditor() override;

  /// Shows the text until the person closes it; it cannot be changed. `title` says what it is.
  void ShowText(const QString& title, const QString& text);

  /// Lets the person change the text; nullopt on Cancel.
  [[nodiscard]] std::optional<QString> EditText(const QString& title, const QString& text);

 private:
  int Run(const QString& title, const QString& text, bool read_only);

  std::unique_ptr<Ui::frmEditor> ui_;
};

}  // namespace tunemeadow
