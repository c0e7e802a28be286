// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/batch.h"

namespace tunemeadow {

Batch::Batch(Session& session, Interaction& interaction, const std::string& line,
             std::int64_t maximum)
    : session_(session), interaction_(interaction), line_(line), outer_(!session.busy) {
  session_.busy = true;
  session_.CancelRequested = false;
  if (outer_) session_.connection.SetDurability(Durability::kBatch);
  interaction_.SetBusyPointer(true);
  interaction_.SetPanelWidth(kPanelWidthBatch);
  interaction_.EnableMainWindow(false);
  if (maximum > 0) interaction_.ShowProgress(maximum);
  if (!line_.empty()) interaction_.ShowLoading(line_);
}

Batch::~Batch() {
  interaction_.SetBusyPointer(false);
  interaction_.SetPanelWidth(kPanelWidth);
  interaction_.SetStatus("Ready.");
  interaction_.HideProgress();
  interaction_.HideLoading();
  interaction_.ResizeForm();
  interaction_.EnableMainWindow(true);
  if (!outer_) return;
  session_.connection.SetDurability(Durability::kFull);
  session_.busy = false;
}

bool Batch::Step(std::int64_t value) {
  interaction_.SetProgress(value);
  interaction_.Yield();
  return !session_.CancelRequested;
}

Answer Batch::ShowMessage(const MessageBox& box) {
  interaction_.HideLoading();
  const Answer answer = interaction_.ShowMessage(box);
  if (!line_.empty()) interaction_.ShowLoading(line_);
  return answer;
}

void Batch::SetLine(const std::string& line) {
  line_ = line;
  interaction_.ShowLoading(line_);
}

}  // namespace tunemeadow
