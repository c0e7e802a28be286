// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/file_origin.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <vector>

#include "files/descriptor.h"
#include "store/store_handle.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kOriginBlock = std::size_t{1} << 16;

/// Sums up a file of `size` bytes that `read(words, bytes, offset)` reads; nullopt if that says
/// no.
template <typename Read>
std::optional<FileOrigin> SumUp(std::int64_t size, Read read) {
  std::vector<std::uint64_t> words(kOriginBlock / sizeof(std::uint64_t));
  std::uint64_t sum = 0xCBF29CE484222325U;
  for (std::int64_t at = 0; at < size; at += static_cast<std::int64_t>(kOriginBlock)) {
    const auto left = std::min(size - at, static_cast<std::int64_t>(kOriginBlock));
    std::fill(words.begin(), words.end(), 0U);
    if (!read(words.data(), static_cast<std::size_t>(left), at)) return std::nullopt;
    for (const std::uint64_t word : words) {
      sum = (sum ^ word) * 0x9E3779B97F4A7C15U;
      sum ^= sum >> 32;
    }
  }
  return FileOrigin{size, static_cast<std::int64_t>(sum)};
}

bool ReadWhole(int file, void* bytes, std::size_t count, std::int64_t at) {
  auto* to = static_cast<char*>(bytes);
  while (count > 0) {
    const ssize_t got = pread(file, to, count, at);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    to += got;
    at += got;
    count -= static_cast<std::size_t>(got);
  }
  return true;
}

}  // namespace

std::optional<FileOrigin> OriginOf(sqlite3* store) {
  sqlite3_file* file = nullptr;
  sqlite3_int64 size = 0;
  if (sqlite3_file_control(store, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
      file == nullptr || file->pMethods == nullptr ||
      file->pMethods->xFileSize(file, &size) != SQLITE_OK) {
    return std::nullopt;
  }
  return SumUp(size, [file](void* words, std::size_t bytes, std::int64_t at) {
    return file->pMethods->xRead(file, words, static_cast<int>(bytes), at) == SQLITE_OK;
  });
}

std::optional<FileOrigin> OriginOfFile(const std::string& path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file.IsOpen() || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  return SumUp(status.st_size, [&file](void* words, std::size_t bytes, std::int64_t at) {
    return ReadWhole(file.get(), words, bytes, at);
  });
}

std::optional<FileOrigin> OriginOfCatalogue(const std::string& path) {
  const StoreHandle store = OpenSoundStore(path);
  if (store == nullptr) return std::nullopt;
  sqlite3_wal_checkpoint_v2(store.get(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
  const ReadTransaction reading(store.get());
  if (!reading.Begun()) return std::nullopt;
  std::optional<FileOrigin> origin = OriginOf(store.get());
  // Whatever is written meanwhile stands in the log as long as this transaction lasts.
  return LogIsEmpty(path) ? origin : std::nullopt;
}

}  // namespace tunemeadow
