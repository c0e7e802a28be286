// SPDX-License-Identifier: GPL-3.0-or-later
// The enlarged view of a picture. Remembers neither size nor place.
#pragma once

#include <QDialog>
#include <memory>
#include <string_view>

namespace Ui {
class frmPicture;
}

namespace tunemeadow {

class frmPicture : public QDialog {
  Q_OBJECT

 public:
  explicit frmPicture(QWidget* parent = nullptr);
  ~frmPicture() override;

  /// Shows the picture file's bytes in the picture's own size, larger where that is small, smaller
  /// where the screen is. A window that is open already keeps its size. Hides where the bytes are
  /// no picture.
  void ShowPicture(std::string_view bytes);

 private:
  std::unique_ptr<Ui::frmPicture> ui_;
};

}  // namespace tunemeadow
