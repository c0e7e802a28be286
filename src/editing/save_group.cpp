// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/save_group.h"

#include <algorithm>
#include <utility>

namespace tunemeadow {

SaveGroup::SaveGroup(UndoJournal& journal, Batch& batch, std::vector<std::string> paths,
                     SavePlan plan)
    : SaveGroup(
          journal, [&batch](const MessageBox& box) { batch.ShowMessage(box); }, std::move(paths),
          plan) {}

SaveGroup::SaveGroup(UndoJournal& journal, ShowBox show_box, std::vector<std::string> paths,
                     SavePlan plan)
    : journal_(journal), show_box_(std::move(show_box)), paths_(std::move(paths)), plan_(plan) {}

SaveGroup::~SaveGroup() { Close(); }

void SaveGroup::BeginFile(std::size_t index) {
  if (open_ && IsFull(index)) Close();
  if (!open_) Open(index);
}

bool SaveGroup::IsFull(std::size_t index) const noexcept {
  return index >= end_ || journal_.GroupBytes() > allowed_;
}

void SaveGroup::Open(std::size_t index) {
  journal_.BeginGroup();
  open_ = true;
  const std::size_t most = std::min(index + kFilesPerGroup, paths_.size());
  end_ = index + 1;
  for (std::size_t i = index; plan_.ranges != nullptr && i < most; ++i) {
    if (i > index && journal_.GroupBytes() >= plan_.bytes_per_group) break;
    end_ = i + 1;
    if (!file_.Open(paths_[i])) continue;
    const std::vector<ByteRange> ranges = plan_.ranges(file_);
    file_.Close();
    journal_.Prepare(paths_[i], ranges, plan_.growth);
  }
  if (plan_.ranges == nullptr) {
    end_ = most;
  } else {
    journal_.SyncPrepared();  // where it fails, each rewrite journals for itself
  }
  // What was prepared is in the journal already; only what comes on top of it fills the group. Else
  // a full one would end after its first file, and the rest would be prepared again each time.
  allowed_ = journal_.GroupBytes() + plan_.bytes_per_group;
}

void SaveGroup::FileDone(std::size_t index) { journal_.Done(paths_[index]); }

void SaveGroup::Close() {
  if (!open_) return;
  open_ = false;
  const std::string failure = journal_.EndGroup();
  if (failure.empty() || failure_told_) return;
  failure_told_ = true;
  show_box_({.text = failure, .title = "Error", .icon = Icon::kExclamation});
}

}  // namespace tunemeadow
