// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tunemeadow {

enum class TrashOutcome {
  kMoved,    ///< the file is in the trash
  kNoTrash,  ///< its volume has no trash and none can be made there
  kFailed,   ///< the file is not there, may not be moved, and the like
};

struct TrashAnswer {
  TrashOutcome outcome = TrashOutcome::kFailed;
  std::string reason;  ///< a sentence for a person, UTF-8; empty if the file was moved
};

/// The place from which a person can take deleted files back.
class Trash {
 public:
  virtual ~Trash() = default;

  /// Moves one file to the trash of the volume that it lies on. `path`: absolute, bytes; a link is
  /// moved itself. Unless the answer is kMoved the file is untouched. Nothing is asked.
  virtual TrashAnswer MoveToTrash(const std::string& path) = 0;
};

}  // namespace tunemeadow
