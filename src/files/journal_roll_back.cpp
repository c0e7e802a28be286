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

#include "core/paths.h"
#include "files/durable_file.h"
#include "files/file_facts.h"
#include "files/undo_journal_state.h"

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

/// What a journal knows of one file.
struct FileRecords {
  Records images;
  const JournalRecord* mark = nullptr;  ///< behind all images and beginnings
  bool begun = false;

  void Add(const JournalRecord& record) {
    using Kind = JournalRecord::Kind;
    if (record.kind == Kind::kImage) images.push_back(&record);
    begun = begun || record.kind == Kind::kBegun;
    // What stands behind a mark says that the file was taken up again.
    mark = record.kind == Kind::kMark ? &record : nullptr;
  }
};

/// Writes the bytes that a mark vouches for once more. After a sync that failed, the system's
/// memory can hold what the disk does not, and it would not write it again by itself.
bool WriteAgain(int file, const JournalRecord& mark, const struct stat& now) {
  for (const JournalPart& part : mark.parts) {
    std::string bytes(static_cast<std::size_t>(part.range.length), '\0');
    if (ReadAllAt(file, bytes.data(), bytes.size(), part.range.offset) != bytes.size() ||
        !WriteAllAt(file, bytes, part.range.offset)) {
      return false;
    }
  }
  const struct timespec times[2] = {{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, now.st_mtim};
  (void)futimens(file, times);
  return fsync(file) == 0;
}

/// How much of what a journal says can be taken as it stands.
enum class Trust {
  kSameRun,  ///< only the program was killed: every record is there, and so is every write
  kOther,    ///< the power was cut: what was not synced may be there or not
  kSetAside  ///< a sync has failed before: what can be read need not be on the disk
};

/// Rolls one file back. nullopt where there was nothing to be done.
std::optional<Outcome> RollBackFile(const std::string& path, int log, const FileRecords& records,
                                    Trust trust) {
  if (records.images.empty()) return std::nullopt;
  // A file that another program has written since is none of the journal's, if it was done or had
  // not been begun.
  const bool idle = records.mark != nullptr || !records.begun;
  const Descriptor file(open(path.c_str(), O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat now {};
  if (!file.IsOpen() || fstat(file.get(), &now) != 0) {
    if (trust == Trust::kSameRun && idle) return std::nullopt;
    return Outcome::kUnreachable;
  }
  if (!S_ISREG(now.st_mode)) return Outcome::kChanged;
  if (trust == Trust::kSameRun && idle) {
    if (fsync(file.get()) == 0) return std::nullopt;
    return Outcome::kUnreachable;
  }
  if (records.mark != nullptr && HoldsMark(file.get(), now.st_size, *records.mark)) {
    // What is whole in the memory of the system need not be so on the disk, and the journal goes.
    const bool synced = trust == Trust::kSetAside ? WriteAgain(file.get(), *records.mark, now)
                                                  : fsync(file.get()) == 0;
    if (synced) return std::nullopt;
    return Outcome::kUnreachable;
  }
  if (std::all_of(records.images.begin(), records.images.end(), [&](const JournalRecord* image) {
        return HoldsImage(file.get(), now.st_size, log, *image);
      })) {
    const bool synced = trust == Trust::kSetAside ? Restore(file.get(), log, records.images)
                                                  : fsync(file.get()) == 0;
    if (synced) return std::nullopt;
    return Outcome::kUnreachable;
  }
  const JournalRecord& last = *records.images.back();
  if (now.st_size < last.least || now.st_size > last.most) return Outcome::kChanged;
  return Restore(file.get(), log, records.images) ? Outcome::kUndone : Outcome::kUnreachable;
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

void UndoJournal::State::RollBackJournal(const std::string& path, std::vector<RolledBack>& told) {
  const Descriptor journal(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!journal.IsOpen()) return;
  const bool fresh = path == LogPath();
  const std::optional<std::vector<JournalRecord>> records = ReadRecords(journal.get());
  if (!records) {
    told.push_back({path, Outcome::kUnreachable});
    return;
  }
  std::vector<std::string> order;
  std::map<std::string, FileRecords> by_file;
  Trust trust = fresh ? Trust::kOther : Trust::kSetAside;
  for (const JournalRecord& record : *records) {
    if (record.kind == JournalRecord::Kind::kRun) {
      if (fresh && !machine_run.empty() && record.path == machine_run) trust = Trust::kSameRun;
      continue;
    }
    if (!by_file.contains(record.path)) order.push_back(record.path);
    by_file[record.path].Add(record);
  }
  std::set<std::string> unreachable;
  bool changed = false;
  for (const std::string& file : order) {
    const std::optional<Outcome> outcome = RollBackFile(file, journal.get(), by_file[file], trust);
    if (!outcome) continue;
    const bool reached = *outcome != Outcome::kUnreachable;
    if (!reached) unreachable.insert(file);
    changed = changed || *outcome == Outcome::kChanged;
    if (reached || fresh) told.push_back({file, *outcome});
  }
  if (!unreachable.empty()) {
    // What is undone must not be undone again when its file has been edited since.
    const std::string rest = changed || fresh ? FreeName(folder, "") : path;
    const bool all_of_it = !changed && unreachable.size() == order.size();
    const bool kept = all_of_it ? (rest == path || rename(path.c_str(), rest.c_str()) == 0)
                                : KeepRecords(rest, journal.get(), *records, unreachable);
    if (!kept) {
      // The journal stays as it is, and so do all files that it names.
      waiting.insert(order.begin(), order.end());
      return;
    }
    waiting.merge(unreachable);
    if (all_of_it || rest == path) {
      SyncFolderOf(path);
      return;
    }
  }
  if (changed) {
    (void)rename(path.c_str(), FreeName(folder, "kept-").c_str());
  } else {
    (void)unlink(path.c_str());
  }
  SyncFolderOf(path);
}

std::vector<UndoJournal::RolledBack> UndoJournal::RollBack() {
  std::vector<RolledBack> told;
  if (state_->in_group) return told;
  state_->log.Close();
  state_->waiting.clear();
  for (const std::string& path : JournalsIn(state_->folder)) state_->RollBackJournal(path, told);
  return told;
}

}  // namespace tunemeadow
