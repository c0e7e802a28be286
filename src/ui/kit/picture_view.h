// SPDX-License-Identifier: GPL-3.0-or-later
// A picture that fills its widget, keeps its proportions and can be pressed: by the mouse, Enter,
// Space or a screen reader.
#pragma once

#include <QAbstractButton>
#include <QImage>
#include <QPixmap>

namespace tunemeadow {

class PictureView : public QAbstractButton {
  Q_OBJECT

 public:
  explicit PictureView(QWidget* parent = nullptr);

  /// A null image shows a faint sign instead, and there is nothing to press.
  void SetPicture(const QImage& picture);
  [[nodiscard]] bool HasPicture() const noexcept { return !picture_.isNull(); }

  /// Where the picture stands in the widget; empty without one.
  [[nodiscard]] QRect PictureRect() const;

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QImage picture_;
  QPixmap scaled_;  ///< the picture in the size last painted
};

}  // namespace tunemeadow
