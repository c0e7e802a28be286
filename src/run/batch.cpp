// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/batch.h"

#include <utility>

namespace tunemeadow {

Batch::Batch(Session& session, Interaction& interaction, const std::string& line,
             std::int64_t maximum)
    : session_(session),
      interaction_(interaction),
      outer_(std::exchange(session.batch, this)),
      busy_(session, interaction, {.batch = true, .closed_window = true}),
      line_(line),
      maximum_(maximum) {
  if (outer_ == nullptr) session_.CancelRequested = false;
  interaction_.SetPanelWidth(kPanelWidthBatch);
  if (maximum_ > 0) interaction_.ShowProgress(maximum_);
  if (!line_.empty()) interaction_.ShowLoading(line_);
}

Batch::~Batch() {
  session_.batch = outer_;
  if (outer_ == nullptr) {
    interaction_.SetPanelWidth(kPanelWidth);
    interaction_.SetStatus("Ready.");
  }
  interaction_.HideProgress();
  interaction_.HideLoading();
  if (outer_ == nullptr) {
    interaction_.ResizeForm();
  } else {
    outer_->GoOn();
  }
}

void Batch::GoOn() {
  maximum_ = 0;
  if (!line_.empty()) interaction_.ShowLoading(line_);
}

bool Batch::Step(std::int64_t value) {
  if (maximum_ > 0) interaction_.SetProgress(value);
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
