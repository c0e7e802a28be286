// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/block_move.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

#include "files/descriptor.h"
#include "files/undo_journal_state.h"

namespace tunemeadow {

void BlockMove::Reserve() {
  block_.resize(static_cast<std::size_t>(std::min(move_.length, kJournalBlock)));
}

std::size_t BlockMove::CountAt(std::int64_t done) const noexcept {
  const auto block = static_cast<std::int64_t>(block_.size());
  return static_cast<std::size_t>(std::min(block, move_.length - done));
}

/// Where, within what is moved, the block of `count` bytes begins that comes after `done` bytes:
/// towards the file's end the last one goes first.
std::int64_t BlockMove::PlaceOf(std::int64_t done, std::size_t count) const noexcept {
  return move_.to > move_.from ? move_.length - done - static_cast<std::int64_t>(count) : done;
}

int BlockMove::Run(int file) noexcept {
  while (done_ < move_.length && move_.to != move_.from) {
    const std::size_t count = CountAt(done_);
    const std::int64_t place = PlaceOf(done_, count);
    errno = EIO;  // of a file that is shorter than it was
    if (ReadAllAt(file, block_.data(), count, move_.from + place) != count) return errno;
    in_hand_ = count;
    if (!WriteAllAt(file, {block_.data(), count}, move_.to + place)) return errno;
    in_hand_ = 0;
    done_ += static_cast<std::int64_t>(count);
  }
  return 0;
}

bool BlockMove::Undo(int file) noexcept {
  // What was written of the block in hand has overwritten its own end, or what is restored below.
  if (in_hand_ > 0 &&
      !WriteAllAt(file, {block_.data(), in_hand_}, move_.from + PlaceOf(done_, in_hand_))) {
    return false;
  }
  in_hand_ = 0;
  while (done_ > 0) {
    const auto block = static_cast<std::int64_t>(block_.size());
    const auto count = static_cast<std::size_t>(std::min(block, done_));
    const std::int64_t before = done_ - static_cast<std::int64_t>(count);
    const std::int64_t place = PlaceOf(before, count);
    if (ReadAllAt(file, block_.data(), count, move_.to + place) != count ||
        !WriteAllAt(file, {block_.data(), count}, move_.from + place)) {
      return false;
    }
    done_ = before;
  }
  return true;
}

}  // namespace tunemeadow
