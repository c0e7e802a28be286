// SPDX-License-Identifier: GPL-3.0-or-later
// Bytes that change their place within a file, block by block, and back.
#pragma once

#include <cstddef>
#include <string>

#include "files/journaled_file.h"

namespace tunemeadow {

/// Old and new place may overlap: the blocks go in the order in which none is overwritten before it
/// was read. What it moved stands in its new place and is all that it takes to go back.
class BlockMove {
 public:
  explicit BlockMove(const FileMove& move) noexcept : move_(move) {}

  [[nodiscard]] const FileMove& Told() const noexcept { return move_; }

  /// Takes the memory for a block, which Run and Undo then need not ask for.
  void Reserve();

  /// Moves all bytes within the open file. 0, or an error number: some of them are moved then.
  [[nodiscard]] int Run(int file) noexcept;

  /// Moves back what Run has moved, as long as nobody has overwritten the new place. The bytes that
  /// were overwritten without being moved are the caller's to restore, afterwards. False if
  /// reading or writing failed.
  [[nodiscard]] bool Undo(int file) noexcept;

 private:
  [[nodiscard]] std::int64_t PlaceOf(std::int64_t done, std::size_t count) const noexcept;
  [[nodiscard]] std::size_t CountAt(std::int64_t done) const noexcept;

  FileMove move_;
  std::string block_;
  std::int64_t done_ = 0;    ///< bytes moved, from the end that comes first
  std::size_t in_hand_ = 0;  ///< bytes of `block_` whose writing has failed
};

}  // namespace tunemeadow
