// SPDX-License-Identifier: GPL-3.0-or-later
// What the records of a journal say of each file, and how a file compares with it. Files and
// journals are read and written in steps: neither is ever held in memory.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "files/journal_log.h"

namespace tunemeadow {

/// The records of one file. They live in the list that they were taken from.
struct FileRecords {
  std::vector<const JournalRecord*> images;
  const JournalRecord* mark = nullptr;  ///< after all images and beginnings
  bool begun = false;
  const JournalRecord* roll_back = nullptr;  ///< the last note that one began

  void Add(const JournalRecord& record);

  /// Whether the file was done, or its rewrite never began.
  [[nodiscard]] bool Idle() const noexcept { return mark != nullptr || !begun; }
};

/// The files of a journal in the order in which they first appear.
struct JournalFiles {
  std::vector<std::string> order;
  std::map<std::string, FileRecords> by_path;
  RunIdentity run;  ///< that wrote the journal; all unknown where it does not say
};
[[nodiscard]] JournalFiles FilesOf(const std::vector<JournalRecord>& records);

/// The journals of earlier sessions in the folder (with its separator), the oldest first:
/// "undo-N.journal" for an empty `what`, "undo-kept-N.journal" for "kept-".
[[nodiscard]] std::vector<std::string> NumberedJournals(const std::string& folder,
                                                        std::string_view what);

/// Calls `each(bytes, offset in the file)` for the old bytes of a part, in steps. False as soon as
/// one call says so, or where the open journal gives no more.
using EachStep = std::function<bool(std::string_view bytes, std::int64_t offset)>;
bool WalkImage(int log, const JournalPart& part, const EachStep& each);

/// Whether the open file of this length holds all old bytes of the images.
[[nodiscard]] bool HoldsImages(int file, std::int64_t length, int log, const FileRecords& records);

/// Whether it holds what the mark vouches for.
[[nodiscard]] bool HoldsMark(int file, std::int64_t length, const JournalRecord& mark);

/// Writes the old bytes of all images where they belong, and sets the old length. Not synced.
[[nodiscard]] bool PutImages(int file, int log, const FileRecords& records);

}  // namespace tunemeadow
