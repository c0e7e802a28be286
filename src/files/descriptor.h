// SPDX-License-Identifier: GPL-3.0-or-later
// An open file of the system, closed at the end of its owner, and the calls that read and write
// all of what they are given.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace tunemeadow {

class Descriptor {
 public:
  Descriptor() noexcept = default;
  explicit Descriptor(int descriptor) noexcept : descriptor_(descriptor) {}
  ~Descriptor() { Close(); }
  Descriptor(Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this != &other) {
      Close();
      descriptor_ = std::exchange(other.descriptor_, -1);
    }
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] int get() const noexcept { return descriptor_; }
  [[nodiscard]] bool IsOpen() const noexcept { return descriptor_ >= 0; }

  /// False if the system reports a late write error.
  bool Close() noexcept;

 private:
  int descriptor_ = -1;
};

/// Writes all bytes at `offset` (from 0). False, with errno set, where that failed.
[[nodiscard]] bool WriteAllAt(int descriptor, std::string_view bytes, std::int64_t offset) noexcept;

/// Reads `count` bytes from `offset` into `to`. The number of bytes read, fewer at the end of the
/// file or where reading failed.
[[nodiscard]] std::size_t ReadAllAt(int descriptor, char* to, std::size_t count,
                                    std::int64_t offset) noexcept;

/// "what: reason of errno", for a person.
[[nodiscard]] std::string SystemFault(std::string_view what, int error);

}  // namespace tunemeadow
