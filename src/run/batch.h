// SPDX-License-Identifier: GPL-3.0-or-later
// The progress idiom of every long command: busy pointer, wide status panel, progress bar,
// frmLoading with its line, disabled main window. The object undoes it on every way out.
#pragma once

#include <cstdint>
#include <string>

#include "run/busy.h"
#include "run/interaction.h"
#include "run/session.h"

namespace tunemeadow {

class Batch {
 public:
  /// Begins: clears CancelRequested, shows `line` in frmLoading and, where `maximum` is above 0,
  /// the progress bar. The catalogue writes in batches meanwhile. An empty `line` is for a job with
  /// a window of its own: frmLoading does not come. A batch within another one keeps the cancel,
  /// which ends them both.
  Batch(Session& session, Interaction& interaction, const std::string& line, std::int64_t maximum);

  /// Puts everything back: pointer, panel ("Ready.", width 2000), bar, frmLoading, main window;
  /// syncs what the batch wrote. After a batch within another one, that one's line comes back, no
  /// bar, and the rest is left to it.
  ~Batch();
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;

  /// Once per item: shows the value where there is a bar, yields, and tells whether to go on
  /// (false: CancelRequested).
  [[nodiscard]] bool Step(std::int64_t value);

  /// Shows a box while frmLoading is hidden, and frmLoading again.
  Answer ShowMessage(const MessageBox& box);

  /// Changes the line of frmLoading.
  void SetLine(const std::string& line);

 private:
  void GoOn();  ///< a batch within this one has ended

  Session& session_;
  Interaction& interaction_;
  Batch* outer_;  ///< null: no batch was running when this one began
  Busy busy_;
  std::string line_;
  std::int64_t maximum_;  ///< of the bar; 0: there is none
};

}  // namespace tunemeadow
