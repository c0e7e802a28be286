// SPDX-License-Identifier: GPL-3.0-or-later
// The roll-back of what a kill or a power cut left.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>

#include "core/paths.h"
#include "files/durable_file.h"
#include "files/file_facts.h"
#include "files/journal_images.h"
#include "files/undo_journal_state.h"

namespace tunemeadow {
namespace {

using Outcome = UndoJournal::RolledBack::Outcome;

/// How much of what a journal says can be taken as it stands.
enum class Trust {
  kSameRun,  ///< only the program was killed: every record is there, and so is every write
  kOther,    ///< the power was cut: what was not synced may be there or not
  kSetAside  ///< a sync has failed before: what can be read need not be on the disk
};

/// A journal that is being rolled back.
struct OpenJournal {
  Descriptor log;
  std::int64_t end = 0;  ///< after the last whole record
  Trust trust = Trust::kOther;
  bool other_run = false;  ///< it is known to come from another run of the machine
  RunIdentity now;         ///< who rolls back
};

/// Sets the old time and syncs. A volume that keeps no times is no reason to call the bytes
/// unrestored.
bool SyncWithTime(int file, const struct timespec& modified) {
  const struct timespec times[2] = {{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, modified};
  (void)futimens(file, times);
  return fsync(file) == 0;
}

struct timespec OldTime(const FileRecords& records) {
  const JournalRecord& first = *records.images.front();
  return {.tv_sec = first.modified_seconds, .tv_nsec = first.modified_nanoseconds};
}

/// Puts the old bytes, the old length and the old time back, synced.
bool Restore(int file, const OpenJournal& journal, const FileRecords& records) {
  return PutImages(file, journal.log.get(), records) && SyncWithTime(file, OldTime(records));
}

/// Writes the bytes that a mark vouches for once more. After a sync that failed, the system's
/// memory can hold what the disk does not, and it would not write it again by itself.
bool WriteAgain(int file, const JournalRecord& mark, const struct stat& now) {
  // The bytes are the file's own: it is its own image.
  return std::all_of(mark.parts.begin(), mark.parts.end(),
                     [file](const JournalPart& part) {
                       const JournalPart itself{part.range, part.range.offset};
                       return WalkImage(file, itself, [&](std::string_view bytes, std::int64_t at) {
                         return WriteAllAt(file, bytes, at);
                       });
                     }) &&
         SyncWithTime(file, now.st_mtim);
}

/// Whether another program has written to the file since the machine was started again: the save
/// that was cut short has not, and no roll-back in this run either.
bool WrittenBySomebodyElse(const struct stat& now, const OpenJournal& journal,
                           const FileRecords& records) {
  if (!journal.other_run || !journal.now.Covers(now.st_mtim)) return false;
  if (records.roll_back != nullptr && IsRollBackIn(journal.now, *records.roll_back)) return false;
  const struct timespec old = OldTime(records);
  return now.st_mtim.tv_sec != old.tv_sec || now.st_mtim.tv_nsec != old.tv_nsec;
}

/// Notes, synced, that the roll-back of the file begins: killed half way, it leaves a file that was
/// last written in this run of the machine. False if that failed.
bool NoteRollBack(const std::string& path, OpenJournal& journal) {
  if (!journal.other_run) return true;
  std::string note;
  AppendRecord(RollBackRecord(path, journal.now), {}, note);
  // A torn end of the journal goes: it must not begin again after the note.
  if (ftruncate(journal.log.get(), journal.end) != 0 ||
      !WriteAllAt(journal.log.get(), note, journal.end) || fdatasync(journal.log.get()) != 0) {
    return false;
  }
  journal.end += static_cast<std::int64_t>(note.size());
  return true;
}

/// Rolls one file back. nullopt if there was nothing to be done.
std::optional<Outcome> RollBackFile(const std::string& path, const FileRecords& records,
                                    OpenJournal& journal) {
  if (records.images.empty()) return std::nullopt;
  const auto nothing_if = [](bool well) {
    return well ? std::nullopt : std::optional(Outcome::kUnreachable);
  };
  // A file that another program has written since is none of the journal's, if it was done or had
  // not been begun.
  const bool untouched = journal.trust == Trust::kSameRun && records.Idle();
  const Descriptor file(open(path.c_str(), O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat now {};
  if (!file.IsOpen() || fstat(file.get(), &now) != 0) return nothing_if(untouched);
  if (!S_ISREG(now.st_mode)) return Outcome::kChanged;
  if (untouched) return nothing_if(fsync(file.get()) == 0);
  // What is whole in the memory of the system need not be so on the disk, and the journal goes.
  const bool set_aside = journal.trust == Trust::kSetAside;
  if (records.mark != nullptr && HoldsMark(file.get(), now.st_size, *records.mark)) {
    return nothing_if(set_aside ? WriteAgain(file.get(), *records.mark, now)
                                : fsync(file.get()) == 0);
  }
  if (HoldsImages(file.get(), now.st_size, journal.log.get(), records)) {
    return nothing_if(set_aside ? Restore(file.get(), journal, records) : fsync(file.get()) == 0);
  }
  const JournalRecord& last = *records.images.back();
  if (now.st_size < last.least || now.st_size > last.most ||
      WrittenBySomebodyElse(now, journal, records)) {
    return Outcome::kChanged;
  }
  const bool restored = NoteRollBack(path, journal) && Restore(file.get(), journal, records);
  return restored ? Outcome::kUndone : Outcome::kUnreachable;
}

/// A new journal with the records of the paths that could not be reached, and that of the run, in
/// the place of `path`.
bool KeepRecords(const std::string& path, const OpenJournal& journal,
                 const std::set<std::string>& waiting) {
  const std::optional<std::vector<JournalRecord>> records = ReadRecords(journal.log.get());
  if (!records) return false;
  return ReplaceFileBy(path, [&](int made) {
    std::int64_t end = 0;
    for (const JournalRecord& record : *records) {
      if (record.kind != JournalRecord::Kind::kRun && !waiting.contains(record.path)) continue;
      const JournalPart whole{{end, record.end - record.start}, record.start};
      if (!WalkImage(journal.log.get(), whole, [made](std::string_view bytes, std::int64_t at) {
            return WriteAllAt(made, bytes, at);
          })) {
        return false;
      }
      end += whole.range.length;
    }
    return true;
  });
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

/// What a journal is still needed for.
enum class Remaining {
  kNothing,      ///< the unreachable files, if any, stand in another one
  kUnreachable,  ///< it holds the unreachable files alone, under its name or another one
  kAll           ///< the unreachable files could not be kept by themselves
};

/// Sees to it that the records of unreachable files stand in a journal of their own, at `rest`:
/// what is undone must not be undone again when its file has been edited since. `movable`: nobody
/// else needs the journal.
Remaining KeepUnreachable(const std::string& path, const std::string& rest,
                          const OpenJournal& journal, const std::vector<std::string>& all,
                          const std::set<std::string>& unreachable, bool movable) {
  if (unreachable.empty()) return Remaining::kNothing;
  if (movable && unreachable.size() == all.size()) {
    const bool moved = rest == path || rename(path.c_str(), rest.c_str()) == 0;
    return moved ? Remaining::kUnreachable : Remaining::kAll;
  }
  if (!KeepRecords(rest, journal, unreachable)) return Remaining::kAll;
  return rest == path ? Remaining::kUnreachable : Remaining::kNothing;
}

Descriptor OpenToRollBack(const std::string& path) {
  constexpr int kFlags = O_NONBLOCK | O_CLOEXEC;
  Descriptor log(open(path.c_str(), O_RDWR | kFlags));
  return log.IsOpen() ? std::move(log) : Descriptor(open(path.c_str(), O_RDONLY | kFlags));
}

}  // namespace

void UndoJournal::State::RollBackJournal(const std::string& path, std::vector<RolledBack>& told) {
  OpenJournal journal{.log = OpenToRollBack(path), .now = run};
  if (!journal.log.IsOpen()) return;
  const bool fresh = path == LogPath();
  const std::optional<std::vector<JournalRecord>> records = ReadRecords(journal.log.get());
  if (!records) {
    told.push_back({path, Outcome::kUnreachable});
    return;
  }
  const JournalFiles journaled = FilesOf(*records);
  if (RunsBeside(journaled.run, run)) {
    // Those files are in use. They are looked at again before one of them is written.
    waiting.insert(journaled.order.begin(), journaled.order.end());
    return;
  }
  if (!records->empty()) journal.end = records->back().end;
  journal.other_run = journaled.run.OtherMachineRun(run);
  journal.trust = !fresh                              ? Trust::kSetAside
                  : journaled.run.SameMachineRun(run) ? Trust::kSameRun
                                                      : Trust::kOther;
  std::set<std::string> unreachable;
  std::vector<std::size_t> changed;
  for (const std::string& file : journaled.order) {
    const std::optional<Outcome> outcome = RollBackFile(file, journaled.by_path.at(file), journal);
    if (!outcome) continue;
    const bool reached = *outcome != Outcome::kUnreachable;
    if (!reached) unreachable.insert(file);
    if (*outcome == Outcome::kChanged) changed.push_back(told.size());
    if (reached || fresh) told.push_back({file, *outcome});
  }
  const std::string rest = !changed.empty() || fresh ? FreeName(folder, "") : path;
  switch (KeepUnreachable(path, rest, journal, journaled.order, unreachable, changed.empty())) {
    case Remaining::kAll:
      // The journal stays as it is, and so do all files that it names.
      waiting.insert(journaled.order.begin(), journaled.order.end());
      return;
    case Remaining::kUnreachable:
      waiting.merge(unreachable);
      break;
    case Remaining::kNothing:
      waiting.merge(unreachable);
      if (changed.empty()) {
        (void)unlink(path.c_str());
        break;
      }
      const std::string name = FreeName(folder, "kept-");
      const bool renamed = rename(path.c_str(), name.c_str()) == 0;
      for (const std::size_t i : changed) told[i].kept = renamed ? name : path;
  }
  SyncFolderOf(path);
}

std::vector<UndoJournal::RolledBack> UndoJournal::RollBack() {
  std::vector<RolledBack> told;
  if (state_->in_group) return told;
  state_->log.Close();
  state_->waiting.clear();
  for (const std::string& path : NumberedJournals(state_->folder, "")) {
    state_->RollBackJournal(path, told);
  }
  state_->RollBackJournal(state_->LogPath(), told);
  return told;
}

}  // namespace tunemeadow
