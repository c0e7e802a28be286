// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/file_bytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

namespace tunemeadow {
namespace {

// Covers tag, first frame header and Xing header of nearly every file without a picture.
constexpr std::size_t kFirstRead = 4096;

// What one file with a large picture needed is not kept for the rest of the run.
constexpr std::size_t kKeptCapacity = std::size_t{1} << 20;

}  // namespace

bool FileBytes::Buffer::Reserve(std::size_t wanted, std::size_t kept) noexcept {
  if (wanted <= capacity) return true;
  const std::size_t rounded = (wanted + kFirstRead - 1) / kFirstRead * kFirstRead;
  std::unique_ptr<char[]> grown(new (std::nothrow) char[rounded]);
  if (!grown) return false;
  if (kept > 0) std::memcpy(grown.get(), bytes.get(), kept);
  bytes = std::move(grown);
  capacity = rounded;
  return true;
}

void FileBytes::Buffer::Shrink() noexcept {
  if (capacity <= kKeptCapacity) return;
  bytes.reset();
  capacity = 0;
}

FileBytes::~FileBytes() { Close(); }

bool FileBytes::Open(const std::string& path) noexcept {
  Close();
  // A pipe would block the open call without O_NONBLOCK; for regular files it means nothing.
  const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (file < 0) return false;
  struct stat status {};
  if (::fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
    ::close(file);
    return false;
  }
  file_ = file;
  open_ = true;
  length_ = status.st_size;
  modified_at_ = status.st_mtim.tv_sec;
  return true;
}

void FileBytes::OpenMemory(std::string_view bytes) noexcept {
  Close();
  memory_ = bytes;
  open_ = true;
  length_ = static_cast<std::int64_t>(bytes.size());
}

void FileBytes::Close() noexcept {
  if (file_ >= 0) ::close(file_);
  file_ = -1;
  open_ = false;
  tail_known_ = false;
  length_ = 0;
  modified_at_ = 0;
  memory_ = {};
  head_size_ = 0;
  tail_size_ = 0;
  head_.Shrink();
  scratch_.Shrink();
}

std::string_view FileBytes::Read(std::int64_t offset, std::size_t count) noexcept {
  if (offset < 0 || offset >= length_) return {};
  const std::int64_t behind = length_ - offset;
  if (static_cast<std::uint64_t>(behind) < count) count = static_cast<std::size_t>(behind);
  const auto start = static_cast<std::size_t>(offset);
  if (file_ < 0) return memory_.substr(start, count);
  if (start + count > head_size_ && offset == 0 && !GrowHead(count)) return {};
  if (start + count <= head_size_) return {head_.bytes.get() + start, count};
  if (offset == 0) return {head_.bytes.get(), head_size_};  // the file has become shorter
  if (behind <= static_cast<std::int64_t>(kTailBytes)) return ReadTail(offset, count);
  if (!scratch_.Reserve(count, 0)) return {};
  return {scratch_.bytes.get(), ReadInto(scratch_.bytes.get(), offset, count)};
}

std::string_view FileBytes::ReadPadded(std::int64_t offset, std::size_t count) noexcept {
  const std::string_view found = Read(offset, count);
  if (found.size() == count) return found;
  // A head that is all of the file is padded where it stands: it may be a large tag.
  const bool in_head = !found.empty() && offset == 0 && file_ >= 0;
  Buffer& buffer = in_head ? head_ : scratch_;
  const bool in_place = in_head || found.data() == scratch_.bytes.get();
  if (!buffer.Reserve(count, in_place ? found.size() : 0)) return {};
  char* const bytes = buffer.bytes.get();
  if (!in_place && !found.empty()) std::memcpy(bytes, found.data(), found.size());
  std::memset(bytes + found.size(), 0, count - found.size());
  return {bytes, count};
}

std::string_view FileBytes::ReadSome(std::int64_t offset, std::size_t count) noexcept {
  if (offset < 0 || offset >= length_) return {};
  if (file_ >= 0 && head_size_ == 0 && !GrowHead(kFirstRead)) return {};
  const auto start = static_cast<std::size_t>(offset);
  if (start + 2 <= head_size_) {
    return {head_.bytes.get() + start, std::min(count, head_size_ - start)};
  }
  return Read(offset, count);
}

std::size_t FileBytes::ReadInto(char* to, std::int64_t offset, std::size_t count) const noexcept {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got =
        ::pread(file_, to + done, count - done, offset + static_cast<std::int64_t>(done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

bool FileBytes::GrowHead(std::size_t wanted) noexcept {
  wanted = std::max(wanted, kFirstRead);
  if (static_cast<std::uint64_t>(length_) < wanted) wanted = static_cast<std::size_t>(length_);
  if (!head_.Reserve(wanted, head_size_)) return false;
  head_size_ += ReadInto(head_.bytes.get() + head_size_, static_cast<std::int64_t>(head_size_),
                         wanted - head_size_);
  return true;
}

std::string_view FileBytes::ReadTail(std::int64_t offset, std::size_t count) noexcept {
  const std::int64_t start = std::max<std::int64_t>(0, length_ - std::int64_t{kTailBytes});
  if (!tail_known_) {
    tail_size_ = ReadInto(tail_.data(), start, static_cast<std::size_t>(length_ - start));
    tail_known_ = true;
  }
  return std::string_view(tail_.data(), tail_size_)
      .substr(std::min(static_cast<std::size_t>(offset - start), tail_size_), count);
}

}  // namespace tunemeadow
