// SPDX-License-Identifier: GPL-3.0-or-later
// The progress idiom of every long command: busy pointer, wide status panel, progress bar,
// frmLoading with its line, disabled main window. The object undoes it on every way out.
#pragma once

#include <cstdint>
#include <string>

#include "run/interaction.h"
#include "run/session.h"

namespace tunemeadow {

class Batch {
 public:
  /// Begins: clears CancelRequested, shows `line` in frmLoading and, where `maximum` is above 0,
  /// the progress bar. The catalogue writes in batches meanwhile. An empty `line` is for a job with
  /// a window of its own: frmLoading does not come.
  Batch(Session& session, Interaction& interaction, const std::string& line, std::int64_t maximum);

  /// Puts everything back: pointer, panel ("Ready.", width 2000), bar, frmLoading, main window;
  /// syncs what the batch wrote.
  ~Batch();
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;

  /// Once per item: shows the value, yields, and tells whether to go on (false: CancelRequested).
  [[nodiscard]] bool Step(std::int64_t value);

  /// Shows a box while frmLoading is hidden, and frmLoading again.
  Answer ShowMessage(const MessageBox& box);

  /// Changes the line of frmLoading.
  void SetLine(const std::string& line);

 private:
  Session& session_;
  Interaction& interaction_;
  std::string line_;
  bool outer_;  ///< no batch was running when this one began
};

}  // namespace tunemeadow
