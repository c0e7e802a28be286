// SPDX-License-Identifier: GPL-3.0-or-later
// The bytes of one file, opened once and lent to all readers of an import. Never writes, never
// creates a file, never maps one: a file that is cut short while it is read gives fewer bytes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tunemeadow {

/// A read-only file, or bytes in memory that stand for one. One object serves any number of files,
/// one after the other, and keeps its buffers from file to file. The head of the file (4 KB, or
/// what was asked for) and its last 256 bytes are read once and kept while it is open, so the five
/// readers of an import cost two reads of the disk.
///
/// Offsets count from 0. Every returned view lasts until the next call of a non-const member.
class FileBytes {
 public:
  FileBytes() noexcept = default;
  ~FileBytes();
  FileBytes(const FileBytes&) = delete;
  FileBytes& operator=(const FileBytes&) = delete;

  /// Opens the regular file at `path`, whatever was open before. False, and nothing open, where
  /// there is none, it may not be read, or the path names a folder, a pipe or a device (which is
  /// never waited for).
  [[nodiscard]] bool Open(const std::string& path) noexcept;

  /// Takes `bytes` as the file. They must outlive their use.
  void OpenMemory(std::string_view bytes) noexcept;

  void Close() noexcept;

  [[nodiscard]] bool IsOpen() const noexcept { return open_; }

  /// Bytes of the file as it was opened; 0 when nothing is open.
  [[nodiscard]] std::int64_t Length() const noexcept { return length_; }

  /// Time of the last write in whole seconds since 1970 (UTC); 0 for bytes in memory.
  [[nodiscard]] std::int64_t ModifiedAt() const noexcept { return modified_at_; }

  /// `count` bytes from `offset` on; fewer where the file ends or can't be read, none for an offset
  /// outside the file.
  [[nodiscard]] std::string_view Read(std::int64_t offset, std::size_t count) noexcept;

  /// Exactly `count` bytes from `offset` on, with zero bytes in place of what the file lacks.
  /// Empty only if there is no memory for them.
  [[nodiscard]] std::string_view ReadPadded(std::int64_t offset, std::size_t count) noexcept;

  /// Some bytes from `offset` on, at most `count`: what is at hand without reading, as long as that
  /// is two bytes or more, otherwise what Read gives. For a search that walks the file.
  [[nodiscard]] std::string_view ReadSome(std::int64_t offset, std::size_t count) noexcept;

 private:
  /// Memory that grows without being cleared or copied for nothing.
  struct Buffer {
    std::unique_ptr<char[]> bytes;
    std::size_t capacity = 0;
    [[nodiscard]] bool Reserve(std::size_t wanted, std::size_t kept) noexcept;
    void Shrink() noexcept;
  };

  static constexpr std::size_t kTailBytes = 256;

  [[nodiscard]] std::size_t ReadInto(char* to, std::int64_t offset,
                                     std::size_t count) const noexcept;
  [[nodiscard]] bool GrowHead(std::size_t wanted) noexcept;
  [[nodiscard]] std::string_view ReadTail(std::int64_t offset, std::size_t count) noexcept;

  int file_ = -1;
  bool open_ = false;
  bool tail_known_ = false;
  std::int64_t length_ = 0;
  std::int64_t modified_at_ = 0;
  std::string_view memory_;
  Buffer head_;
  std::size_t head_size_ = 0;  ///< the first bytes of the file that head_ holds
  Buffer scratch_;
  std::array<char, kTailBytes> tail_{};
  std::size_t tail_size_ = 0;
};

}  // namespace tunemeadow
