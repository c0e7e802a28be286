// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/journal_images.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <memory>

#include "files/descriptor.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kCopyStep = std::size_t{1} << 20;

bool IsDecimal(std::string_view text) noexcept {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

void FileRecords::Add(const JournalRecord& record) {
  using Kind = JournalRecord::Kind;
  if (record.kind == Kind::kRollBack) {
    roll_back = &record;
    return;
  }
  if (record.kind == Kind::kImage) images.push_back(&record);
  begun = begun || record.kind == Kind::kBegun;
  // What follows a mark says that the file was taken up again.
  mark = record.kind == Kind::kMark ? &record : nullptr;
}

JournalFiles FilesOf(const std::vector<JournalRecord>& records) {
  JournalFiles files;
  for (const JournalRecord& record : records) {
    if (record.kind == JournalRecord::Kind::kRun) {
      files.run = RunOf(record);
      continue;
    }
    const auto [found, is_new] = files.by_path.try_emplace(record.path);
    if (is_new) files.order.push_back(record.path);
    found->second.Add(record);
  }
  return files;
}

std::vector<std::string> NumberedJournals(const std::string& folder, std::string_view what) {
  const std::string front = "undo-" + std::string(what);
  constexpr std::string_view kBack = ".journal";
  std::vector<std::string> numbered;
  const std::unique_ptr<DIR, int (*)(DIR*)> opened(opendir(folder.empty() ? "." : folder.c_str()),
                                                   closedir);
  while (const dirent* entry = opened ? readdir(opened.get()) : nullptr) {
    const std::string_view name = entry->d_name;
    if (name.size() < front.size() + kBack.size() || !name.starts_with(front) ||
        !name.ends_with(kBack)) {
      continue;
    }
    if (IsDecimal(name.substr(front.size(), name.size() - front.size() - kBack.size()))) {
      numbered.push_back(folder + std::string(name));
    }
  }
  std::sort(numbered.begin(), numbered.end(),
            [](const std::string& left, const std::string& right) {
              return left.size() != right.size() ? left.size() < right.size() : left < right;
            });
  return numbered;
}

bool WalkImage(int log, const JournalPart& part, const EachStep& each) {
  std::string buffer(std::min<std::size_t>(kCopyStep, static_cast<std::size_t>(part.range.length)),
                     '\0');
  for (std::int64_t done = 0; done < part.range.length;) {
    const std::size_t count =
        std::min<std::size_t>(buffer.size(), static_cast<std::size_t>(part.range.length - done));
    if (ReadAllAt(log, buffer.data(), count, part.place + done) != count) return false;
    if (!each(std::string_view(buffer.data(), count), part.range.offset + done)) return false;
    done += static_cast<std::int64_t>(count);
  }
  return true;
}

bool HoldsImages(int file, std::int64_t length, int log, const FileRecords& records) {
  std::string buffer;
  const auto same = [&](std::string_view bytes, std::int64_t offset) {
    buffer.resize(bytes.size());
    return ReadAllAt(file, buffer.data(), buffer.size(), offset) == bytes.size() && buffer == bytes;
  };
  return std::all_of(records.images.begin(), records.images.end(), [&](const JournalRecord* image) {
    return length == image->length &&
           std::all_of(image->parts.begin(), image->parts.end(),
                       [&](const JournalPart& part) { return WalkImage(log, part, same); });
  });
}

bool HoldsMark(int file, std::int64_t length, const JournalRecord& mark) {
  if (length != mark.length) return false;
  return std::all_of(mark.parts.begin(), mark.parts.end(), [&](const JournalPart& part) {
    return ChecksumOf(file, part.range) == part.checksum;
  });
}

bool PutImages(int file, int log, const FileRecords& records) {
  const auto put = [file](std::string_view bytes, std::int64_t offset) {
    return WriteAllAt(file, bytes, offset);
  };
  for (const JournalRecord* image : records.images) {
    for (const JournalPart& part : image->parts) {
      if (!WalkImage(log, part, put)) return false;
    }
  }
  return ftruncate(file, records.images.front()->length) == 0;
}

}  // namespace tunemeadow
