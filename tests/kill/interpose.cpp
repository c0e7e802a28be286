// SPDX-License-Identifier: GPL-3.0-or-later
#include "kill/interpose.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstring>

namespace tunemeadow::kill {

std::string_view NameOf(Call call) {
  static constexpr std::array<std::string_view, 9> kNames = {
      "create", "write",  "truncate", "reserve", "sync", "sync of the volume",
      "rename", "unlink", "times"};
  return kNames.at(static_cast<std::size_t>(call));
}

// --- Tape ------------------------------------------------------------------------------------

struct Tape::Head {
  std::size_t used;
  bool keep_bytes;
  std::uint32_t calls;
};

namespace {

struct EntryHead {
  Call call;
  std::int64_t offset, length;
  std::size_t path, other, bytes;
};

}  // namespace

Tape::Tape(std::size_t capacity) : capacity_(capacity) {
  void* memory = mmap(nullptr, capacity, PROT_READ | PROT_WRITE,
                      MAP_SHARED | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (memory == MAP_FAILED) abort();
  head_ = static_cast<Head*>(memory);
  Clear(false);
}

Tape::~Tape() { munmap(head_, capacity_); }

void Tape::Clear(bool keep_bytes) { *head_ = {sizeof(Head), keep_bytes, 0}; }

void Tape::Add(const Operation& operation) {
  const std::string_view bytes = head_->keep_bytes ? operation.bytes : std::string_view();
  const EntryHead entry = {operation.call,        operation.offset,       operation.length,
                           operation.path.size(), operation.other.size(), bytes.size()};
  char* const start = reinterpret_cast<char*>(head_);
  const std::size_t size = sizeof entry + entry.path + entry.other + entry.bytes;
  if (head_->used + size > capacity_) abort();
  char* to = start + head_->used;
  memcpy(to, &entry, sizeof entry);
  to += sizeof entry;
  for (const std::string_view text : {operation.path, operation.other, bytes}) {
    to = std::copy(text.begin(), text.end(), to);
  }
  head_->used += size;  // last: an entry of a killed child counts only if it is whole
}

std::vector<Operation> Tape::Operations() const {
  std::vector<Operation> operations;
  const char* const start = reinterpret_cast<const char*>(head_);
  for (std::size_t at = sizeof(Head); at < head_->used;) {
    EntryHead entry;
    memcpy(&entry, start + at, sizeof entry);
    const char* text = start + at + sizeof entry;
    operations.push_back({entry.call,
                          entry.offset,
                          entry.length,
                          {text, entry.path},
                          {text + entry.path, entry.other},
                          {text + entry.path + entry.other, entry.bytes}});
    at += sizeof entry + entry.path + entry.other + entry.bytes;
  }
  return operations;
}

std::uint32_t Tape::Calls() const { return head_->calls; }

void Tape::Count(std::uint32_t calls) { head_->calls = calls; }

// --- The blow --------------------------------------------------------------------------------

namespace {

struct Arms {
  bool armed = false;
  std::string folder;
  Blow blow;
  Tape* tape = nullptr;
  std::uint32_t count = 0;
};

Arms& TheArms() {
  static Arms arms;
  return arms;
}

bool IsBelow(std::string_view path) {
  const std::string& folder = TheArms().folder;
  return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

/// The path behind a descriptor if it counts, else empty.
std::string WatchedPath(int descriptor) {
  if (!TheArms().armed) return {};
  const int error = errno;
  std::array<char, PATH_MAX> path;
  const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
  const ssize_t length = readlink(link.c_str(), path.data(), path.size());
  errno = error;
  std::string found(path.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
  return IsBelow(found) ? found : std::string();
}

[[noreturn]] void Die() {
  ::kill(getpid(), SIGKILL);
  for (;;) pause();
}

bool NeedsRoom(Call call) {
  return call == Call::kCreate || call == Call::kWrite || call == Call::kReserve;
}

/// How much of a call is done, and what comes then.
struct Verdict {
  std::int64_t part = Blow::kWhole;
  bool die = false;
  int error = 0;
};

/// Counts a call. `room` is the part of a write of `size` bytes that lies within the file.
Verdict Judge(Call call, std::int64_t room = 0, std::int64_t size = 0) {
  Arms& arms = TheArms();
  const std::uint32_t number = arms.count++;
  const Blow& blow = arms.blow;
  if (arms.tape != nullptr) arms.tape->Count(arms.count);
  if (blow.kind == Blow::Kind::kNone || number < blow.call) return {};
  if (blow.kind == Blow::Kind::kKill) {
    if (number > blow.call) return {};
    return {.part = blow.part, .die = true};
  }
  using Extent = Blow::Extent;
  if (blow.kill_at != 0 && number == blow.kill_at) {
    const bool full = blow.extent == Extent::kRoomLater;
    return {.part = full ? std::min(room, size / 2) : size / 2, .die = true};
  }
  switch (blow.extent) {
    case Extent::kOneCall:
      return number == blow.call ? Verdict{.part = blow.part, .error = blow.error} : Verdict{};
    case Extent::kNextToo:
      if (number == blow.call) return {.part = blow.part, .error = blow.error};
      return number == blow.call + 1 ? Verdict{.part = 0, .error = blow.error} : Verdict{};
    case Extent::kAllLater:
      return {.part = 0, .error = blow.error};
    case Extent::kRoomLater:
      return NeedsRoom(call) ? Verdict{.part = room, .error = blow.error} : Verdict{};
  }
  return {};
}

/// Runs a call that is done or not done. `run` answers as the system does.
template <typename Run>
int Strike(const Operation& operation, Run run) {
  const Verdict verdict = Judge(operation.call);
  if (verdict.part != Blow::kWhole) {
    if (verdict.die) Die();
    errno = verdict.error;
    return -1;
  }
  const int result = run();
  if (result == 0 && TheArms().tape != nullptr) TheArms().tape->Add(operation);
  if (verdict.die) Die();
  return result;
}

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

std::int64_t LengthOf(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 ? status.st_size : 0;
}

template <typename Run>
ssize_t StrikeWrite(const std::string& path, int descriptor, const void* data, std::size_t size,
                    std::int64_t offset, Run run) {
  const auto wanted = static_cast<std::int64_t>(size);
  const std::int64_t room = std::clamp<std::int64_t>(LengthOf(descriptor) - offset, 0, wanted);
  const Verdict verdict = Judge(Call::kWrite, room, wanted);
  const std::int64_t part = verdict.part == Blow::kWhole ? wanted : std::min(verdict.part, wanted);
  ssize_t done = 0;
  if (part > 0 || wanted == 0) done = run(static_cast<std::size_t>(part));
  if (done > 0 && TheArms().tape != nullptr) {
    TheArms().tape->Add({Call::kWrite,
                         offset,
                         done,
                         path,
                         {},
                         {static_cast<const char*>(data), static_cast<std::size_t>(done)}});
  }
  if (verdict.die) Die();
  if (done == 0 && wanted > 0) {
    errno = verdict.error;
    return -1;
  }
  return done;
}

int StrikeReserve(const std::string& path, int descriptor, std::int64_t offset,
                  std::int64_t length) {
  static auto* const truncate_it = Real<int(int, off_t)>("ftruncate");
  static auto* const reserve = Real<int(int, off_t, off_t)>("posix_fallocate");
  const std::int64_t before = LengthOf(descriptor);
  const Verdict verdict = Judge(Call::kReserve, 0, length);
  const std::int64_t part = verdict.part == Blow::kWhole ? length : std::min(verdict.part, length);
  if (verdict.part != Blow::kWhole && part > 0 && offset + part > before &&
      truncate_it(descriptor, offset + part) != 0) {
    return errno;
  }
  const int result =
      verdict.part == Blow::kWhole ? reserve(descriptor, offset, length) : verdict.error;
  if (result == 0 && TheArms().tape != nullptr) {
    TheArms().tape->Add({Call::kReserve, offset, offset + length, path, {}, {}});
  }
  if (verdict.die) Die();
  return result;
}

template <typename Open>
int StrikeOpen(const char* path, int flags, mode_t mode, Open run) {
  struct stat status {};
  if ((flags & O_CREAT) == 0 || !TheArms().armed || !IsBelow(path) || stat(path, &status) == 0) {
    return run(path, flags, mode);
  }
  int descriptor = -1;
  const int result = Strike({Call::kCreate, 0, 0, path, {}, {}}, [&] {
    descriptor = run(path, flags, mode);
    return descriptor < 0 ? -1 : 0;
  });
  return result == 0 ? descriptor : -1;
}

}  // namespace

void Arm(const std::string& folder, const Blow& blow, Tape* tape) {
  TheArms() = {.armed = true, .folder = folder, .blow = blow, .tape = tape};
}

void Disarm() { TheArms() = {}; }

}  // namespace tunemeadow::kill

// --- The calls -------------------------------------------------------------------------------

using namespace tunemeadow::kill;  // NOLINT: what follows must stand in the global namespace

// They and their parameters are named as in the C library, but for those of rename: "new" is a
// keyword.
extern "C" {

ssize_t pwrite(int fd, const void* buf, size_t n, off_t offset) {
  static auto* const real = Real<ssize_t(int, const void*, size_t, off_t)>("pwrite");
  const std::string path = WatchedPath(fd);
  if (path.empty()) return real(fd, buf, n, offset);
  return StrikeWrite(path, fd, buf, n, offset,
                     [&](size_t part) { return real(fd, buf, part, offset); });
}

ssize_t pwrite64(int fd, const void* buf, size_t n, off64_t offset) {
  return pwrite(fd, buf, n, offset);
}

ssize_t write(int fd, const void* buf, size_t n) {
  static auto* const real = Real<ssize_t(int, const void*, size_t)>("write");
  const std::string path = WatchedPath(fd);
  if (path.empty()) return real(fd, buf, n);
  const off_t offset = lseek(fd, 0, SEEK_CUR);
  return StrikeWrite(path, fd, buf, n, offset, [&](size_t part) { return real(fd, buf, part); });
}

int ftruncate(int fd, off_t length) noexcept {
  static auto* const real = Real<int(int, off_t)>("ftruncate");
  const std::string path = WatchedPath(fd);
  if (path.empty()) return real(fd, length);
  return Strike({Call::kTruncate, length, 0, path, {}, {}}, [&] { return real(fd, length); });
}

int ftruncate64(int fd, off64_t length) noexcept { return ftruncate(fd, length); }

int posix_fallocate(int fd, off_t offset, off_t len) {
  static auto* const real = Real<int(int, off_t, off_t)>("posix_fallocate");
  const std::string path = WatchedPath(fd);
  if (path.empty()) return real(fd, offset, len);
  return StrikeReserve(path, fd, offset, len);
}

int posix_fallocate64(int fd, off64_t offset, off64_t len) {
  return posix_fallocate(fd, offset, len);
}

int fsync(int fd) {
  static auto* const real = Real<int(int)>("fsync");
  const std::string path = WatchedPath(fd);
  if (path.empty()) return real(fd);
  return Strike({Call::kSync, 0, 0, path, {}, {}}, [] { return 0; });
}

int fdatasync(int fildes) {
  static auto* const real = Real<int(int)>("fdatasync");
  const std::string path = WatchedPath(fildes);
  if (path.empty()) return real(fildes);
  return Strike({Call::kSync, 0, 0, path, {}, {}}, [] { return 0; });
}

int syncfs(int fd) noexcept {
  static auto* const real = Real<int(int)>("syncfs");
  const std::string path = WatchedPath(fd);
  if (path.empty()) return real(fd);
  return Strike({Call::kSyncVolume, 0, 0, path, {}, {}}, [] { return 0; });
}

int Rename(const char* from, const char* to) noexcept __asm__("rename");
int Rename(const char* from, const char* to) noexcept {
  static auto* const real = Real<int(const char*, const char*)>("rename");
  if (!TheArms().armed || !IsBelow(from)) return real(from, to);
  return Strike({Call::kRename, 0, 0, from, to, {}}, [&] { return real(from, to); });
}

int unlink(const char* name) noexcept {
  static auto* const real = Real<int(const char*)>("unlink");
  if (!TheArms().armed || !IsBelow(name)) return real(name);
  return Strike({Call::kUnlink, 0, 0, name, {}, {}}, [&] { return real(name); });
}

int futimens(int fd, const struct timespec times[2]) noexcept {
  static auto* const real = Real<int(int, const struct timespec*)>("futimens");
  const std::string path = WatchedPath(fd);
  if (path.empty()) return real(fd, times);
  return Strike({Call::kTimes, 0, 0, path, {}, {}}, [&] { return real(fd, times); });
}

int open(const char* file, int oflag, ...) {
  static auto* const real = Real<int(const char*, int, ...)>("open");
  va_list rest;
  va_start(rest, oflag);
  const mode_t mode = (oflag & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  return StrikeOpen(file, oflag, mode,
                    [](const char* name, int how, mode_t bits) { return real(name, how, bits); });
}

int open64(const char* file, int oflag, ...) {
  va_list rest;
  va_start(rest, oflag);
  const mode_t mode = (oflag & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  return open(file, oflag, mode);
}

}  // extern "C"
