// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/journaled_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>
#include <vector>

#include "files/block_move.h"
#include "files/undo_journal_state.h"

namespace tunemeadow {

/// What a rewrite does, and what it takes to undo it.
struct JournaledFile::Change {
  std::span<const FilePiece> pieces;
  std::int64_t new_length = 0;
  BlockMove move;
  std::vector<ByteRange> old_ranges;   ///< overwritten or cut off, and not moved
  std::vector<std::string> old_bytes;  ///< of these
};

namespace {

/// What a rewrite overwrites or cuts off.
std::vector<ByteRange> RangesToLose(std::span<const FilePiece> pieces, const FileMove& move,
                                    std::int64_t length, std::int64_t new_length) {
  std::vector<ByteRange> ranges;
  const auto add = [&](std::int64_t from, std::int64_t to) {
    to = std::min(to, length);
    if (from < to) ranges.push_back({from, to - from});
  };
  for (const FilePiece& piece : pieces) {
    add(piece.offset, piece.offset + static_cast<std::int64_t>(piece.bytes.size()));
  }
  add(move.to, move.to + move.length);
  add(new_length, length);
  return ranges;
}

/// Makes room for the new length on the disk. 0, or an error number; `whole` is false if the old
/// length could not be set again.
int ReserveLength(int file, std::int64_t length, std::int64_t new_length, bool& whole) {
  if (new_length <= length) return 0;
  const int error = posix_fallocate(file, length, new_length - length);
  if (error == 0) return 0;
  // A volume that cannot reserve says so; there the length itself is all that can be had.
  const bool cannot = error == EOPNOTSUPP || error == EINVAL;
  if (cannot && ftruncate(file, new_length) == 0) return 0;
  const int final_error = cannot ? errno : error;
  whole = ftruncate(file, length) == 0;
  return final_error;
}

/// 0, or an error number.
int WritePieces(int file, std::span<const FilePiece> pieces, std::int64_t length,
                std::int64_t new_length) {
  for (const FilePiece& piece : pieces) {
    if (!WriteAllAt(file, piece.bytes, piece.offset)) return errno;
  }
  if (new_length < length && ftruncate(file, new_length) != 0) return errno;
  return 0;
}

}  // namespace

JournaledFile::~JournaledFile() { Close(); }

void JournaledFile::Close() noexcept {
  if (file_ >= 0) close(file_);
  file_ = -1;
  length_ = 0;
}

std::string JournaledFile::Open(const std::string& path) {
  Close();
  if (!journal_.state_->Released(journal_, path)) {
    return "An earlier save of the file was cut short and could not be undone yet.";
  }
  file_ = open(path.c_str(), O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  struct stat status {};
  if (file_ < 0 || fstat(file_, &status) != 0) {
    const int error = errno;
    Close();
    return SystemFault("The file cannot be opened for writing", error);
  }
  if (!S_ISREG(status.st_mode)) {
    Close();
    return "This is no file whose bytes can be changed.";
  }
  opened_as_ = path_ = path;
  length_ = status.st_size;
  modified_ = status.st_mtim;
  return {};
}

std::optional<std::string> JournaledFile::Read(std::int64_t offset, std::size_t count) const {
  if (file_ < 0 || offset < 0 || offset > length_ ||
      static_cast<std::uint64_t>(length_ - offset) < count) {
    return std::nullopt;
  }
  std::string bytes(count, '\0');
  if (ReadAllAt(file_, bytes.data(), count, offset) != count) return std::nullopt;
  return bytes;
}

/// Restores what a failed write has left. False if that failed too.
bool JournaledFile::PutBack(Change& change) const {
  if (!change.move.Undo(file_)) return false;
  for (std::size_t i = 0; i < change.old_ranges.size(); ++i) {
    if (!WriteAllAt(file_, change.old_bytes[i], change.old_ranges[i].offset)) return false;
  }
  return ftruncate(file_, length_) == 0;
}

/// The write itself, once the journal can undo it.
std::string JournaledFile::Write(Change& change, bool sync) {
  UndoJournal::State& state = *journal_.state_;
  bool whole = true;
  int error = ReserveLength(file_, length_, change.new_length, whole);
  std::string_view what = "There is no room for the longer file";
  if (error == 0) {
    what = "The file cannot be written";
    error = change.move.Run(file_);
    if (error == 0) error = WritePieces(file_, change.pieces, length_, change.new_length);
    if (error == 0 && sync && fdatasync(file_) != 0) error = errno;
    whole = error == 0 || PutBack(change);
  }
  if (!whole) {
    state.set_aside = true;
    state.files[path_].torn = true;
    what = "The file could not be written, and is restored at the next start";
  }
  state.Written(path_, file_, sync && error == 0);
  if (error != 0) return SystemFault(what, error);
  length_ = change.new_length;
  return {};
}

/// Empty text, or that somebody else has written to the file, or put another in its place, since it
/// was opened. `now` is what the system knows of it.
std::string JournaledFile::Compare(struct stat& now) const {
  if (file_ < 0 || fstat(file_, &now) != 0) return "The file is not open.";
  struct stat named {};
  const bool same = stat(opened_as_.c_str(), &named) == 0 && named.st_dev == now.st_dev &&
                    named.st_ino == now.st_ino && now.st_size == length_ &&
                    now.st_mtim.tv_sec == modified_.tv_sec &&
                    now.st_mtim.tv_nsec == modified_.tv_nsec;
  return same ? std::string() : "The file was changed by another program meanwhile.";
}

/// All that comes before the first byte. Empty text, or what stands in the way.
std::string JournaledFile::Guard(Change& change) {
  UndoJournal::State& state = *journal_.state_;
  struct stat now {};
  if (std::string fault = Compare(now); !fault.empty()) return fault;
  path_ = state.KnownName(opened_as_, now);
  const FileMove& move = change.move.Told();
  const ByteRange moved{move.from, move.length};
  const std::vector<ByteRange> lost = RangesToLose(change.pieces, move, length_, change.new_length);
  for (const ByteRange& range : lost) {
    for (const ByteRange& part : UncoveredParts(range, {&moved, 1})) {
      std::optional<std::string> bytes = ReadExactly(file_, part);
      if (!bytes) return "The file cannot be read.";
      change.old_ranges.push_back(part);
      change.old_bytes.push_back(std::move(*bytes));
    }
  }
  change.move.Reserve();
  std::string fault = state.Guard(path_, now, lost, file_, change.new_length);
  // The journal may have taken its time.
  if (fault.empty()) fault = Compare(now);
  return fault.empty() ? state.Begun(path_) : fault;
}

std::string JournaledFile::RewriteInGroup(Change& change, bool sync) {
  std::string fault = OrNoMemory([&] { return Guard(change); });
  if (!fault.empty()) return fault;
  fault = Write(change, sync);
  struct stat now {};
  if (fstat(file_, &now) == 0) modified_ = now.st_mtim;
  return fault;
}

std::string JournaledFile::Rewrite(std::span<const FilePiece> pieces, std::int64_t new_length,
                                   const FileMove& move) {
  Change change{.pieces = pieces, .new_length = new_length, .move = BlockMove(move)};
  if (journal_.InGroup()) return RewriteInGroup(change, false);
  // Memory may run out in between, and a group that nobody ends would sync nothing any more.
  struct Ending {
    UndoJournal& journal;
    explicit Ending(UndoJournal& journal_in) : journal(journal_in) { journal.BeginGroup(); }
    ~Ending() {
      if (journal.InGroup()) (void)journal.EndGroup();
    }
    Ending(const Ending&) = delete;
    Ending& operator=(const Ending&) = delete;
  };
  const Ending ending(journal_);
  std::string fault = RewriteInGroup(change, true);
  std::string end = journal_.EndGroup();
  return fault.empty() ? end : fault;
}

}  // namespace tunemeadow
