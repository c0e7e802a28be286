// SPDX-License-Identifier: GPL-3.0-or-later
// The roll-back of what a kill or a power cut left.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>

#include "core/durable_file.h"
#include "core/paths.h"
#include "core/undo_journal_state.h"

namespace tunemeadow {
namespace {

using Outcome = UndoJournal::RolledBack::Outcome;
using Records = std::vector<const JournalRecord*>;

constexpr std::size_t kCopyStep = std::size_t{1} << 20;

/// "undo.journal" and "undo-N.journal", the oldest first; not those that are kept for the person.
std::vector<std::string> JournalsIn(const std::string& folder) {
  std::vector<std::string> numbered;
  const std::unique_ptr<DIR, int (*)(DIR*)> opened(opendir(folder.empty() ? "." : folder.c_str()),
                                                   closedir);
  while (const dirent* entry = opened ? readdir(opened.get()) : nullptr) {
    const std::string_view name = entry->d_name;
    if (!name.starts_with("undo-") || !name.ends_with(".journal")) continue;
    const std::string_view number = name.substr(5, name.size() - 13);
    if (number.empty() || number.find_first_not_of("0123456789") != std::string_view::npos)
      continue;
    numbered.push_back(folder + std::string(name));
  }
  std::sort(numbered.begin(), numbered.end(),
            [](const std::string& left, const std::string& right) {
              return left.size() != right.size() ? left.size() < right.size() : left < right;
            });
  numbered.push_back(folder + "undo.journal");
  return numbered;
}

/// Calls `each(bytes, offset in the file)` for the bytes of a part, in steps. False as soon as one
/// call says so, or where the journal gives no more.
template <typename Each>
bool WalkImage(int log, const JournalPart& part, Each each) {
  std::string buffer(std::min<std::size_t>(kCopyStep, static_cast<std::size_t>(part.range.length)),
                     '\0');
  for (std::int64_t done = 0; done < part.range.length;) {
    const std::size_t count =
        std::min<std::size_t>(buffer.size(), static_cast<std::size_t>(part.range.length - done));
    if (ReadAllAt(log, buffer.data(), count, part.place + done) != count) return false;
    if (!each(std::string_view(buffer.data(), count), part.range.offset + done)) return false;
    done += static_cast<std::int64_t>(count);
  }
  return true;
}

bool HoldsImage(int file, std::int64_t length, int log, const JournalRecord& image) {
  if (length != image.length) return false;
  std::string buffer;
  return std::all_of(image.parts.begin(), image.parts.end(), [&](const JournalPart& part) {
    return WalkImage(log, part, [&](std::string_view bytes, std::int64_t offset) {
      buffer.resize(bytes.size());
      return ReadAllAt(file, buffer.data(), buffer.size(), offset) == bytes.size() &&
             buffer == bytes;
    });
  });
}

bool HoldsMark(int file, std::int64_t length, const JournalRecord& mark) {
  if (length != mark.length) return false;
  return std::all_of(mark.parts.begin(), mark.parts.end(), [&](const JournalPart& part) {
    std::string bytes(static_cast<std::size_t>(part.range.length), '\0');
    return ReadAllAt(file, bytes.data(), bytes.size(), part.range.offset) == bytes.size() &&
           Checksum(bytes) == part.checksum;
  });
}

/// Puts the old bytes, the old length and the old time back, synced.
bool Restore(int file, int log, const Records& images) {
  for (const JournalRecord* image : images) {
    for (const JournalPart& part : image->parts) {
      if (!WalkImage(log, part, [&](std::string_view bytes, std::int64_t offset) {
            return WriteAllAt(file, bytes, offset);
          })) {
        return false;
      }
    }
  }
  const JournalRecord& first = *images.front();
  if (ftruncate(file, first.length) != 0) return false;
  const struct timespec times[2] = {
      {.tv_sec = 0, .tv_nsec = UTIME_OMIT},
      {.tv_sec = first.modified_seconds, .tv_nsec = first.modified_nanoseconds}};
  // A volume that keeps no times is no reason to call the bytes unrestored.
  (void)futimens(file, times);
  return fsync(file) == 0;
}

/// Rolls one file back. nullopt where there was nothing to be done.
std::optional<Outcome> RollBackFile(const std::string& path, int log, const Records& records) {
  const Descriptor file(open(path.c_str(), O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat now {};
  if (!file.IsOpen()) {
    const bool gone = errno == ENOENT && IsDirectory(std::string(FolderPart(path)));
    return gone ? Outcome::kChanged : Outcome::kUnreachable;
  }
  if (fstat(file.get(), &now) != 0) return Outcome::kUnreachable;
  if (!S_ISREG(now.st_mode)) return Outcome::kChanged;
  Records images;
  const JournalRecord* mark = nullptr;
  for (const JournalRecord* record : records) {
    const bool image = record->kind == JournalRecord::Kind::kImage;
    if (image) images.push_back(record);
    // An image behind a mark says that the file was taken up again.
    mark = image ? nullptr : record;
  }
  const bool whole = images.empty() ||
                     (mark != nullptr && HoldsMark(file.get(), now.st_size, *mark)) ||
                     std::all_of(images.begin(), images.end(), [&](const JournalRecord* image) {
                       return HoldsImage(file.get(), now.st_size, log, *image);
                     });
  if (whole) {
    // What is whole in the memory of the system need not be so on the disk, and the journal goes.
    if (fsync(file.get()) == 0) return std::nullopt;
    return Outcome::kUnreachable;
  }
  if (now.st_size < images.back()->least || now.st_size > images.back()->most) {
    return Outcome::kChanged;
  }
  return Restore(file.get(), log, images) ? Outcome::kUndone : Outcome::kUnreachable;
}

/// A new journal with the records of the paths that could not be reached, in the place of `path`.
bool KeepRecords(const std::string& path, int log, const std::vector<JournalRecord>& records,
                 const std::set<std::string>& waiting) {
  std::string kept;
  for (const JournalRecord& record : records) {
    if (!waiting.contains(record.path)) continue;
    const std::size_t at = kept.size();
    const auto length = static_cast<std::size_t>(record.end - record.start);
    kept.resize(at + length);
    if (ReadAllAt(log, kept.data() + at, length, record.start) != length) return false;
  }
  return ReplaceFile(path, kept);
}

/// A name of the form "undo-WHATN.journal" that is free.
std::string FreeName(const std::string& folder, const std::string& what) {
  const std::string front = folder + "undo-" + what;
  for (int number = 1;; ++number) {
    std::string name = front;
    name += std::to_string(number) + ".journal";
    if (!MyFileExists(name)) return name;
  }
}

}  // namespace

std::vector<UndoJournal::RolledBack> UndoJournal::RollBack() {
  State& state = *state_;
  std::vector<RolledBack> files;
  if (state.in_group) return files;
  state.log.Close();
  state.waiting.clear();
  for (const std::string& path : JournalsIn(state.folder)) {
    const Descriptor log(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!log.IsOpen()) continue;
    const std::vector<JournalRecord> records = ReadRecords(log.get());
    std::vector<std::string> order;
    std::map<std::string, Records> by_file;
    for (const JournalRecord& record : records) {
      if (!by_file.contains(record.path)) order.push_back(record.path);
      by_file[record.path].push_back(&record);
    }
    std::set<std::string> waiting;
    bool changed = false;
    for (const std::string& file : order) {
      const std::optional<Outcome> outcome = RollBackFile(file, log.get(), by_file[file]);
      if (!outcome) continue;
      files.push_back({file, *outcome});
      if (*outcome == Outcome::kUnreachable) waiting.insert(file);
      changed = changed || *outcome == Outcome::kChanged;
    }
    if (changed) {
      const std::string kept = FreeName(state.folder, "kept-");
      if (!waiting.empty()) {
        (void)KeepRecords(FreeName(state.folder, ""), log.get(), records, waiting);
      }
      (void)rename(path.c_str(), kept.c_str());
    } else if (waiting.empty()) {
      (void)unlink(path.c_str());
    } else {
      // What is undone must not be undone again when its file has been edited since.
      if (order.size() > waiting.size()) (void)KeepRecords(path, log.get(), records, waiting);
      if (path == state.LogPath()) {
        (void)rename(path.c_str(), FreeName(state.folder, "").c_str());
      }
    }
    SyncFolderOf(path);
    state.waiting.merge(waiting);
  }
  return files;
}

}  // namespace tunemeadow
