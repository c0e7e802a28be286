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

  /// Shown, it stands in the middle of the screen, and show() waits a moment until it is painted:
  /// nobody else would paint it before the start is over.
  void setVisible(bool visible) override;

 private:
  std::unique_ptr<Ui::frmSplash> ui_;
};

}  // namespace tunemeadow
