// SPDX-License-Identifier: GPL-3.0-or-later
// A file that is rewritten in place under the protection of the journal. Every writer and remover
// of tags goes through it.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "files/undo_journal.h"

namespace tunemeadow {

/// Bytes and the place where they are to stand, from 0.
struct FilePiece {
  std::int64_t offset = 0;
  std::string_view bytes;
};

/// Bytes of the file that are to stand somewhere else, both places counted from 0. They may overlap
/// their old place.
struct FileMove {
  std::int64_t from = 0, to = 0, length = 0;
};

class JournaledFile {
 public:
  explicit JournaledFile(UndoJournal& journal) noexcept : journal_(journal) {}
  ~JournaledFile();
  JournaledFile(const JournaledFile&) = delete;
  JournaledFile& operator=(const JournaledFile&) = delete;

  /// Opens the regular file at `path` for reading and writing; never creates one. Empty text, or
  /// what stands in the way, for a person to read: missing, a folder, write-protected, waiting for
  /// a roll-back that is not possible now.
  [[nodiscard]] std::string Open(const std::string& path);
  void Close() noexcept;

  [[nodiscard]] std::int64_t Length() const noexcept { return length_; }

  /// Exactly `count` bytes from `offset` on; nullopt if the file does not hold or give them.
  [[nodiscard]] std::optional<std::string> Read(std::int64_t offset, std::size_t count) const;

  /// Moves what `move` tells of the file as it is, puts the pieces, in their order, where they
  /// belong, and the file's end at `new_length`. Move and pieces lie within the new length and do
  /// not overlap in their new places; the move's old place lies within the file. Between a longer
  /// end and them stand zero bytes. The order of things: what the journal lacks of the old bytes
  /// goes there, synced; the file is compared once more with what it was at Open; the journal is
  /// told that it begins; the new length is reserved; move and pieces are written; the end is set;
  /// the file is synced and the journal emptied, or both are left to the end of the group.
  ///
  /// Memory: the pieces' size again, and some megabytes, however long the move is.
  ///
  /// Empty text, or what failed: the file is then as it was before the call. Only where even that
  /// could not be restored does the text say so; the journal then keeps what is needed.
  [[nodiscard]] std::string Rewrite(std::span<const FilePiece> pieces, std::int64_t new_length,
                                    const FileMove& move = {});

 private:
  struct Change;
  [[nodiscard]] std::string Compare(struct stat& now) const;
  [[nodiscard]] std::string RewriteInGroup(Change& change, bool sync);
  [[nodiscard]] std::string Guard(Change& change);
  [[nodiscard]] bool PutBack(Change& change) const;
  [[nodiscard]] std::string Write(Change& change, bool sync);

  UndoJournal& journal_;
  std::string opened_as_;
  std::string path_;  ///< under which the journal knows it
  int file_ = -1;
  std::int64_t length_ = 0;
  struct timespec modified_ {};  ///< last write, as far as this object knows
};

}  // namespace tunemeadow
