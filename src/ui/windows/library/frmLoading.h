// SPDX-License-Identifier: GPL-3.0-or-later
// The small window of every long command: one line and a Cancel button. It has no parent and stays
// on top, so that its button works while the main window is disabled.
#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

#include "run/session.h"

namespace Ui {
class frmLoading;
}

namespace tunemeadow {

class frmLoading : public QDialog {
  Q_OBJECT

 public:
  /// `session` must outlive the window.
  explicit frmLoading(Session& session);
  ~frmLoading() override;

  /// The text of lblInfo, shown as it stands.
  void SetLine(const QString& line);

  /// Shows the window over `above`, or in the middle of the screen where that is null or hidden.
  /// While a modal window is up it is modal itself, or its button would be dead.
  void Appear(const QWidget* above);

  /// Cancel by button, Escape or the window's own close: sets CancelRequested and closes.
  void reject() override;

 private:
  /// Closes a window that has run out of work: no batch is active.
  void Timer1_Timer();

  std::unique_ptr<Ui::frmLoading> ui_;
  Session& session_;
  QTimer timer_{this};
};

}  // namespace tunemeadow
