// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/descriptor.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace tunemeadow {

bool Descriptor::Close() noexcept {
  if (descriptor_ < 0) return true;
  return close(std::exchange(descriptor_, -1)) == 0;
}

bool WriteAllAt(int descriptor, std::string_view bytes, std::int64_t offset) noexcept {
  while (!bytes.empty()) {
    const ssize_t written = pwrite(descriptor, bytes.data(), bytes.size(), offset);
    if (written < 0 && errno == EINTR) continue;
    if (written == 0) errno = ENOSPC;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
    offset += written;
  }
  return true;
}

std::size_t ReadAllAt(int descriptor, char* to, std::size_t count, std::int64_t offset) noexcept {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got =
        pread(descriptor, to + done, count - done, offset + static_cast<std::int64_t>(done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

std::string SystemFault(std::string_view what, int error) {
  return std::string(what) + ": " + std::generic_category().message(error);
}

}  // namespace tunemeadow
