// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/kept_journals.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <optional>

#include "core/paths.h"
#include "files/descriptor.h"
#include "files/durable_file.h"
#include "files/file_facts.h"
#include "files/journal_images.h"
#include "files/undo_journal_state.h"

namespace tunemeadow {
namespace {

Descriptor OpenToRead(const std::string& path) {
  return Descriptor(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

std::vector<ByteRange> KeptRanges(const FileRecords& records) {
  std::vector<ByteRange> ranges;
  for (const JournalRecord* image : records.images) {
    for (const JournalPart& part : image->parts) ranges.push_back(part.range);
  }
  return ranges;
}

/// What of the old file stands in no journal.
std::vector<ByteRange> Gaps(const FileRecords& records) {
  return UncoveredParts({0, records.images.front()->length}, KeptRanges(records));
}

std::int64_t SumOf(const std::vector<ByteRange>& ranges) {
  std::int64_t sum = 0;
  for (const ByteRange& range : ranges) sum += range.length;
  return sum;
}

KeptFile::State StateOf(const std::string& path, int log, const FileRecords& records) {
  const Descriptor file = OpenToRead(path);
  struct stat now {};
  if (!file.IsOpen() || fstat(file.get(), &now) != 0 || !S_ISREG(now.st_mode)) {
    return KeptFile::State::kMissing;
  }
  return HoldsImages(file.get(), now.st_size, log, records) ? KeptFile::State::kOld
                                                            : KeptFile::State::kOther;
}

KeptJournal Look(const std::string& path, bool waiting) {
  KeptJournal kept{.path = path, .waiting = waiting};
  const Descriptor log = OpenToRead(path);
  const auto records = log.IsOpen() ? ReadRecords(log.get()) : std::nullopt;
  if (!records) return kept;
  const JournalFiles files = FilesOf(*records);
  for (const std::string& name : files.order) {
    const FileRecords& of_file = files.by_path.at(name);
    if (of_file.images.empty()) continue;
    const JournalRecord& first = *of_file.images.front();
    kept.files.push_back(
        {.path = name,
         .length = first.length,
         .modified = {.tv_sec = first.modified_seconds, .tv_nsec = first.modified_nanoseconds},
         .kept_bytes = first.length - SumOf(Gaps(of_file)),
         .state = StateOf(name, log.get(), of_file)});
  }
  return kept;
}

/// Copies the ranges from one open file to the other, as far as the first one has them.
bool CopyRanges(int from, const std::vector<ByteRange>& ranges, int to) {
  struct stat status {};
  if (from < 0 || fstat(from, &status) != 0) return true;
  return std::all_of(ranges.begin(), ranges.end(), [&](ByteRange range) {
    range.length = std::clamp<std::int64_t>(status.st_size - range.offset, 0, range.length);
    return WalkImage(from, {range, range.offset}, [to](std::string_view bytes, std::int64_t at) {
      return WriteAllAt(to, bytes, at);
    });
  });
}

}  // namespace

std::vector<KeptJournal> KeptJournals(const std::string& folder) {
  const std::string inside = WithTrailingSeparator(folder);
  std::vector<KeptJournal> journals;
  for (const char* what : {"kept-", ""}) {
    for (const std::string& path : NumberedJournals(inside, what)) {
      journals.push_back(Look(path, *what == '\0'));
    }
  }
  return journals;
}

std::string WriteOldFile(const std::string& journal, const std::string& path, const std::string& to,
                         std::int64_t& borrowed) {
  if (MyFileExists(to)) return "Something of that name stands there.";
  const Descriptor log = OpenToRead(journal);
  const auto records = log.IsOpen() ? ReadRecords(log.get()) : std::nullopt;
  if (!records) return "The journal cannot be read.";
  const JournalFiles files = FilesOf(*records);
  const auto found = files.by_path.find(path);
  if (found == files.by_path.end() || found->second.images.empty()) {
    return "The journal keeps nothing of that file.";
  }
  const std::vector<ByteRange> gaps = Gaps(found->second);
  borrowed = SumOf(gaps);
  const Descriptor present = OpenToRead(path);
  errno = EIO;
  const bool written = ReplaceFileBy(to, [&](int made) {
    return CopyRanges(present.get(), gaps, made) && PutImages(made, log.get(), found->second);
  });
  return written ? std::string() : SystemFault("The file cannot be written", errno);
}

}  // namespace tunemeadow
