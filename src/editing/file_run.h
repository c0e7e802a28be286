// SPDX-License-Identifier: GPL-3.0-or-later
// The loop of a batch over files: step and Cancel, the group of the journal, Retry, Ignore and
// Abort where a file fails, its row and its cells. What is done to a file, and every text, belongs
// to the command.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "audio/tag_writing.h"
#include "editing/row_update.h"
#include "editing/save_group.h"
#include "editing/track_rows.h"
#include "run/batch.h"

namespace tunemeadow {

/// A run with frmdoUmbenennen, the window of a long job, instead of frmLoading and the bar.
struct FileRunJob {
  std::string title;
  std::string cancelled;  ///< line of the log where Cancel ended the run
};

/// What a run is told beforehand.
struct FileRunPlan {
  std::string line;  ///< of frmLoading; empty for a job
  std::optional<FileRunJob> job = {};
  std::int64_t first_step = 0;  ///< value of the bar at the first file
  bool shows_path = false;      ///< the status line names each file
  bool ignores_all = true;      ///< Ignore holds for every failure that follows, not for one alone
  std::optional<SavePlan> save = {};  ///< of the files that are written; none where no file is
};

/// Use:
///   FileRun run(bench, {.line = "working...", .save = SavePlan{...}}, files);
///   const bool complete = run.Run([&](const SelectedFile& file) {
///     if (run.Try([&] { return WriteIt(run.Writing(), file.path); })) run.UpdateRow(kItsUpdate);
///   });
/// The batch begins with the object and ends with it. The lists are not filled or sorted meanwhile.
class FileRun {
 public:
  FileRun(Workbench& bench, FileRunPlan plan, std::vector<SelectedFile> files);
  ~FileRun();
  FileRun(const FileRun&) = delete;
  FileRun& operator=(const FileRun&) = delete;

  /// Calls `work` for each file. False if the run ended before the last one: Cancel, Abort or
  /// Stop.
  [[nodiscard]] bool Run(const std::function<void(const SelectedFile&)>& work);

  // The rest is for `work`, and about the file at work.

  /// Tries until `write` returns no box, or the person does not want another try. False: it failed.
  [[nodiscard]] bool Try(const std::function<std::optional<MessageBox>()>& write);

  /// The two halves of Try, for a write with several steps of its own. BeginFile stands before each
  /// try; Ask shows a box with Abort, Retry and Ignore, and Abort ends the run after this file.
  void BeginFile();
  [[nodiscard]] Answer Ask(const MessageBox& box);

  /// After the last write, where something else follows that may fail; Run sees to it otherwise.
  void FileDone();

  /// Runs the statement of the file's row, and sets its cells. A refused one is told; the run goes
  /// on.
  void UpdateRow(const RowUpdate& update);
  void SetCells(std::span<const FieldText> cells);

  /// Shows a box. What was written so far is safe before it comes, since it may stand for long.
  Answer Tell(const MessageBox& box);

  /// The file at work is the last one.
  void Stop() noexcept { stopped_ = true; }
  [[nodiscard]] bool Stopped() const noexcept { return stopped_; }

  /// For every writer of this run; holds what they lose.
  [[nodiscard]] TagWriting& Writing() noexcept { return writing_; }

 private:
  [[nodiscard]] std::int64_t Count() const { return static_cast<std::int64_t>(files_.size()); }
  bool Step();

  Workbench& bench_;
  FileRunPlan plan_;
  std::vector<SelectedFile> files_;
  const TrackRows rows_{bench_};
  Batch batch_;
  std::optional<SaveGroup> group_;  ///< goes before the batch
  TagWriting writing_{bench_.session.journal};
  std::size_t index_ = 0;  ///< of the file at work
  bool begun_ = false;     ///< it may have been written
  bool ignores_ = false;   ///< no box for a failure any more
  bool stopped_ = false;
};

}  // namespace tunemeadow
