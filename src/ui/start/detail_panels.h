// SPDX-License-Identifier: GPL-3.0-or-later
// The three detail panels, of which one is in view. They show the record of the clicked row; they
// take no input as long as there is no way to save it.
#pragma once

#include <QStackedWidget>
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "views/detail_editor.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace Ui {
class picDetails;
class picDetails2;
class picDetails3;
}  // namespace Ui

namespace tunemeadow {

class DetailPanels : public QStackedWidget {
  Q_OBJECT

 public:
  explicit DetailPanels(QWidget* parent = nullptr);
  ~DetailPanels() override;

  /// Shows the record. A control is touched only where its text differs.
  void Show(const DetailEditor& editor);

  /// The list of cboGenre1: an empty entry, the 148 names, then the catalogue's own genres.
  void SetGenres(const std::vector<std::string>& further_genres);

  /// The rule for txtCommentSave: whether it takes input, or looks as if.
  void EnableComment(bool enabled);

  /// Focus on the first field of the panel in view.
  void FocusFirst();

 signals:
  /// cmdBigger of a long text: show it in frmEditor. `title` says which text it is.
  void BiggerRequested(const QString& title, const QString& text);

 private:
  struct LineControl;
  void BindPanels();
  void BindBigger();
  void EnableAll(bool enabled);

  std::unique_ptr<Ui::picDetails> first_;
  std::unique_ptr<Ui::picDetails2> second_;
  std::unique_ptr<Ui::picDetails3> third_;
  std::vector<LineControl> lines_;
  std::array<QLineEdit*, kExtraFields> extra_{};
};

}  // namespace tunemeadow
