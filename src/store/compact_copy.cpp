// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/compact_copy.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "core/numbers.h"
#include "core/paths.h"
#include "files/descriptor.h"
#include "files/durable_file.h"
#include "files/file_facts.h"
#include "store/store_handle.h"

namespace tunemeadow {
namespace {

std::string StoreMessage(sqlite3* store) {
  return store == nullptr ? sqlite3_errstr(SQLITE_NOMEM) : sqlite3_errmsg(store);
}

std::string SystemMessage(const std::string& path) {
  return DisplayPath(path) + ": " + std::strerror(errno);
}

constexpr const char* kBeingWritten = "The catalogue is being written to.";

/// VACUUM INTO on a connection of its own, which a transaction would forbid.
std::string VacuumInto(const std::string& source, const std::string& output) {
  const StoreHandle store = OpenSoundStore(source);
  if (store == nullptr) return "The catalogue cannot be read.";
  sqlite3_stmt* prepared = nullptr;
  if (sqlite3_prepare_v2(store.get(), "vacuum into ?", -1, &prepared, nullptr) != SQLITE_OK) {
    return StoreMessage(store.get());
  }
  const StatementHandle vacuum(prepared);
  sqlite3_bind_text64(prepared, 1, output.data(), output.size(), SQLITE_STATIC, SQLITE_UTF8);
  return sqlite3_step(prepared) == SQLITE_DONE ? "" : StoreMessage(store.get());
}

/// Checks the copy and writes its origin into it.
std::string FinishCopy(const std::string& copy, const FileOrigin& origin) {
  const StoreHandle store = OpenSoundStore(copy);
  if (store == nullptr) return "The copy cannot be read.";
  if (FirstText(store.get(), "pragma integrity_check(1)") != "ok") return "The copy is damaged.";
  const std::string record =
      "drop table if exists compact_origin;"
      "create table compact_origin (bytes integer, checksum integer);"
      "insert into compact_origin values (" +
      std::to_string(origin.bytes) + "," + std::to_string(origin.checksum) + ")";
  if (RunPlain(store.get(), record.c_str()) != SQLITE_OK) return StoreMessage(store.get());
  return "";
}

/// Fills the empty file `copy` from the catalogue; `time` becomes its modification time as of then.
std::string CopyUnchanged(const std::string& source, const std::string& copy, timespec& time) {
  const StoreHandle store = OpenSoundStore(source);
  if (store == nullptr) return "The catalogue cannot be read: " + DisplayPath(source);
  sqlite3_wal_checkpoint_v2(store.get(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
  const ReadTransaction reading(store.get());
  struct stat status {};
  if (!reading.Begun() || stat(source.c_str(), &status) != 0) return StoreMessage(store.get());
  time = status.st_mtim;
  const std::optional<FileOrigin> origin = OriginOf(store.get());
  if (!origin) return "The catalogue cannot be read to its end.";
  std::string failure = VacuumInto(source, copy);
  // A write meanwhile would stand in the log, and may be in the copy or not.
  if (failure.empty() && !LogIsEmpty(source)) failure = kBeingWritten;
  return failure.empty() ? FinishCopy(copy, *origin) : failure;
}

bool SameFile(const std::string& one, const std::string& other) noexcept {
  struct stat left {};
  struct stat right {};
  return stat(one.c_str(), &left) == 0 && stat(other.c_str(), &right) == 0 &&
         left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

/// The origin that a copy carries; nullopt for none.
std::optional<FileOrigin> RecordedOrigin(sqlite3* copy) {
  const auto bytes = FirstText(copy, "select bytes from compact_origin");
  const auto checksum = FirstText(copy, "select checksum from compact_origin");
  if (!bytes || !checksum) return std::nullopt;
  return FileOrigin{ParseWhole(*bytes).value_or(-1), ParseWhole(*checksum).value_or(-1)};
}

/// What the recovery of the catalogue found.
struct CatalogueState {
  FileOrigin origin;
  timespec modified{};
};

/// Folds in what a crash left and looks at the file. nullopt if it is not to be touched.
std::optional<CatalogueState> RecoverCatalogue(const std::string& path) {
  const std::optional<FileOrigin> origin = OriginOfCatalogue(path);
  struct stat status {};
  if (!origin || JournalLiesBeside(path) || stat(path.c_str(), &status) != 0) return std::nullopt;
  return CatalogueState{*origin, status.st_mtim};
}

bool IsOlder(const timespec& one, const timespec& other) noexcept {
  return one.tv_sec != other.tv_sec ? one.tv_sec < other.tv_sec : one.tv_nsec < other.tv_nsec;
}

enum class Verdict { kRefused, kMadeOfIt, kFromElsewhere };

/// Whether the copy is a sound catalogue that holds all that `state` does.
Verdict JudgeCopy(const std::string& compact, const CatalogueState& state) {
  struct stat status {};
  if (stat(compact.c_str(), &status) != 0) return Verdict::kRefused;
  const StoreHandle store = OpenSoundStore(compact);
  if (store == nullptr || !HasAllTables(store.get())) return Verdict::kRefused;
  const auto origin = RecordedOrigin(store.get());
  if (origin ? *origin != state.origin : IsOlder(status.st_mtim, state.modified)) {
    return Verdict::kRefused;
  }
  if (FirstText(store.get(), "pragma quick_check(1)") != "ok") return Verdict::kRefused;
  return origin ? Verdict::kMadeOfIt : Verdict::kFromElsewhere;
}

bool CopyBytes(int from, int to) {
  std::vector<char> block(std::size_t{1} << 20);
  for (;;) {
    ssize_t got = read(from, block.data(), block.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return got == 0;
    for (const char* at = block.data(); got > 0;) {
      const ssize_t written = write(to, at, static_cast<std::size_t>(got));
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return false;
      at += written;
      got -= written;
    }
  }
}

/// Copies the bytes to a new file with the owner and the permissions of `like`.
bool CopyBeside(const std::string& from, const std::string& to, const std::string& like) {
  unlink(to.c_str());
  const Descriptor source(open(from.c_str(), O_RDONLY | O_CLOEXEC));
  const Descriptor target(open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
  struct stat status {};
  if (!source.IsOpen() || !target.IsOpen() || stat(like.c_str(), &status) != 0) return false;
  // Only root may give a file away; anyone else owns both.
  if (fchown(target.get(), status.st_uid, status.st_gid) != 0) errno = 0;
  return fchmod(target.get(), status.st_mode & 07777) == 0 && CopyBytes(source.get(), target.get());
}

/// Takes the origin out, which belongs to the copy, and checks what is about to be the catalogue.
bool MakeCatalogueOf(const std::string& path) {
  const StoreHandle store = OpenSoundStore(path);
  return store != nullptr &&
         RunPlain(store.get(), "drop table if exists compact_origin; pragma journal_mode=wal") ==
             SQLITE_OK &&
         HasAllTables(store.get()) && FirstText(store.get(), "pragma quick_check(1)") == "ok";
}

bool SyncFile(const std::string& path) noexcept {
  const Descriptor file(open(path.c_str(), O_RDWR | O_CLOEXEC));
  return file.IsOpen() && fsync(file.get()) == 0;
}

void RemoveStoreFile(const std::string& path) {
  for (const char* end : {"", "-wal", "-shm", "-journal"}) unlink((path + end).c_str());
}

std::string CompactCopyOf(const std::string& program_folder) {
  return JoinPath(program_folder, "compact.mdb");
}

constexpr std::int64_t kLeastGain = 20;  ///< a copy must save the twentieth part of the catalogue

std::string RealPath(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr),
                                                         &std::free);
  return real == nullptr ? std::string() : std::string(real.get());
}

}  // namespace

std::string MakeCompactCopy(const std::string& source, const std::string& output) {
  if (SameFile(source, output)) return "The copy would replace the catalogue itself.";
  const std::string copy = output + ".part";
  // Locked as long as this run lasts: what a killed one left is taken, what another one makes is
  // not.
  const Descriptor owned(open(copy.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666));
  if (!owned.IsOpen()) return SystemMessage(copy);
  if (flock(owned.get(), LOCK_EX | LOCK_NB) != 0) return "Another copy is being made.";
  unlink((copy + "-journal").c_str());
  timespec time{};
  std::string failure =
      ftruncate(owned.get(), 0) == 0 ? CopyUnchanged(source, copy, time) : SystemMessage(copy);
  const std::array<timespec, 2> times = {time, time};
  if (failure.empty() && (fsync(owned.get()) != 0 || futimens(owned.get(), times.data()) != 0 ||
                          rename(copy.c_str(), output.c_str()) != 0)) {
    failure = SystemMessage(output);
  }
  if (failure.empty()) {
    SyncFolderOf(output);
  } else {
    RemoveStoreFile(copy);
  }
  return failure;
}

bool RemoveUselessCopy(const FileOrigin& catalogue, const std::string& program_folder) {
  const std::string compact = CompactCopyOf(program_folder);
  {
    struct stat status {};
    if (stat(compact.c_str(), &status) != 0) return false;
    if (catalogue.bytes - status.st_size > catalogue.bytes / kLeastGain) return false;
    const StoreHandle store = OpenSoundStore(compact);
    if (store == nullptr || RecordedOrigin(store.get()) != catalogue) return false;
  }
  RemoveStoreFile(compact);
  return true;
}

std::optional<TakenOver> TakeOverCompactCopy(const std::string& database_path,
                                             const std::string& program_folder) {
  const std::string compact = CompactCopyOf(program_folder);
  const std::string catalogue = RealPath(database_path);
  if (!MyFileExists(compact) || catalogue.empty() || SameFile(compact, catalogue))
    return std::nullopt;
  const std::optional<CatalogueState> state = RecoverCatalogue(catalogue);
  if (!state) return std::nullopt;
  const Verdict verdict = JudgeCopy(compact, *state);
  if (verdict == Verdict::kRefused) {
    RemoveStoreFile(compact);
    return std::nullopt;
  }
  const std::string beside = catalogue + ".compact";
  RemoveStoreFile(beside);
  const bool taken = CopyBeside(compact, beside, catalogue) && MakeCatalogueOf(beside) &&
                     !JournalLiesBeside(beside) && SyncFile(beside) &&
                     rename(beside.c_str(), catalogue.c_str()) == 0;
  if (!taken) {
    RemoveStoreFile(beside);
    return std::nullopt;
  }
  SyncFolderOf(catalogue);
  RemoveStoreFile(compact);
  SyncFolderOf(compact);
  TakenOver result{.before = std::nullopt, .after = OriginOfFile(catalogue)};
  if (verdict == Verdict::kMadeOfIt) result.before = state->origin;
  return result;
}

}  // namespace tunemeadow
