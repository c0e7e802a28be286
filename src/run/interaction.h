// SPDX-License-Identifier: GPL-3.0-or-later
// How a command asks and reports. The window layer implements it; a test scripts it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tunemeadow {

enum class Icon { kNone, kInformation, kQuestion, kExclamation, kCritical };
enum class Buttons { kOk, kOkCancel, kYesNo, kAbortRetryIgnore };
enum class Answer { kOk, kCancel, kYes, kNo, kAbort, kRetry, kIgnore };

inline constexpr std::string_view kProgramTitle = "Tunemeadow";

/// A message box. Plain text, shown as it stands.
struct MessageBox {
  std::string text;
  std::string title = std::string(kProgramTitle);
  Icon icon = Icon::kNone;
  Buttons buttons = Buttons::kOk;
};

/// A choice of one file.
struct FileChoice {
  std::string title;
  std::string filter;  ///< "Name (*.ext)"; empty: all files
  std::string start;   ///< folder or file offered first; bytes
  bool for_saving = false;
  bool asks_itself = false;  ///< the command asks before it replaces a file, not the dialog
  bool images = false;       ///< OpenImage: with a panel that shows the chosen picture
};

/// The panel of the status bar: width in twips (1/1440 inch, 15 to the pixel at 96 dpi).
inline constexpr int kPanelWidth = 2000;
inline constexpr int kPanelWidthBatch = 10000;

class Interaction {
 public:
  virtual ~Interaction() = default;

  /// Shows the box and waits. Escape answers Cancel, No, Abort or OK, whichever the box has.
  virtual Answer ShowMessage(const MessageBox& box) = 0;

  /// Asks for a line of text; nullopt if the person cancels.
  virtual std::optional<std::string> AskText(const std::string& prompt, const std::string& title,
                                             const std::string& offered) = 0;

  /// Path of a folder, bytes, without an added separator; nullopt if the person cancels.
  virtual std::optional<std::string> ChooseFolder(const std::string& title,
                                                  const std::string& start) = 0;
  virtual std::optional<std::string> ChooseFile(const FileChoice& choice) = 0;

  /// Panel 1 of the status bar.
  virtual void SetStatus(const std::string& text) = 0;
  [[nodiscard]] virtual std::string Status() const = 0;
  virtual void SetPanelWidth(int twips) = 0;

  /// Hourglass. Calls nest.
  virtual void SetBusyPointer(bool busy) = 0;

  /// ProgressBar1 from 0 to `maximum`, shown; HideProgress takes it away.
  virtual void ShowProgress(std::int64_t maximum) = 0;
  virtual void SetProgress(std::int64_t value) = 0;
  virtual void HideProgress() = 0;

  /// frmLoading with its line and its Cancel button. ShowLoading while it is shown changes the
  /// line.
  virtual void ShowLoading(const std::string& line) = 0;
  virtual void HideLoading() = 0;

  /// frmdoUmbenennen, the window of a long job: title, two lines for the file at work, a bar from 0
  /// to `maximum`, a log. It stands until the person closes it; closing it while the job runs sets
  /// the cancel flag. ShowJob empties the log of the job before.
  virtual void ShowJob(const std::string& title, std::int64_t maximum) = 0;
  virtual void SetJobStep(std::int64_t value, const std::string& from, const std::string& to) = 0;
  virtual void AddJobLine(const std::string& line) = 0;
  virtual void EndJob() = 0;  ///< bar full or hidden, cmdClose gets the focus

  /// The main window takes no input while it is disabled; the windows above it do. Calls nest.
  virtual void EnableMainWindow(bool enabled) = 0;

  /// Lays the panes out again.
  virtual void ResizeForm() = 0;

  /// Lets the window system work off what is waiting. Whatever the person does then happens inside
  /// this call. Painting is limited by the clock, so a yield per item is cheap.
  virtual void Yield() = 0;

  /// Lets the window paint without taking input: for the middle of a statement.
  virtual void KeepPainting() = 0;
};

}  // namespace tunemeadow
