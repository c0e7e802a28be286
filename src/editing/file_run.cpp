// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/file_run.h"

#include <algorithm>
#include <utility>

#include "core/paths.h"

namespace tunemeadow {
namespace {

/// The files of a group; one that is not written has no path there.
std::vector<std::string> PathsOfGroup(const std::vector<SelectedFile>& files) {
  std::vector<std::string> paths;
  paths.reserve(files.size());
  for (const SelectedFile& file : files) {
    paths.push_back(file.is_written ? file.path : std::string());
  }
  return paths;
}

}  // namespace

FileRun::FileRun(Workbench& bench, FileRunPlan plan, std::vector<SelectedFile> files)
    : bench_(bench),
      plan_(std::move(plan)),
      files_(std::move(files)),
      batch_(bench.session, bench.interaction, plan_.line,
             plan_.job ? 0 : std::max<std::int64_t>(Count(), 1)) {
  writing_.yield = [&bench] { bench.interaction.Yield(); };
  if (plan_.save) {
    group_.emplace(bench.session.journal, batch_, PathsOfGroup(files_), *plan_.save);
  }
  if (plan_.job) bench.interaction.ShowJob(plan_.job->title, std::max<std::int64_t>(Count(), 1));
}

FileRun::~FileRun() {
  if (plan_.job) bench_.interaction.EndJob();
}

bool FileRun::Run(const std::function<void(const SelectedFile&)>& work) {
  for (index_ = 0; index_ < files_.size(); ++index_) {
    if (!Step()) return false;
    work(files_[index_]);
    FileDone();
    if (stopped_) return false;
  }
  if (plan_.job) bench_.interaction.SetJobStep(Count(), "", "");
  return true;
}

bool FileRun::Step() {
  const std::string& path = files_[index_].path;
  const auto number = static_cast<std::int64_t>(index_);
  if (plan_.shows_path) bench_.interaction.SetStatus(DisplayPath(path));
  if (plan_.job) bench_.interaction.SetJobStep(number, DisplayPath(path), "");
  if (batch_.Step(number + plan_.first_step)) return true;
  if (plan_.job) bench_.interaction.AddJobLine(plan_.job->cancelled);
  return false;
}

bool FileRun::Try(const std::function<std::optional<MessageBox>()>& write) {
  for (;;) {
    BeginFile();
    const std::optional<MessageBox> failure = write();
    if (!failure) return true;
    if (Ask(*failure) != Answer::kRetry) return false;
  }
}

void FileRun::BeginFile() {
  begun_ = true;
  if (group_) group_->BeginFile(index_);
}

Answer FileRun::Ask(const MessageBox& box) {
  if (ignores_) return Answer::kIgnore;
  const Answer answer = Tell(box);
  ignores_ = answer == Answer::kIgnore && plan_.ignores_all;
  stopped_ = stopped_ || answer == Answer::kAbort;
  return answer;
}

void FileRun::FileDone() {
  if (begun_ && group_) group_->FileDone(index_);
  begun_ = false;
}

void FileRun::UpdateRow(const RowUpdate& update) {
  if (const auto box = TryUpdateRow(bench_, update, files_[index_], rows_)) Tell(*box);
}

void FileRun::SetCells(std::span<const FieldText> cells) {
  rows_.SetCells(bench_, files_[index_].uid, cells);
}

Answer FileRun::Tell(const MessageBox& box) {
  if (group_) group_->Close();
  return batch_.ShowMessage(box);
}

}  // namespace tunemeadow
