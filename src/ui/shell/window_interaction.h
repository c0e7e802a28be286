// SPDX-License-Identifier: GPL-3.0-or-later
// Interaction with real windows: message boxes, file and folder dialogs, frmLoading, the status
// panel, the progress bar, the busy pointer. Works from the first moment of the start on, when
// there is no main window yet.
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "run/interaction.h"
#include "run/session.h"

class QFileDialog;
class QLabel;
class QProgressBar;

namespace tunemeadow {

class frmLoading;
class frmdoUmbenennen;

class WindowInteraction : public Interaction {
 public:
  /// The parts of the main window that show something. Each may be null: then nothing is shown.
  struct MainWindow {
    QWidget* window = nullptr;
    QLabel* status = nullptr;          ///< panel 1 of StatusBar1
    QProgressBar* progress = nullptr;  ///< ProgressBar1; hidden unless a progress is on
  };

  /// `session` must outlive the object.
  explicit WindowInteraction(Session& session);
  ~WindowInteraction() override;
  WindowInteraction(const WindowInteraction&) = delete;
  WindowInteraction& operator=(const WindowInteraction&) = delete;

  /// From now on the main window shows what is told, the present state first.
  void SetMainWindow(const MainWindow& parts);

  /// A text too long for a screen is cut with an ellipsis and stands whole behind "Show Details".
  Answer ShowMessage(const MessageBox& box) override;
  std::optional<std::string> AskText(const std::string& prompt, const std::string& title,
                                     const std::string& offered) override;
  std::optional<std::string> ChooseFolder(const std::string& title,
                                          const std::string& start) override;
  std::optional<std::string> ChooseFile(const FileChoice& choice) override;

  /// While a batch runs, texts and values reach the controls at the next yield that may paint.
  void SetStatus(const std::string& text) override;
  [[nodiscard]] std::string Status() const override { return status_; }
  void SetPanelWidth(int twips) override;
  void SetBusyPointer(bool busy) override;
  void ShowProgress(std::int64_t maximum) override;
  void SetProgress(std::int64_t value) override;
  void HideProgress() override;

  /// Once its Cancel was pressed, frmLoading stays away until CancelRequested is cleared.
  void ShowLoading(const std::string& line) override;
  void HideLoading() override;

  /// Calls nest: the window takes input again when each `false` had its `true`. The focus comes
  /// back to where it was.
  void EnableMainWindow(bool enabled) override;
  /// While a job runs its own window has the Cancel button, and frmLoading stays away.
  void ShowJob(const std::string& title, std::int64_t maximum) override;
  void SetJobStep(std::int64_t value, const std::string& from, const std::string& to) override;
  void AddJobLine(const std::string& line) override;
  void EndJob() override;
  void ResizeForm() override;
  void Yield() override;
  void KeepPainting() override;

 private:
  class BoxScope;

  /// Brings stored texts and values into the controls.
  void Push();
  [[nodiscard]] bool MayPaint() const;
  void ApplyPointer();
  [[nodiscard]] QWidget* ParentOfBox() const;
  std::optional<std::string> RunFileDialog(QFileDialog& dialog, const std::string& start);

  Session& session_;
  QPointer<QWidget> window_;
  QPointer<QLabel> status_label_;
  QPointer<QProgressBar> progress_bar_;
  QPointer<QWidget> focus_before_;  ///< had the focus when the main window was disabled
  std::unique_ptr<frmLoading> loading_;
  std::unique_ptr<frmdoUmbenennen> job_;  ///< made at the first job

  std::string status_;
  std::string loading_line_;
  int panel_width_ = kPanelWidth;
  std::int64_t progress_ = 0;
  std::optional<std::int64_t> progress_maximum_;
  int busy_depth_ = 0;
  int disabled_depth_ = 0;
  int boxes_ = 0;              ///< boxes that are up
  bool pointer_busy_ = false;  ///< the hourglass is set
  QElapsedTimer since_push_;
};

}  // namespace tunemeadow
