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

  /// Exactly `count` bytes from `offset` on; nullopt where the file does not hold or give them.
  [[nodiscard]] std::optional<std::string> Read(std::int64_t offset, std::size_t count) const;

  /// Puts the pieces, in their order, where they belong, and the file's end at `new_length`. Pieces
  /// lie within the new length and do not overlap; between a longer end and the pieces stand zero
  /// bytes. The order of things: what the journal lacks of the old bytes goes there, synced; the
  /// new length is reserved; the pieces are written; the end is set; the file is synced and the
  /// journal emptied, or both are left to the end of the group.
  ///
  /// Empty text, or what failed: the file is then as it was before the call. Only where even that
  /// could not be restored does the text say so; the journal then keeps what is needed.
  [[nodiscard]] std::string Rewrite(std::span<const FilePiece> pieces, std::int64_t new_length);

 private:
  struct OldBytes;
  [[nodiscard]] std::string Compare(const struct stat& now) const;
  [[nodiscard]] std::string RewriteInGroup(std::span<const FilePiece> pieces,
                                           std::int64_t new_length, bool sync);
  [[nodiscard]] bool PutBack(const OldBytes& old) const;
  [[nodiscard]] std::string Write(std::span<const FilePiece> pieces, const OldBytes& old,
                                  std::int64_t new_length, bool sync);

  UndoJournal& journal_;
  std::string opened_as_;
  std::string path_;  ///< under which the journal knows it
  int file_ = -1;
  std::int64_t length_ = 0;
  struct timespec modified_ {};  ///< last write, as far as this object knows
};

}  // namespace tunemeadow
