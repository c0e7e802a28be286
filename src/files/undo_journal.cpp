// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/undo_journal.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

#include "core/paths.h"
#include "files/durable_file.h"
#include "files/undo_journal_state.h"

namespace tunemeadow {
UndoJournal::UndoJournal(std::string_view folder, RunIdentity run)
    : state_(std::make_unique<State>()) {
  state_->folder = WithTrailingSeparator(folder);
  state_->run = std::move(run);
}

UndoJournal::~UndoJournal() {
  if (state_->in_group) (void)EndGroup();
  if (state_->log.IsOpen() && state_->size == 0 && state_->LogIsOurs()) {
    unlink(state_->LogPath().c_str());
  }
}

void UndoJournal::BeginGroup() {
  if (!state_->waiting.empty()) {
    for (RolledBack& file : RollBack()) state_->untold.push_back(std::move(file));
  }
  state_->in_group = true;
  state_->set_aside = false;
}

std::vector<UndoJournal::RolledBack> UndoJournal::TakeRolledBack() {
  return std::exchange(state_->untold, {});
}

bool UndoJournal::InGroup() const noexcept { return state_->in_group; }

void UndoJournal::Prepare(const std::string& path, std::span<const ByteRange> ranges,
                          std::int64_t growth) {
  State& state = *state_;
  if (state.files.contains(path) || state.pending_files.contains(path) ||
      state.waiting.contains(path)) {
    return;
  }
  const Descriptor file(open(path.c_str(), O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat now {};
  if (!file.IsOpen() || fstat(file.get(), &now) != 0 || !S_ISREG(now.st_mode) ||
      state.names.contains({now.st_dev, now.st_ino})) {
    return;
  }
  GuardedFile guarded = GuardOf(now);
  guarded.most += growth;
  for (ByteRange range : ranges) {
    range.length = std::min(range.offset + range.length, guarded.base_length) - range.offset;
    if (range.offset >= 0 && range.length > 0) guarded.covered.push_back(range);
  }
  if (!state.OpenLog().empty()) return;
  const std::int64_t before = state.size;
  const std::string fault = OrNoMemory(
      [&] { return state.AppendImages(ImageOf(path, guarded), guarded.covered, file.get()); });
  if (!fault.empty()) return state.CutLog(before);
  if (state.pending_files.empty()) state.pending_from = before;
  state.names[{guarded.device, guarded.node}] = path;
  state.pending_files[path] = std::move(guarded);
}

bool UndoJournal::SyncPrepared() { return state_->SyncPrepared(); }

std::int64_t UndoJournal::GroupBytes() const noexcept { return state_->size; }

void UndoJournal::Done(const std::string& path) {
  State& state = *state_;
  struct stat now {};
  if (state.files.empty() || stat(path.c_str(), &now) != 0) return;
  const auto found = state.files.find(state.KnownName(path, now));
  if (found == state.files.end() || !found->second.file.IsOpen() || found->second.torn) return;
  const GuardedFile& file = found->second;
  if (fstat(file.file.get(), &now) != 0) return;
  JournalRecord mark{
      .kind = JournalRecord::Kind::kMark, .path = found->first, .length = now.st_size};
  std::vector<ByteRange> ranges = file.covered;
  ranges.push_back({file.base_length, now.st_size - file.base_length});
  for (ByteRange range : ranges) {
    range.length = std::min<std::int64_t>(range.offset + range.length, now.st_size) - range.offset;
    if (range.length <= 0) continue;
    const std::optional<std::uint32_t> checksum = ChecksumOf(file.file.get(), range);
    if (!checksum) return;
    mark.parts.push_back({range, 0, *checksum});
  }
  std::string record;
  AppendRecord(mark, {}, record);
  // Without the mark the file would only be rolled back with the rest of its group.
  (void)state.Append(record);
  found->second.begun = false;
}

std::string UndoJournal::EndGroup() {
  State& state = *state_;
  state.in_group = false;
  state.pending_files.clear();
  std::string fault = state.SyncFiles();
  if (state.log.IsOpen() && state.size > 0) {
    const bool keep = !fault.empty() || state.set_aside;
    if (!keep && ftruncate(state.log.get(), 0) != 0) {
      fault = SystemFault("The undo journal cannot be emptied", errno);
    }
    if (keep || !fault.empty()) {
      state.SetLogAside();
    } else {
      state.size = 0;
      state.torn_log = false;
      // The files are new now, whatever comes. Old records that the disk may still hold go with
      // their file; if that fails too, the worst is an undone save after a power cut.
      if (fdatasync(state.log.get()) != 0) state.RemoveLog();
    }
  }
  state.files.clear();
  state.names.clear();
  state.set_aside = false;
  return fault;
}

std::string RollBackSentence(std::span<const UndoJournal::RolledBack> files) {
  using Outcome = UndoJournal::RolledBack::Outcome;
  std::string sentence;
  std::string kept;
  const auto add = [&](Outcome outcome, std::string_view one, std::string_view many) {
    std::size_t count = 0;
    std::string_view last;
    for (const UndoJournal::RolledBack& file : files) {
      if (file.outcome != outcome) continue;
      ++count;
      last = file.path;
      kept = FileNamePart(file.kept);
    }
    if (count == 0) return;
    if (!sentence.empty()) sentence += ' ';
    sentence += DisplayPath(last);
    if (count > 1) {
      sentence += " and " + std::to_string(count - 1) + (count == 2 ? " other" : " others");
    }
    sentence += count == 1 ? one : many;
  };
  add(Outcome::kUndone, ": a save was cut short; the file is as it was before.",
      ": their saves were cut short; the files are as they were before.");
  add(Outcome::kUnreachable, ": a save was cut short and cannot be undone now; it is tried again.",
      ": their saves were cut short and cannot be undone now; it is tried again.");
  add(Outcome::kChanged, ": a save was cut short, but the file has changed since and was left.",
      ": their saves were cut short, but the files have changed since and were left.");
  if (!kept.empty()) sentence += " The old bytes are in " + kept + ".";
  return sentence;
}

}  // namespace tunemeadow
