// SPDX-License-Identifier: GPL-3.0-or-later
// Binds the rewrites of a batch into groups of the journal, so that some hundred files share its
// syncs: one of the journal before the group is written, one of each file after it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "audio/file_bytes.h"
#include "files/undo_journal.h"
#include "run/batch.h"

namespace tunemeadow {

/// A group ends after so many files. No more files are prepared once so many bytes stand in the
/// journal, and it ends early once as many have come on top of what was prepared.
inline constexpr std::size_t kFilesPerGroup = 256;
inline constexpr std::int64_t kBytesPerGroup = std::int64_t{64} << 20;

/// What a batch knows beforehand of its rewrites.
struct SavePlan {
  /// The ranges of a file that will be overwritten or cut off, such as TagRanges. Null where the
  /// audio moves: whole files are not worth being prepared, each goes into the journal by itself
  /// and only the syncs at the end are shared.
  std::vector<ByteRange> (*ranges)(FileBytes& file) = nullptr;
  std::int64_t growth = 0;                        ///< bytes by which a file may become longer
  std::int64_t bytes_per_group = kBytesPerGroup;  ///< a smaller bound shows in a test what it does
};

/// Use:
///   SaveGroup group(session.journal, batch, paths, {.ranges = TagRanges, .growth = 128});
///   for (i ...) {
///     group.BeginFile(i);
///     ... any number of writers on paths[i] ...
///     group.FileDone(i);
///   }
/// Lives inside its batch, if there is one, and goes before it. Whatever way out is taken, the
/// group is closed.
class SaveGroup {
 public:
  /// How the box of a failure is shown.
  using ShowBox = std::function<void(const MessageBox&)>;

  /// `paths` are the files in the order in which they will be written; one may be skipped.
  SaveGroup(UndoJournal& journal, Batch& batch, std::vector<std::string> paths, SavePlan plan);

  /// The same without a batch around it, as for a single file.
  SaveGroup(UndoJournal& journal, ShowBox show_box, std::vector<std::string> paths, SavePlan plan);

  /// Close.
  ~SaveGroup();
  SaveGroup(const SaveGroup&) = delete;
  SaveGroup& operator=(const SaveGroup&) = delete;

  /// Before the first rewrite of the file, and before each new try: closes a group that is full and
  /// opens the next one, with what is to be prepared for its files.
  void BeginFile(std::size_t index);

  /// After the last rewrite of the file, whether it went well or left the file as it was.
  void FileDone(std::size_t index);

  /// Ends the group: what was written is on the disk then. For the moment before a box, which may
  /// stand for a long time. BeginFile opens the next group. That the journal could not be closed is
  /// told in a box, once in the life of the object.
  void Close();

 private:
  [[nodiscard]] bool IsFull(std::size_t index) const noexcept;
  void Open(std::size_t index);

  UndoJournal& journal_;
  ShowBox show_box_;
  std::vector<std::string> paths_;
  SavePlan plan_;
  FileBytes file_;
  bool open_ = false;
  bool failure_told_ = false;
  std::size_t end_ = 0;       ///< index after the last file of the open group
  std::int64_t allowed_ = 0;  ///< bytes above which the open group is full
};

}  // namespace tunemeadow
