// SPDX-License-Identifier: GPL-3.0-or-later
// The journal that can undo a rewrite in place. Before the first old byte of a file is overwritten,
// moved or cut off, its old bytes stand in the journal and are synced; what a kill or a power cut
// leaves half written is rolled back at the next start.
//
// The journal is one file, "undo.journal", in the program's folder. It is a log of records, each
// with a checksum: an image (path, old length, old bytes of some ranges) and a mark that a file is
// done (checksums of what was written). An empty journal undoes nothing. Whoever uses it holds the
// lock of the program's folder.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "files/run_identity.h"

namespace tunemeadow {

/// Bytes of a file, from 0.
struct ByteRange {
  std::int64_t offset = 0;
  std::int64_t length = 0;
};

class UndoJournal {
 public:
  /// `folder` holds the journal, with or without a trailing separator; bytes. Touches no file.
  /// `run` distinguishes one run of the machine from another: as long as it is the same, what was
  /// written is there, synced or not. It also tells whether the process that wrote a journal still
  /// runs: what belongs to that one is left alone.
  explicit UndoJournal(std::string_view folder, RunIdentity run = ThisRun());

  /// Closes what is open, as EndGroup does, and removes the empty journal.
  ~UndoJournal();
  UndoJournal(const UndoJournal&) = delete;
  UndoJournal& operator=(const UndoJournal&) = delete;

  /// What became of a file whose rewrite was cut short.
  struct RolledBack {
    enum class Outcome {
      kUndone,       ///< the file is the old one again, byte for byte, with its old time
      kUnreachable,  ///< it is missing or cannot be opened for writing; tried again at each start
      kChanged,      ///< another program has changed it since: its length is none that the save can
                     ///< have left, or it was written in this run of the machine although the save
                     ///< was cut short in another one. Left as it is, and so is the journal, under
                     ///< the name "undo-kept-N.journal"
    };
    std::string path;  ///< bytes; of the journal itself where that cannot be read
    Outcome outcome;
    std::string kept = {};  ///< the journal that keeps the old bytes of one that has changed
  };

  /// Rolls back whatever journals stand in the folder. For the start, before anything is written.
  /// A file that was done is left alone and not named, and so are the journals of a program that
  /// still runs. Files in the order in which their rewrites began; one that stays unreachable is
  /// named once. Killed in the middle, it does the same again.
  std::vector<RolledBack> RollBack();

  /// What was rolled back since, before a group or before a file was opened; each is told once.
  [[nodiscard]] std::vector<RolledBack> TakeRolledBack();

  // A group binds the rewrites of up to some hundred files: one sync of the journal before them,
  // one of the files after them. Groups do not nest; a rewrite outside of one is a group of its
  // own.

  void BeginGroup();
  [[nodiscard]] bool InGroup() const noexcept;

  /// Writes the old bytes of `ranges` (clipped at the end of the file), of a file that may become
  /// up to `growth` bytes longer, to the journal, to be synced by the next SyncPrepared. A rewrite
  /// that stays within them needs no sync of its own. Nothing happens where the file cannot be
  /// opened for reading and writing or is no regular file, or the journal cannot take it: its
  /// writer will meet that and say so.
  void Prepare(const std::string& path, std::span<const ByteRange> ranges, std::int64_t growth);

  /// Syncs what was prepared. False if that failed: then nothing is prepared, and each rewrite
  /// sees for itself.
  bool SyncPrepared();

  /// Bytes prepared or journaled in this group: a reason to end it.
  [[nodiscard]] std::int64_t GroupBytes() const noexcept;

  /// All that was to be done to the file is done: a roll-back leaves it, as long as its bytes are
  /// found as they stand now.
  void Done(const std::string& path);

  /// Syncs the files that were written, then empties the journal, synced. Empty text, or what
  /// failed: the journal then keeps standing, and a next start rolls back what is not found whole.
  std::string EndGroup();

 private:
  friend class JournaledFile;
  struct State;
  std::unique_ptr<State> state_;
};

/// What RollBack did, for the status line; empty for nothing.
[[nodiscard]] std::string RollBackSentence(std::span<const UndoJournal::RolledBack> files);

}  // namespace tunemeadow
