// SPDX-License-Identifier: GPL-3.0-or-later
// What stands behind UndoJournal, for its own sources and JournaledFile's.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <map>
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

/// A file whose old bytes stand in the journal.
struct GuardedFile {
  dev_t device = 0;
  ino_t node = 0;
  struct timespec modified {};       ///< last write before the group
  bool touched = false;              ///< this program has written to it in the group
  bool begun = false;                ///< the journal says so, and no mark stands behind that
  std::int64_t base_length = 0;      ///< before the group
  std::int64_t least = 0, most = 0;  ///< lengths that the journal knows it may have
  std::vector<ByteRange> covered;    ///< ranges of the base whose bytes stand in the journal
  Descriptor file;                   ///< open once it was written, until it is synced
  bool synced = true;                ///< nothing was written since the last sync
  bool torn = false;                 ///< a write failed, and so did putting the old bytes back
};

struct UndoJournal::State {
  std::string folder;
  std::string machine_run;
  std::vector<RolledBack> untold;
  Descriptor log;         ///< undo.journal, from the first need on
  std::int64_t size = 0;  ///< bytes of the records that count
  bool in_group = false;
  bool set_aside = false;  ///< the journal must outlive the group: a file could not be restored
  std::unordered_map<std::string, GuardedFile> files;
  std::map<std::pair<dev_t, ino_t>, std::string> names;  ///< of `files` and what is prepared
  std::string pending;                                   ///< records that are not yet written
  std::unordered_map<std::string, GuardedFile> pending_files;
  std::set<std::string> waiting;  ///< paths that an older journal still holds images of

  [[nodiscard]] std::string LogPath() const { return folder + "undo.journal"; }

  /// The name under which the group knows this file; `path` where it knows none. Links lead one
  /// file to several names, and two images of it would undo each other.
  [[nodiscard]] std::string KnownName(const std::string& path, const struct stat& now) const;

  /// Opens or makes the journal. Empty text, or what failed.
  [[nodiscard]] std::string OpenLog();

  /// Writes `records` behind the others; the first ones of a journal behind that of the run. False,
  /// and the journal as before, where that failed.
  [[nodiscard]] bool Append(std::string_view records, bool sync);

  /// Sees to it that the old bytes of `needs` stand in the journal, synced, and that it knows of
  /// `new_length`. `before` are the bytes of `needs`, which lie within the file as it is now. Empty
  /// text, or what failed.
  [[nodiscard]] std::string Guard(const std::string& path, const struct stat& now,
                                  std::span<const ByteRange> needs,
                                  std::span<const std::string> before, std::int64_t new_length);

  /// Notes that the file is about to be written. A journal that cannot take the note rolls back
  /// more than it would have to.
  void Begun(const std::string& path);

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

/// The parts of `range` that none of `covered` holds.
[[nodiscard]] std::vector<ByteRange> UncoveredParts(const ByteRange& range,
                                                    std::span<const ByteRange> covered);

/// The image record of a file: its state before the group.
[[nodiscard]] JournalRecord ImageOf(const std::string& path, const GuardedFile& guarded);

}  // namespace tunemeadow
