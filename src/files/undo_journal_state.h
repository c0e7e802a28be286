// SPDX-License-Identifier: GPL-3.0-or-later
// What stands behind UndoJournal, for its own sources and JournaledFile's.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <map>
#include <new>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "files/descriptor.h"
#include "files/journal_log.h"
#include "files/undo_journal.h"

namespace tunemeadow {

/// Old bytes go into the journal in records of about so many, and audio moves in such blocks: what
/// is held in memory does not grow with the file.
inline constexpr std::int64_t kJournalBlock = std::int64_t{512} << 10;

/// A file whose old bytes stand in the journal.
struct GuardedFile {
  dev_t device = 0;
  ino_t node = 0;
  struct timespec modified {};       ///< last write before the group
  bool touched = false;              ///< this program has written to it in the group
  bool begun = false;                ///< the journal says so, and no mark follows that
  std::int64_t base_length = 0;      ///< before the group
  std::int64_t least = 0, most = 0;  ///< lengths that the journal knows it may have
  std::vector<ByteRange> covered;    ///< ranges of the base whose bytes stand in the journal
  Descriptor file;                   ///< open once it was written, until it is synced
  bool synced = true;                ///< nothing was written since the last sync
  bool torn = false;                 ///< a write failed, and so did putting the old bytes back
};

struct UndoJournal::State {
  std::string folder;
  RunIdentity run;
  std::vector<RolledBack> untold;
  Descriptor log;         ///< undo.journal, from the first need on
  std::int64_t size = 0;  ///< bytes of the records that count
  bool torn_log = false;  ///< bytes that count for nothing follow `size`
  bool in_group = false;
  bool set_aside = false;  ///< the journal must outlive the group: a file could not be restored
  std::unordered_map<std::string, GuardedFile> files;
  std::map<std::pair<dev_t, ino_t>, std::string> names;        ///< of `files` and what is prepared
  std::unordered_map<std::string, GuardedFile> pending_files;  ///< written, but not synced
  std::int64_t pending_from = 0;                               ///< size before them
  std::set<std::string> waiting;  ///< paths that an older journal still holds images of

  [[nodiscard]] std::string LogPath() const { return folder + "undo.journal"; }

  /// The name under which the group knows this file; `path` where it knows none. Links lead one
  /// file to several names, and two images of it would undo each other.
  [[nodiscard]] std::string KnownName(const std::string& path, const struct stat& now) const;

  /// Whether the open journal, without a record, still has its name and nobody else's records.
  [[nodiscard]] bool LogIsOurs() const;

  /// Opens or makes the journal. Empty text, or what failed.
  [[nodiscard]] std::string OpenLog();

  /// Puts the journal's end at `length`.
  void CutLog(std::int64_t length);

  /// Writes `records` after the others, unsynced; the first ones of a journal after the record of
  /// the run. False, and the journal as before, where that failed.
  [[nodiscard]] bool Append(std::string_view records);

  /// Writes `image` with the bytes of `parts` out of the open file, in as many records as it takes,
  /// unsynced. Empty text, or what failed: some of the records may stand in the journal then.
  [[nodiscard]] std::string AppendImages(const JournalRecord& image,
                                         std::span<const ByteRange> parts, int descriptor);

  /// Sees to it that the old bytes of `needs`, which lie within the open file as it is now, stand
  /// in the journal, synced, and that it knows of `new_length`. Empty text, or what failed, with
  /// the journal as before.
  [[nodiscard]] std::string Guard(const std::string& path, const struct stat& now,
                                  std::span<const ByteRange> needs, int descriptor,
                                  std::int64_t new_length);

  /// UndoJournal's own.
  bool SyncPrepared();

  /// Notes that the file is about to be written. Empty text, or what failed: nothing may be written
  /// to it then, since a roll-back would take it for one that was never begun.
  [[nodiscard]] std::string Begun(const std::string& path);

  /// The file was written through `descriptor`.
  void Written(const std::string& path, int descriptor, bool synced);

  /// Syncs every file that was written. Empty text, or what failed.
  [[nodiscard]] std::string SyncFiles();

  /// Closes the journal and takes its file away.
  void RemoveLog();

  /// Gives the journal another name, under which the next start finds it.
  void SetLogAside();

  /// Rolls one journal back. What it did goes to `told`.
  void RollBackJournal(const std::string& path, std::vector<RolledBack>& told);

  /// Tries once more to roll back a file that an older journal holds. True if nothing waits for the
  /// path any more and it was not torn in this group.
  [[nodiscard]] bool Released(UndoJournal& journal, const std::string& path);
};

/// What `work` returns, or that there is not enough memory for it.
template <typename Work>
[[nodiscard]] std::string OrNoMemory(Work work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    return "There is not enough memory.";
  }
}

/// All bytes of the range; nullopt if the file does not give them.
[[nodiscard]] std::optional<std::string> ReadExactly(int descriptor, const ByteRange& range);

/// A file of which the journal holds nothing yet.
[[nodiscard]] GuardedFile GuardOf(const struct stat& now);

/// The parts of `range` that none of `covered` holds.
[[nodiscard]] std::vector<ByteRange> UncoveredParts(const ByteRange& range,
                                                    std::span<const ByteRange> covered);

/// The image record of a file: its state before the group.
[[nodiscard]] JournalRecord ImageOf(const std::string& path, const GuardedFile& guarded);

}  // namespace tunemeadow
