// SPDX-License-Identifier: GPL-3.0-or-later
// What all fuzz targets share: the function that libFuzzer and the replay call, a check that ends
// the process, and one input seen as bytes in memory and as a real file.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "audio/file_bytes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace tunemeadow::fuzz {

inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

inline std::string_view Input(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// The input as a file: its first three bytes tell where up to 106 KB of zero bytes stand in the
/// rest, so that a small input reaches the borders of the reads. Most inputs stay under 4 KB.
inline std::string Stretched(std::string_view input) {
  if (input.size() < 3) return std::string(input);
  const auto byte = [input](std::size_t at) { return static_cast<std::uint8_t>(input[at]); };
  std::string file(input.substr(3));
  const std::size_t at = std::min<std::size_t>(file.size(), byte(0) * 4U);
  file.insert(at, byte(1) * (byte(2) < 0xF0 ? 16U : 416U), '\0');
  return file;
}

/// Opens `bytes` as a file without a name.
class UnnamedFile {
 public:
  explicit UnnamedFile(std::string_view bytes) : file_(::memfd_create("input", MFD_CLOEXEC)) {
    std::size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t wrote = ::write(file_, bytes.data() + done, bytes.size() - done);
      Require(wrote > 0, "the input can be written to memory");
      done += static_cast<std::size_t>(wrote);
    }
  }
  ~UnnamedFile() { ::close(file_); }
  UnnamedFile(const UnnamedFile&) = delete;
  UnnamedFile& operator=(const UnnamedFile&) = delete;

  [[nodiscard]] std::string Path() const { return "/proc/self/fd/" + std::to_string(file_); }

 private:
  int file_;
};

}  // namespace tunemeadow::fuzz
