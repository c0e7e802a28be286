// SPDX-License-Identifier: GPL-3.0-or-later
// The window of a job on many files: the file at work, a bar, and a log that stays to be read. Like
// frmLoading it has no parent, so that its button works while the main window is disabled.
#pragma once

#include <QDialog>
#include <cstdint>
#include <memory>

#include "run/session.h"

namespace Ui {
class frmdoUmbenennen;
}

namespace tunemeadow {

class frmdoUmbenennen : public QDialog {
  Q_OBJECT

 public:
  /// `session` must outlive the window.
  explicit frmdoUmbenennen(Session& session);
  ~frmdoUmbenennen() override;

  /// Empties the window and shows it over `above`, or in the middle of the screen where that is
  /// null or hidden.
  void Begin(const QString& title, std::int64_t maximum, const QWidget* above);
  void SetStep(std::int64_t value, const QString& from, const QString& to);
  void AddLine(const QString& line);

  /// The job is over: the button closes the window from now on, and has the focus.
  void End();
  [[nodiscard]] bool Running() const noexcept { return running_; }

  /// Button, Escape or the window's own close: cancels a running job, closes the window after it.
  void reject() override;

 private:
  void ShowFiles();

  std::unique_ptr<Ui::frmdoUmbenennen> ui_;
  Session& session_;
  QString from_, to_;
  bool running_ = false;
};

}  // namespace tunemeadow
