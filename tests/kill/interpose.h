// SPDX-License-Identifier: GPL-3.0-or-later
// The system calls that change files, counted and struck. The library stands before the C library
// in the program that is linked with it, so that its write, fsync and so on are the ones called.
// Until Arm everything passes through.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tunemeadow::kill {

enum class Call : std::uint32_t {
  kCreate,
  kWrite,
  kTruncate,
  kReserve,
  kSync,  ///< of a file or a folder
  kSyncVolume,
  kRename,
  kUnlink,
  kTimes,
};

[[nodiscard]] std::string_view NameOf(Call call);

/// What happens at one of the calls.
struct Blow {
  enum class Kind { kNone, kKill, kFail };
  enum class Extent {
    kOneCall,
    kNextToo,    ///< the call does a part, as a short write does, and the one after it fails
    kAllLater,   ///< a disk that is gone
    kRoomLater,  ///< a full disk: later calls fail where they need room
  };
  static constexpr std::int64_t kWhole = -1;

  Kind kind = Kind::kNone;
  std::uint32_t call = 0;  ///< counted from 0
  std::int64_t part = 0;   ///< bytes of a write or of a growth that still take place; kWhole: all
                           ///< of the call
  int error = 0;           ///< of a failure
  Extent extent = Extent::kOneCall;  ///< of a failure
  std::uint32_t kill_at = 0;  ///< of a failure: the later call in whose middle the process is
                              ///< killed; 0: none
};

/// One call that took place. The texts point into the tape.
struct Operation {
  Call call;
  std::int64_t offset;  ///< of a write; new length of a truncation
  std::int64_t length;  ///< bytes written; new end of a reservation
  std::string_view path;
  std::string_view other;  ///< new name of a rename
  std::string_view bytes;  ///< of a write, if the tape keeps them
};

/// Memory that a child shares with its parent and writes its calls to. A tape that is full makes
/// the child abort.
class Tape {
 public:
  explicit Tape(std::size_t capacity);
  ~Tape();
  Tape(const Tape&) = delete;
  Tape& operator=(const Tape&) = delete;

  void Clear(bool keep_bytes);
  void Add(const Operation& operation);
  [[nodiscard]] std::vector<Operation> Operations() const;

  /// Calls that were counted, those that failed as well.
  [[nodiscard]] std::uint32_t Calls() const;
  void Count(std::uint32_t calls);

 private:
  struct Head;
  Head* head_;
  std::size_t capacity_;
};

/// From now on calls on what lies below `folder` (no separator at its end) count, and syncs are
/// counted but not done: they make no difference to a process that is killed.
void Arm(const std::string& folder, const Blow& blow, Tape* tape);
void Disarm();

}  // namespace tunemeadow::kill
