// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/undo_journal_state.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <optional>
#include <utility>

#include "files/durable_file.h"
#include "files/file_facts.h"

namespace tunemeadow {
namespace {

/// From so many files of one volume on, one sync of the volume costs less than one of each file.
constexpr std::size_t kFilesForVolumeSync = 4;

/// More files than this are not kept open for the sync at the end of a group.
constexpr std::size_t kMostOpenFiles = 300;

/// Whether nobody else has written to the file, or put another in its place, since the journal took
/// its old bytes.
bool IsAsItWas(const GuardedFile& guarded, const struct stat& now) {
  if (guarded.device != now.st_dev || guarded.node != now.st_ino) return false;
  return guarded.touched ||
         (guarded.base_length == now.st_size && guarded.modified.tv_sec == now.st_mtim.tv_sec &&
          guarded.modified.tv_nsec == now.st_mtim.tv_nsec);
}

/// What of `needs` belongs to the file as it was before the group and is not in the journal yet.
std::vector<ByteRange> MissingParts(std::span<const ByteRange> needs, const GuardedFile& file) {
  std::vector<ByteRange> missing;
  for (ByteRange need : needs) {
    need.length = std::min(need.offset + need.length, file.base_length) - need.offset;
    if (need.length <= 0) continue;
    for (const ByteRange& part : UncoveredParts(need, file.covered)) missing.push_back(part);
  }
  return missing;
}

/// The same bytes as ranges of at most kJournalBlock.
std::vector<ByteRange> InBlocks(std::span<const ByteRange> parts) {
  std::vector<ByteRange> blocks;
  for (ByteRange part : parts) {
    while (part.length > 0) {
      const std::int64_t count = std::min(part.length, kJournalBlock);
      blocks.push_back({part.offset, count});
      part.offset += count;
      part.length -= count;
    }
  }
  return blocks;
}

/// Adds the range to ranges that are covered, to the last of them where it goes on from there.
void Cover(const ByteRange& range, std::vector<ByteRange>& covered) {
  if (!covered.empty() && covered.back().offset + covered.back().length == range.offset) {
    covered.back().length += range.length;
  } else {
    covered.push_back(range);
  }
}

}  // namespace

GuardedFile GuardOf(const struct stat& now) {
  GuardedFile guarded;
  guarded.device = now.st_dev;
  guarded.node = now.st_ino;
  guarded.modified = now.st_mtim;
  guarded.base_length = guarded.least = guarded.most = now.st_size;
  return guarded;
}

std::optional<std::string> ReadExactly(int descriptor, const ByteRange& range) {
  std::string bytes(static_cast<std::size_t>(range.length), '\0');
  if (ReadAllAt(descriptor, bytes.data(), bytes.size(), range.offset) != bytes.size()) {
    return std::nullopt;
  }
  return bytes;
}

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

std::string UndoJournal::State::KnownName(const std::string& path, const struct stat& now) const {
  if (files.contains(path)) return path;
  const auto found = names.find({now.st_dev, now.st_ino});
  return found == names.end() ? path : found->second;
}

bool UndoJournal::State::LogIsOurs() const {
  struct stat status {};
  return fstat(log.get(), &status) == 0 && status.st_nlink > 0 && (status.st_size == 0 || torn_log);
}

std::string UndoJournal::State::OpenLog() {
  // Where the folder knows no locks, another instance may have taken the empty journal.
  if (log.IsOpen() && (size > 0 || LogIsOurs())) return {};
  log.Close();
  torn_log = false;
  const std::string path = LogPath();
  Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  struct stat status {};
  if (!file.IsOpen() || fstat(file.get(), &status) != 0) {
    return SystemFault("The undo journal cannot be opened", errno);
  }
  if (status.st_size != 0) {
    return "An undo journal stands there that could not be read, or that another running program "
           "writes.";
  }
  // Also where the file was there: its name need not be on the disk yet.
  if (!SyncFolderOf(path)) {
    return SystemFault("The undo journal cannot be made", errno);
  }
  log = std::move(file);
  size = 0;
  return {};
}

void UndoJournal::State::CutLog(std::int64_t length) {
  size = length;
  if (ftruncate(log.get(), length) == 0) return;
  // A torn end counts for nothing; cutting it off only keeps the journal tidy.
  torn_log = set_aside = true;
}

bool UndoJournal::State::Append(std::string_view records) {
  std::string with_run;
  if (size == 0) {
    AppendRecord(RunRecord(run), {}, with_run);
    with_run += records;
    records = with_run;
  }
  if (WriteAllAt(log.get(), records, size)) {
    size += static_cast<std::int64_t>(records.size());
    return true;
  }
  const int error = errno;
  CutLog(size);
  errno = error;
  return false;
}

std::string UndoJournal::State::AppendImages(const JournalRecord& image,
                                             std::span<const ByteRange> parts, int descriptor) {
  const std::vector<ByteRange> blocks = InBlocks(parts);
  std::string record_bytes;
  std::size_t next = 0;
  do {
    JournalRecord record = image;
    std::vector<std::string> bytes;
    for (std::int64_t total = 0;
         next < blocks.size() && (bytes.empty() || total + blocks[next].length <= kJournalBlock);
         ++next) {
      std::optional<std::string> read = ReadExactly(descriptor, blocks[next]);
      if (!read) return "The file cannot be read.";
      bytes.push_back(std::move(*read));
      record.parts.push_back({blocks[next]});
      total += blocks[next].length;
    }
    const std::vector<std::string_view> views(bytes.begin(), bytes.end());
    record_bytes.clear();
    AppendRecord(record, views, record_bytes);
    if (!Append(record_bytes)) return SystemFault("The undo journal cannot be written", errno);
  } while (next < blocks.size());
  return {};
}

std::string UndoJournal::State::Guard(const std::string& path, const struct stat& now,
                                      std::span<const ByteRange> needs, int descriptor,
                                      std::int64_t new_length) {
  if (!pending_files.empty()) (void)SyncPrepared();
  const auto found = files.find(path);
  const bool known = found != files.end();
  if (known && !IsAsItWas(found->second, now)) {
    return "The file was changed by another program meanwhile.";
  }
  GuardedFile fresh = GuardOf(now);
  GuardedFile& file = known ? found->second : fresh;
  const std::int64_t least = std::min(file.least, new_length);
  const std::int64_t most = std::max(file.most, new_length);
  const std::vector<ByteRange> parts = MissingParts(needs, file);
  if (known && parts.empty() && least == file.least && most == file.most) return {};

  if (std::string fault = OpenLog(); !fault.empty()) return fault;
  JournalRecord image = ImageOf(path, file);
  image.least = least;
  image.most = most;
  const std::int64_t before = size;
  std::string fault = OrNoMemory([&] { return AppendImages(image, parts, descriptor); });
  if (fault.empty() && fdatasync(log.get()) != 0) {
    fault = SystemFault("The undo journal cannot be written", errno);
  }
  if (!fault.empty()) {
    CutLog(before);
    return fault;
  }
  file.least = least;
  file.most = most;
  for (const ByteRange& part : parts) Cover(part, file.covered);
  if (!known) {
    names[{fresh.device, fresh.node}] = path;
    files[path] = std::move(fresh);
  }
  return {};
}

bool UndoJournal::State::SyncPrepared() {
  auto prepared = std::exchange(pending_files, {});
  if (prepared.empty()) return true;
  if (fdatasync(log.get()) != 0) {
    CutLog(pending_from);
    for (const auto& [path, file] : prepared) names.erase({file.device, file.node});
    return false;
  }
  files.merge(prepared);
  return true;
}

std::string UndoJournal::State::Begun(const std::string& path) {
  GuardedFile& file = files[path];
  if (file.begun) return {};
  std::string record;
  AppendRecord({.kind = JournalRecord::Kind::kBegun, .path = path}, {}, record);
  if (!Append(record)) return SystemFault("The undo journal cannot be written", errno);
  file.begun = true;
  return {};
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
  int error = 0;
  for (auto& [path, file] : files) {
    if (file.synced) continue;
    if (file.file.IsOpen()) {
      by_volume[file.device].push_back(&file);
    } else {
      fault = "A file could not be written to the disk.";
    }
  }
  for (const auto& [volume, written] : by_volume) {
    if (written.size() > kFilesForVolumeSync && syncfs(written.front()->file.get()) == 0) continue;
    // One that fails must not leave the others unsynced.
    for (const GuardedFile* file : written) {
      if (fdatasync(file->file.get()) != 0) error = errno;
    }
  }
  if (error != 0) fault = SystemFault("A file could not be written to the disk", error);
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

}  // namespace tunemeadow
