// SPDX-License-Identifier: GPL-3.0-or-later
// The records of the undo journal as bytes. A record is a head of 24 bytes ("TMJ1", kind, length
// and CRC-32 of the body, CRC-32 of the head) and its body; numbers stand as this machine keeps
// them, since a journal never leaves it. What follows the last whole record never took effect.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "files/run_identity.h"
#include "files/undo_journal.h"

namespace tunemeadow {

/// CRC-32 (ISO 3309) of `bytes`, going on from `before`.
[[nodiscard]] std::uint32_t Checksum(std::string_view bytes, std::uint32_t before = 0) noexcept;

/// Of the bytes of `range` in an open file, read in steps; nullopt if it does not give them all.
[[nodiscard]] std::optional<std::uint32_t> ChecksumOf(int descriptor, const ByteRange& range);

/// A range of a file and where its bytes stand in the journal, or their checksum.
struct JournalPart {
  ByteRange range;
  std::int64_t place = 0;      ///< of an image: offset in the journal, once it was read from there
  std::uint32_t checksum = 0;  ///< of a mark
};

struct JournalRecord {
  enum class Kind : std::uint32_t {
    kImage = 1,
    kMark = 2,     ///< the file is done
    kRun = 3,      ///< the first of a journal: who writes it
    kBegun = 4,    ///< the file is about to be written
    kRollBack = 5  ///< the file is about to be rolled back in another run of the machine
  };
  Kind kind = Kind::kImage;
  std::string path;         ///< bytes
  std::int64_t length = 0;  ///< of the file: before the group for an image, now for a mark
  // Of an image:
  std::int64_t least = 0, most = 0;  ///< lengths that the file can have in between
  std::int64_t modified_seconds = 0, modified_nanoseconds = 0;  ///< last write before the group
  std::vector<JournalPart> parts;

  // Where it stands in the journal, once it was read from there.
  std::int64_t start = 0, end = 0;
};

/// Adds the record to `log`; `bytes` are those of its parts, one after the other, for an image.
void AppendRecord(const JournalRecord& record, std::span<const std::string_view> bytes,
                  std::string& log);

/// The record that begins a journal, and what one tells; the start of the machine is not kept.
/// Journals of before, without a process, give 0 for it.
[[nodiscard]] JournalRecord RunRecord(const RunIdentity& run);
[[nodiscard]] RunIdentity RunOf(const JournalRecord& record);

/// Notes that the roll-back of a file begins in `run`, and whether a record is that note.
[[nodiscard]] JournalRecord RollBackRecord(const std::string& path, const RunIdentity& run);
[[nodiscard]] bool IsRollBackIn(const RunIdentity& run, const JournalRecord& record);

/// The whole records of an open journal, in their order; nullopt if it cannot be read, which
/// says nothing of what stands in it.
[[nodiscard]] std::optional<std::vector<JournalRecord>> ReadRecords(int descriptor);

}  // namespace tunemeadow
