// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/library/frmSplash.h"

#include <QApplication>
#include <QIcon>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include "ui_frmSplash.h"

namespace tunemeadow {
namespace {

constexpr int kLongestWait = 100;  // milliseconds

}  // namespace

frmSplash::frmSplash()
    : QFrame(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint),
      ui_(std::make_unique<Ui::frmSplash>()) {
  ui_->setupUi(this);
  setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
  const int side = fontMetrics().height() * 7;
  ui_->Image1->setPixmap(
      QIcon::fromTheme(QStringLiteral("tunemeadow")).pixmap({side, side}, devicePixelRatio()));
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.8);
  ui_->lblTitle->setFont(large);
  const int margin = fontMetrics().height() * 2;
  layout()->setContentsMargins(margin * 2, margin, margin * 2, margin);
}

frmSplash::~frmSplash() = default;

void frmSplash::setVisible(bool visible) {
  if (!visible || isVisible()) return QFrame::setVisible(visible);
  adjustSize();
  move(QApplication::primaryScreen()->availableGeometry().center() - rect().center());
  QFrame::setVisible(true);
  QTimer patience;
  patience.setSingleShot(true);
  patience.start(kLongestWait);
  while (patience.isActive() && !windowHandle()->isExposed()) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                    QEventLoop::WaitForMoreEvents);
  }
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace tunemeadow
