// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/durable_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <utility>

#include "files/descriptor.h"

namespace tunemeadow {
namespace {

/// The folder that the system looks into for this path, with its "/"; empty: the working folder.
std::string_view FolderOnDisk(std::string_view path) noexcept {
  return path.substr(0, path.rfind('/') + 1);  // npos + 1 is 0
}

bool WriteAll(int descriptor, std::string_view bytes) noexcept {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// Where a chain of symbolic links ends, which need not exist; nullopt if the chain never ends.
std::optional<std::string> EndOfLinks(std::string path) {
  for (int step = 0; step < 40; ++step) {
    std::string target(PATH_MAX, '\0');
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length <= 0) return path;
    target.resize(static_cast<std::size_t>(length));
    if (target.front() != '/') target.insert(0, FolderOnDisk(path));
    path = std::move(target);
  }
  return std::nullopt;
}

/// A name in the folder of `path` that no other call uses.
std::string NameBeside(const std::string& path) {
  static std::atomic<unsigned> counter = 0;
  return std::string(FolderOnDisk(path)) + ".tunemeadow-" + std::to_string(getpid()) + "-" +
         std::to_string(counter++) + ".tmp";
}

using WriteFile = std::function<bool(int descriptor)>;

/// Makes the file `path`, which must not exist, with what `write` writes, and syncs it. `like`: the
/// file whose owner and permission bits it takes, or null. Leaves nothing behind where it fails.
bool MakeSyncedFile(const std::string& path, const WriteFile& write, const struct stat* like) {
  Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
  if (file.get() < 0) return false;
  bool made = write(file.get());
  if (made && like != nullptr) {
    // Only root may give a file away; for anyone else the owner is the same already or must change.
    if (fchown(file.get(), like->st_uid, like->st_gid) != 0) errno = 0;
    made = fchmod(file.get(), like->st_mode & 07777) == 0;
  }
  made = made && fsync(file.get()) == 0;
  made = file.Close() && made;
  if (!made) unlink(path.c_str());
  return made;
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path, std::size_t limit) {
  // Without O_NONBLOCK a pipe of that name would hold the program up until somebody writes to it.
  const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (file.get() < 0 || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
      static_cast<unsigned long long>(status.st_size) > limit) {
    return std::nullopt;
  }
  // One byte more than the size, so that the usual read ends without growing the buffer.
  std::string bytes(static_cast<std::size_t>(status.st_size) + 1, '\0');
  for (std::size_t filled = 0;;) {
    const ssize_t got = read(file.get(), bytes.data() + filled, bytes.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0 || filled + static_cast<std::size_t>(got) > limit) return std::nullopt;
    filled += static_cast<std::size_t>(got);
    if (got == 0) {
      bytes.resize(filled);
      return bytes;
    }
    if (filled == bytes.size()) bytes.resize(filled * 2);
  }
}

bool SyncFolderOf(const std::string& path) noexcept {
  const std::string_view folder = FolderOnDisk(path);
  const Descriptor opened(
      open(folder.empty() ? "." : std::string(folder).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // Some file systems cannot sync a folder and say EINVAL; there is nothing to wait for then.
  return opened.get() >= 0 && (fsync(opened.get()) == 0 || errno == EINVAL);
}

bool ReplaceFile(const std::string& path, std::string_view bytes) {
  return ReplaceFileBy(path, [bytes](int file) { return WriteAll(file, bytes); });
}

bool ReplaceFileBy(const std::string& path, const WriteFile& write) {
  const std::optional<std::string> target = EndOfLinks(path);
  if (!target || target->empty()) return false;
  struct stat old {};
  const bool exists = stat(target->c_str(), &old) == 0;
  if (exists &&
      (!S_ISREG(old.st_mode) || faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS) != 0))
    return false;
  const std::string made = NameBeside(*target);
  if (!MakeSyncedFile(made, write, exists ? &old : nullptr)) return false;
  if (rename(made.c_str(), target->c_str()) != 0) {
    unlink(made.c_str());
    return false;
  }
  SyncFolderOf(*target);
  return true;
}

bool CopyFileIfMissing(const std::string& from, const std::string& to) {
  struct stat status {};
  if (lstat(to.c_str(), &status) == 0) return true;
  const std::optional<std::string> bytes = ReadWholeFile(from);
  const std::string made = NameBeside(to);
  const auto write = [&](int file) { return WriteAll(file, *bytes); };
  if (!bytes || !MakeSyncedFile(made, write, nullptr)) return false;
  const bool named = renameat2(AT_FDCWD, made.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0;
  const int error = named ? 0 : errno;
  // A file system without that rename has hard links, or neither.
  const bool linked = !named && error != EEXIST && link(made.c_str(), to.c_str()) == 0;
  if (!named) unlink(made.c_str());
  if (named || linked) SyncFolderOf(to);
  return named || linked || lstat(to.c_str(), &status) == 0;
}

}  // namespace tunemeadow
