// SPDX-License-Identifier: GPL-3.0-or-later
// Picture1: the picture of the clicked track, with its description and kind, and the buttons for
// it, which are connected by whoever has the commands. A press on the picture opens it enlarged.
#pragma once

#include <QFrame>
#include <QString>
#include <memory>
#include <string>

namespace Ui {
class Picture1;
}

namespace tunemeadow {

struct DetailEditor;
class frmPicture;

class PicturePane : public QFrame {
  Q_OBJECT

 public:
  explicit PicturePane(QWidget* parent = nullptr);
  ~PicturePane() override;

  /// Shows the editor's picture, or "no picture" if there is none that can be shown. The
  /// enlarged view follows.
  void Show(const DetailEditor& editor);

  /// Which buttons have something to do for what is loaded.
  void EnableButtons(const DetailEditor& editor);

  /// Opens the enlarged view; nothing without a picture.
  void Image1_Click();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void FillKinds();
  void ShowTexts();
  void ShowCaption(const DetailEditor& editor);

  std::unique_ptr<Ui::Picture1> ui_;
  std::string bytes_;  ///< of the picture shown
  QString text_;
  frmPicture* enlarged_ = nullptr;  ///< a child, made at the first press
};

}  // namespace tunemeadow
