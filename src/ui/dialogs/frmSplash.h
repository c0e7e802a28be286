// SPDX-License-Identifier: GPL-3.0-or-later
// The first sign of life: a picture without a border, from the start of the process to the moment
// when frmLoading appears.
#pragma once

#include <QFrame>
#include <memory>

namespace Ui {
class frmSplash;
}

namespace tunemeadow {

class frmSplash : public QFrame {
  Q_OBJECT

 public:
  frmSplash();
  ~frmSplash() override;

  /// Shows the window in the middle of the screen and waits a moment until it is painted: nobody
  /// else paints it before the start is over.
  void Appear();

 private:
  std::unique_ptr<Ui::frmSplash> ui_;
};

}  // namespace tunemeadow
