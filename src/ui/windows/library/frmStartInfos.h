// SPDX-License-Identifier: GPL-3.0-or-later
// The welcome of the first start: what was detected, and what a save will do to comments.
#pragma once

#include <QDialog>
#include <memory>

#include "run/session.h"

namespace Ui {
class frmStartInfos;
}

namespace tunemeadow {

class frmStartInfos : public QDialog {
  Q_OBJECT

 public:
  /// `session` must outlive the window. Until OK the next start is a first one again.
  explicit frmStartInfos(Session& session, QWidget* parent = nullptr);
  ~frmStartInfos() override;

 signals:
  /// cmdGoPref: show the preferences, and come back when they are closed.
  void PreferencesRequested();

 private:
  void ShowDetected();
  void cmdOK_Click();
  void cmdGoPref_Click();

  std::unique_ptr<Ui::frmStartInfos> ui_;
  Session& session_;
};

}  // namespace tunemeadow
