// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/journal_log.h"

#include <sys/stat.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "files/descriptor.h"

namespace tunemeadow {
namespace {

constexpr std::array<char, 4> kRecordMagic = {'T', 'M', 'J', '1'};

struct RecordHead {
  std::array<char, 4> magic = kRecordMagic;
  std::uint32_t kind = 0;
  std::uint64_t body_length = 0;
  std::uint32_t body_checksum = 0;
  std::uint32_t head_checksum = 0;  ///< of the bytes before it
};
static_assert(sizeof(RecordHead) == 24);

/// The part of every body that has a fixed size; path, table and bytes follow.
struct BodyHead {
  std::int64_t length = 0, least = 0, most = 0;
  std::int64_t modified_seconds = 0, modified_nanoseconds = 0;
  std::uint32_t path_length = 0, parts = 0;
};

struct TableEntry {
  std::int64_t offset = 0, length = 0;
  std::uint32_t checksum = 0, unused = 0;
};

template <typename Plain>
std::string_view BytesOfPlain(const Plain& plain) {
  return {reinterpret_cast<const char*>(&plain), sizeof plain};  // NOLINT: bytes of a plain struct
}

std::uint32_t HeadChecksum(const RecordHead& head) {
  return Checksum(BytesOfPlain(head).substr(0, sizeof head - sizeof head.head_checksum));
}

/// Thrown inside this file only: the journal gives fewer bytes than it has.
struct UnreadableJournal {};

void ReadOrThrow(int descriptor, char* to, std::size_t count, std::int64_t offset) {
  if (ReadAllAt(descriptor, to, count, offset) != count) throw UnreadableJournal();
}

/// Reads the head at `start`; nullopt if no whole record can stand there.
std::optional<RecordHead> ReadHead(int descriptor, std::int64_t start, std::int64_t size) {
  std::array<char, sizeof(RecordHead)> bytes{};
  const std::int64_t room = size - start - static_cast<std::int64_t>(bytes.size());
  if (room < 0) return std::nullopt;
  ReadOrThrow(descriptor, bytes.data(), bytes.size(), start);
  RecordHead head;
  std::memcpy(&head, bytes.data(), bytes.size());
  if (head.magic != kRecordMagic || head.head_checksum != HeadChecksum(head) ||
      head.body_length > static_cast<std::uint64_t>(room)) {
    return std::nullopt;
  }
  return head;
}

bool BodyIsWhole(int descriptor, std::int64_t start, const RecordHead& head) {
  const std::optional<std::uint32_t> checksum =
      ChecksumOf(descriptor, {start, static_cast<std::int64_t>(head.body_length)});
  if (!checksum) throw UnreadableJournal();
  return *checksum == head.body_checksum;
}

/// Path and table of a body that is whole. The bytes stay in the file.
std::optional<JournalRecord> ReadBody(int descriptor, std::int64_t start, const RecordHead& head) {
  BodyHead body;
  std::array<char, sizeof body> fixed{};
  if (head.body_length < fixed.size()) return std::nullopt;
  ReadOrThrow(descriptor, fixed.data(), fixed.size(), start);
  std::memcpy(&body, fixed.data(), fixed.size());
  const std::uint64_t table = std::uint64_t{body.parts} * sizeof(TableEntry);
  if (fixed.size() + body.path_length + table > head.body_length) return std::nullopt;
  std::string rest(body.path_length + table, '\0');
  const auto behind = start + static_cast<std::int64_t>(fixed.size());
  ReadOrThrow(descriptor, rest.data(), rest.size(), behind);

  JournalRecord record{.kind = static_cast<JournalRecord::Kind>(head.kind),
                       .path = rest.substr(0, body.path_length),
                       .length = body.length,
                       .least = body.least,
                       .most = body.most,
                       .modified_seconds = body.modified_seconds,
                       .modified_nanoseconds = body.modified_nanoseconds};
  std::int64_t place = behind + static_cast<std::int64_t>(rest.size());
  for (std::uint32_t i = 0; i < body.parts; ++i) {
    TableEntry entry;
    std::memcpy(&entry, rest.data() + body.path_length + i * sizeof entry, sizeof entry);
    record.parts.push_back({{entry.offset, entry.length}, place, entry.checksum});
    place += entry.length;
  }
  return record;
}

}  // namespace

std::uint32_t Checksum(std::string_view bytes, std::uint32_t before) noexcept {
  // zlib takes its own byte type; the bytes are the same.
  const auto* data = reinterpret_cast<const Bytef*>(bytes.data());  // NOLINT
  return static_cast<std::uint32_t>(crc32_z(before, data, bytes.size()));
}

std::optional<std::uint32_t> ChecksumOf(int descriptor, const ByteRange& range) {
  constexpr std::int64_t kStep = std::int64_t{1} << 20;
  std::string buffer(static_cast<std::size_t>(std::clamp<std::int64_t>(range.length, 0, kStep)),
                     '\0');
  std::uint32_t checksum = 0;
  for (std::int64_t done = 0; done < range.length;) {
    const auto count = static_cast<std::size_t>(std::min(kStep, range.length - done));
    if (ReadAllAt(descriptor, buffer.data(), count, range.offset + done) != count) {
      return std::nullopt;
    }
    checksum = Checksum({buffer.data(), count}, checksum);
    done += static_cast<std::int64_t>(count);
  }
  return checksum;
}

void AppendRecord(const JournalRecord& record, std::span<const std::string_view> bytes,
                  std::string& log) {
  const BodyHead body{.length = record.length,
                      .least = record.least,
                      .most = record.most,
                      .modified_seconds = record.modified_seconds,
                      .modified_nanoseconds = record.modified_nanoseconds,
                      .path_length = static_cast<std::uint32_t>(record.path.size()),
                      .parts = static_cast<std::uint32_t>(record.parts.size())};
  const std::size_t start = log.size();
  std::size_t length = sizeof(RecordHead) + sizeof body + record.path.size() +
                       record.parts.size() * sizeof(TableEntry);
  for (const std::string_view piece : bytes) length += piece.size();
  // Megabytes may stand in the record: they are not to be moved about as it grows.
  if (log.capacity() < start + length) log.reserve(std::max(start + length, log.capacity() * 2));
  log.resize(start + sizeof(RecordHead));
  log += BytesOfPlain(body);
  log += record.path;
  for (const JournalPart& part : record.parts) {
    log += BytesOfPlain(TableEntry{part.range.offset, part.range.length, part.checksum, 0});
  }
  for (const std::string_view piece : bytes) log += piece;
  const std::string_view whole = std::string_view(log).substr(start + sizeof(RecordHead));
  RecordHead head{.kind = static_cast<std::uint32_t>(record.kind),
                  .body_length = whole.size(),
                  .body_checksum = Checksum(whole)};
  head.head_checksum = HeadChecksum(head);
  log.replace(start, sizeof head, BytesOfPlain(head));
}

JournalRecord RunRecord(const RunIdentity& run) {
  return {.kind = JournalRecord::Kind::kRun,
          .path = run.machine_run,
          .length = run.process,
          .modified_seconds = run.process_began};
}

RunIdentity RunOf(const JournalRecord& record) {
  return {.machine_run = record.path,
          .process = record.length,
          .process_began = record.modified_seconds};
}

JournalRecord RollBackRecord(const std::string& path, const RunIdentity& run) {
  return {
      .kind = JournalRecord::Kind::kRollBack, .path = path, .length = Checksum(run.machine_run)};
}

bool IsRollBackIn(const RunIdentity& run, const JournalRecord& record) {
  return record.kind == JournalRecord::Kind::kRollBack &&
         record.length == Checksum(run.machine_run);
}

std::optional<std::vector<JournalRecord>> ReadRecords(int descriptor) {
  std::vector<JournalRecord> records;
  struct stat status {};
  if (fstat(descriptor, &status) != 0) return std::nullopt;
  try {
    std::int64_t start = 0;
    while (const std::optional<RecordHead> head = ReadHead(descriptor, start, status.st_size)) {
      const std::int64_t body = start + static_cast<std::int64_t>(sizeof *head);
      if (!BodyIsWhole(descriptor, body, *head)) break;
      std::optional<JournalRecord> record = ReadBody(descriptor, body, *head);
      if (!record) break;
      record->start = start;
      start = record->end = body + static_cast<std::int64_t>(head->body_length);
      records.push_back(std::move(*record));
    }
  } catch (const UnreadableJournal&) {
    return std::nullopt;
  }
  return records;
}

}  // namespace tunemeadow
