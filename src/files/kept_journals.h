// SPDX-License-Identifier: GPL-3.0-or-later
// The old bytes that journals still keep after a roll-back: of files that another program has
// changed, and of files that could not be reached.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

namespace tunemeadow {

struct KeptFile {
  enum class State {
    kMissing,  ///< or it cannot be read
    kOld,      ///< it holds all old bytes that the journal keeps
    kOther
  };
  std::string path;             ///< bytes
  std::int64_t length = 0;      ///< in bytes, before the save that was cut short
  struct timespec modified {};  ///< last write before it
  std::int64_t kept_bytes = 0;  ///< old bytes in the journal; `length` where that is all of them
  State state = State::kOther;
};

struct KeptJournal {
  std::string path;             ///< bytes
  bool waiting = false;         ///< "undo-N.journal": each start tries to restore its files
  std::vector<KeptFile> files;  ///< in the order of the saves; none where it cannot be read
};

/// The kept journals of a program's folder, those of changed files first. Changes nothing; may be
/// asked for beside a running program.
[[nodiscard]] std::vector<KeptJournal> KeptJournals(const std::string& folder);

/// Writes the old file of `path` to the new file `to`: the old bytes that the journal keeps, and in
/// between the bytes of the file as it is now. Where the file gives none, zero bytes stand.
/// `borrowed` is the number of bytes that did not come from the journal. Empty text, or what
/// failed, with nothing written: something stands at `to`, the journal does not know the file, a
/// disk is full.
[[nodiscard]] std::string WriteOldFile(const std::string& journal, const std::string& path,
                                       const std::string& to, std::int64_t& borrowed);

}  // namespace tunemeadow
