// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/library/frmLoading.h"

#include <QApplication>
#include <QScreen>

#include "run/command_run.h"
#include "ui_frmLoading.h"

namespace tunemeadow {
namespace {

constexpr int kTimerInterval = 1000;  // milliseconds
constexpr int kLineWidth = 46;        // in average characters: a line never moves the button

}  // namespace

frmLoading::frmLoading(Session& session)
    : QDialog(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint),
      ui_(std::make_unique<Ui::frmLoading>()),
      session_(session) {
  ui_->setupUi(this);
  ui_->lblInfo->setMinimumWidth(kLineWidth * fontMetrics().averageCharWidth());
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &frmLoading::reject);
  timer_.setObjectName("Timer1");
  timer_.setInterval(kTimerInterval);
  connect(&timer_, &QTimer::timeout, this, &frmLoading::Timer1_Timer);
}

frmLoading::~frmLoading() = default;

void frmLoading::SetLine(const QString& line) { ui_->lblInfo->setText(line); }

void frmLoading::Appear(const QWidget* above) {
  if (isVisible()) return;
  setWindowModality(QApplication::activeModalWidget() != nullptr ? Qt::ApplicationModal
                                                                 : Qt::NonModal);
  adjustSize();
  const bool over_window = above != nullptr && above->isVisible();
  const QRect area =
      over_window ? above->frameGeometry() : QApplication::primaryScreen()->availableGeometry();
  move(area.center() - rect().center());
  timer_.start();
  show();
}

void frmLoading::reject() {
  session_.CancelRequested = true;
  hide();
}

void frmLoading::Timer1_Timer() {
  if (!MayBegin(session_)) return;
  timer_.stop();
  hide();
}

}  // namespace tunemeadow
