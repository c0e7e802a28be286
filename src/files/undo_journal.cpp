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
#include "files/file_facts.h"
#include "files/undo_journal_state.h"

namespace tunemeadow {
namespace {

/// From so many files of one volume on, one sync of the volume costs less than one of each file.
constexpr std::size_t kFilesForVolumeSync = 4;

/// More files than this are not kept open for the sync at the end of a group.
constexpr std::size_t kMostOpenFiles = 300;

std::optional<std::string> ReadExactly(int descriptor, const ByteRange& range) {
  std::string bytes(static_cast<std::size_t>(range.length), '\0');
  if (ReadAllAt(descriptor, bytes.data(), bytes.size(), range.offset) != bytes.size()) {
    return std::nullopt;
  }
  return bytes;
}

GuardedFile GuardOf(const struct stat& now) {
  GuardedFile guarded;
  guarded.device = now.st_dev;
  guarded.node = now.st_ino;
  guarded.modified = now.st_mtim;
  guarded.base_length = guarded.least = guarded.most = now.st_size;
  return guarded;
}

/// Whether nobody else has written to the file, or put another in its place, since the journal took
/// its old bytes.
bool IsAsItWas(const GuardedFile& guarded, const struct stat& now) {
  if (guarded.device != now.st_dev || guarded.node != now.st_ino) return false;
  return guarded.touched ||
         (guarded.base_length == now.st_size && guarded.modified.tv_sec == now.st_mtim.tv_sec &&
          guarded.modified.tv_nsec == now.st_mtim.tv_nsec);
}

}  // namespace

std::vector<ByteRange> UncoveredParts(const ByteRange& range, std::span<const ByteRange> covered) {
  std::vector<ByteRange> open = {range};
  for (const ByteRange& cover : covered) {
    std::vector<ByteRange> left;
    const std::int64_t cover_end = cover.offset + cover.length;
    for (const ByteRange& part : open) {
      const std::int64_t part_end = part.offset + part.length;
      const std::int64_t before = std::min(part_end, cover.offset) - part.offset;
      const std::int64_t behind = part_end - std::max(part.offset, cover_end);
      if (before > 0) left.push_back({part.offset, before});
      if (behind > 0) left.push_back({part_end - behind, behind});
    }
    open = std::move(left);
  }
  std::erase_if(open, [](const ByteRange& part) { return part.length <= 0; });
  return open;
}

JournalRecord ImageOf(const std::string& path, const GuardedFile& guarded) {
  return {.kind = JournalRecord::Kind::kImage,
          .path = path,
          .length = guarded.base_length,
          .least = guarded.least,
          .most = guarded.most,
          .modified_seconds = guarded.modified.tv_sec,
          .modified_nanoseconds = guarded.modified.tv_nsec};
}

// --- State -----------------------------------------------------------------------------------

std::string UndoJournal::State::KnownName(const std::string& path, const struct stat& now) const {
  if (files.contains(path)) return path;
  const auto found = names.find({now.st_dev, now.st_ino});
  return found == names.end() ? path : found->second;
}

std::string UndoJournal::State::OpenLog() {
  if (log.IsOpen()) return {};
  const std::string path = LogPath();
  Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  struct stat status {};
  if (!file.IsOpen() || fstat(file.get(), &status) != 0) {
    return SystemFault("The undo journal cannot be opened", errno);
  }
  if (status.st_size != 0) return "An older undo journal stands there and could not be read.";
  // Also where the file was there: its name need not be on the disk yet.
  if (!SyncFolderOf(path)) {
    return SystemFault("The undo journal cannot be made", errno);
  }
  log = std::move(file);
  size = 0;
  return {};
}

bool UndoJournal::State::Append(std::string_view records, bool sync) {
  std::string with_run;
  if (size == 0) {
    AppendRecord({.kind = JournalRecord::Kind::kRun, .path = machine_run}, {}, with_run);
    with_run += records;
    records = with_run;
  }
  if (WriteAllAt(log.get(), records, size) && (!sync || fdatasync(log.get()) == 0)) {
    size += static_cast<std::int64_t>(records.size());
    return true;
  }
  const int error = errno;
  // A torn end counts for nothing; cutting it off only keeps the journal tidy.
  if (ftruncate(log.get(), size) != 0) set_aside = true;
  errno = error;
  return false;
}

std::string UndoJournal::State::Guard(const std::string& path, const struct stat& now,
                                      std::span<const ByteRange> needs,
                                      std::span<const std::string> before,
                                      std::int64_t new_length) {
  const auto found = files.find(path);
  const bool known = found != files.end();
  if (known && !IsAsItWas(found->second, now)) {
    return "The file was changed by another program meanwhile.";
  }
  GuardedFile fresh;
  if (!known) {
    fresh = GuardOf(now);
  }
  GuardedFile& file = known ? found->second : fresh;

  const std::int64_t least = std::min(file.least, new_length);
  const std::int64_t most = std::max(file.most, new_length);
  std::vector<ByteRange> parts;
  std::vector<std::string_view> bytes;
  for (std::size_t i = 0; i < needs.size(); ++i) {
    ByteRange in_base = needs[i];
    in_base.length = std::min(in_base.offset + in_base.length, file.base_length) - in_base.offset;
    if (in_base.length <= 0) continue;
    for (const ByteRange& part : UncoveredParts(in_base, file.covered)) {
      parts.push_back(part);
      bytes.push_back(std::string_view(before[i]).substr(
          static_cast<std::size_t>(part.offset - needs[i].offset),
          static_cast<std::size_t>(part.length)));
    }
  }
  if (known && parts.empty() && least == file.least && most == file.most) return {};

  if (std::string fault = OpenLog(); !fault.empty()) return fault;
  JournalRecord record = ImageOf(path, file);
  record.least = least;
  record.most = most;
  for (const ByteRange& part : parts) record.parts.push_back({part});
  std::string log_bytes;
  AppendRecord(record, bytes, log_bytes);
  if (!Append(log_bytes, true)) return SystemFault("The undo journal cannot be written", errno);
  file.least = least;
  file.most = most;
  file.covered.insert(file.covered.end(), parts.begin(), parts.end());
  if (!known) {
    names[{fresh.device, fresh.node}] = path;
    files[path] = std::move(fresh);
  }
  return {};
}

void UndoJournal::State::Begun(const std::string& path) {
  GuardedFile& file = files[path];
  if (std::exchange(file.begun, true)) return;
  std::string record;
  AppendRecord({.kind = JournalRecord::Kind::kBegun, .path = path}, {}, record);
  (void)Append(record, false);
}

void UndoJournal::State::Written(const std::string& path, int descriptor, bool synced_now) {
  GuardedFile& file = files[path];
  file.touched = true;
  file.synced = synced_now;
  if (file.file.IsOpen() || synced_now) return;
  if (files.size() < kMostOpenFiles) {
    file.file = Descriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
  }
  if (!file.file.IsOpen()) file.synced = fdatasync(descriptor) == 0;
}

std::string UndoJournal::State::SyncFiles() {
  std::map<dev_t, std::vector<GuardedFile*>> by_volume;
  std::string fault;
  for (auto& [path, file] : files) {
    if (file.synced) continue;
    if (file.file.IsOpen()) {
      by_volume[file.device].push_back(&file);
    } else {
      fault = "A file could not be written to the disk.";
    }
  }
  for (const auto& [volume, written] : by_volume) {
    bool synced = written.size() > kFilesForVolumeSync && syncfs(written.front()->file.get()) == 0;
    if (!synced) {
      // One that fails must not leave the others unsynced.
      synced = std::count_if(written.begin(), written.end(), [](const GuardedFile* file) {
                 return fdatasync(file->file.get()) != 0;
               }) == 0;
    }
    if (!synced) fault = SystemFault("A file could not be written to the disk", errno);
  }
  return fault;
}

void UndoJournal::State::SetLogAside() {
  log.Close();
  for (int number = 1; number < 10000; ++number) {
    const std::string name = folder + "undo-" + std::to_string(number) + ".journal";
    if (MyFileExists(name)) continue;
    if (rename(LogPath().c_str(), name.c_str()) == 0) SyncFolderOf(name);
    break;
  }
  for (const auto& [path, file] : files) waiting.insert(path);
  size = 0;
}

void UndoJournal::State::RemoveLog() {
  log.Close();
  if (unlink(LogPath().c_str()) == 0) SyncFolderOf(LogPath());
}

bool UndoJournal::State::Released(UndoJournal& journal, const std::string& path) {
  const auto found = files.find(path);
  if (found != files.end() && found->second.torn) return false;
  if (!waiting.contains(path)) return true;
  if (in_group) return false;  // its journal is in use
  for (RolledBack& file : journal.RollBack()) untold.push_back(std::move(file));
  return !waiting.contains(path);
}

// --- UndoJournal -----------------------------------------------------------------------------

std::string ThisMachineRun() {
  std::string run = ReadWholeFile("/proc/sys/kernel/random/boot_id").value_or(std::string());
  return run.substr(0, run.find('\n'));
}

UndoJournal::UndoJournal(std::string_view folder, std::string machine_run)
    : state_(std::make_unique<State>()) {
  state_->folder = WithTrailingSeparator(folder);
  state_->machine_run = std::move(machine_run);
}

UndoJournal::~UndoJournal() {
  if (state_->in_group) (void)EndGroup();
  if (state_->log.IsOpen() && state_->size == 0) unlink(state_->LogPath().c_str());
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
  JournalRecord record = ImageOf(path, guarded);
  std::vector<std::string> bytes;
  for (ByteRange range : ranges) {
    range.length = std::min(range.offset + range.length, guarded.base_length) - range.offset;
    if (range.offset < 0 || range.length <= 0) continue;
    std::optional<std::string> read = ReadExactly(file.get(), range);
    if (!read) return;
    bytes.push_back(std::move(*read));
    record.parts.push_back({range});
    guarded.covered.push_back(range);
  }
  const std::vector<std::string_view> views(bytes.begin(), bytes.end());
  AppendRecord(record, views, state.pending);
  state.names[{guarded.device, guarded.node}] = path;
  state.pending_files[path] = std::move(guarded);
}

bool UndoJournal::SyncPrepared() {
  State& state = *state_;
  const std::string pending = std::exchange(state.pending, {});
  auto prepared = std::exchange(state.pending_files, {});
  if (pending.empty()) return true;
  if (!state.OpenLog().empty() || !state.Append(pending, true)) {
    for (const auto& [path, file] : prepared) state.names.erase({file.device, file.node});
    return false;
  }
  state.files.merge(prepared);
  return true;
}

std::int64_t UndoJournal::GroupBytes() const noexcept {
  return state_->size + static_cast<std::int64_t>(state_->pending.size());
}

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
    const std::optional<std::string> bytes = ReadExactly(file.file.get(), range);
    if (!bytes) return;
    mark.parts.push_back({range, 0, Checksum(*bytes)});
  }
  std::string record;
  AppendRecord(mark, {}, record);
  // Without the mark the file would only be rolled back with the rest of its group.
  (void)state.Append(record, false);
  found->second.begun = false;
}

std::string UndoJournal::EndGroup() {
  State& state = *state_;
  state.in_group = false;
  state.pending.clear();
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
  const auto add = [&](Outcome outcome, std::string_view one, std::string_view many) {
    std::size_t count = 0;
    std::string_view last;
    for (const UndoJournal::RolledBack& file : files) {
      if (file.outcome != outcome) continue;
      ++count;
      last = file.path;
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
  return sentence;
}

}  // namespace tunemeadow
