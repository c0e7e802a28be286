// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/backup.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "core/paths.h"
#include "files/durable_file.h"
#include "store/store_handle.h"

namespace tunemeadow {
namespace {

struct BackupFinisher {
  void operator()(sqlite3_backup* backup) const noexcept { sqlite3_backup_finish(backup); }
};

constexpr int kPagesPerStep = 4096;

using Progress = std::function<void(int percent)>;

/// Copies every page as of one moment, which the caller's read transaction holds.
bool CopyPages(sqlite3* from, sqlite3* to, const Progress& progress) {
  const std::unique_ptr<sqlite3_backup, BackupFinisher> backup(
      sqlite3_backup_init(to, "main", from, "main"));
  if (backup == nullptr) return false;
  for (;;) {
    const int result = sqlite3_backup_step(backup.get(), kPagesPerStep);
    if (result != SQLITE_OK) return result == SQLITE_DONE;
    const std::int64_t pages = sqlite3_backup_pagecount(backup.get());
    const std::int64_t left = sqlite3_backup_remaining(backup.get());
    if (progress && pages > 0) progress(static_cast<int>(100 * (pages - left) / pages));
  }
}

/// Makes the backup under a name of its own; every handle is closed at the end.
bool CopyAndCheck(const std::string& from, const std::string& to, const Progress& progress) {
  const StoreHandle source = OpenSoundStore(from);
  if (source == nullptr || !HasAllTables(source.get())) return false;
  const StoreHandle copy = OpenSoundStore(to, true);
  if (copy == nullptr) return false;
  // Nothing is lost with an unfinished copy: it needs neither a journal nor a sync of each step.
  RunPlain(copy.get(), "pragma journal_mode=off; pragma synchronous=off");
  const ReadTransaction reading(source.get());
  return reading.Begun() && CopyPages(source.get(), copy.get(), progress) &&
         FirstText(copy.get(), "pragma quick_check(1)") == "ok";
}

bool SyncBackup(const std::string& path) noexcept {
  const int file = open(path.c_str(), O_RDWR | O_CLOEXEC);
  if (file < 0) return false;
  const bool synced = fsync(file) == 0;
  return close(file) == 0 && synced;
}

void RemoveJournals(const std::string& path) {
  for (const char* end : {"-wal", "-shm", "-journal"}) unlink((path + end).c_str());
}

void RemoveUnfinished(const std::string& path) {
  unlink(path.c_str());
  RemoveJournals(path);
}

}  // namespace

bool MakeBackup(const std::string& database_path, const std::string& program_folder,
                const Progress& progress) {
  const std::string backup = JoinPath(program_folder, kBackupName);
  const std::string unfinished = backup + ".new";
  RemoveUnfinished(unfinished);
  bool made = CopyAndCheck(database_path, unfinished, progress) && SyncBackup(unfinished);
  if (made) {
    RemoveJournals(backup);  // of somebody's look into the old one: it would be rolled into the new
    made = std::rename(unfinished.c_str(), backup.c_str()) == 0;
  }
  if (made) {
    SyncFolderOf(backup);
  } else {
    RemoveUnfinished(unfinished);
  }
  return made;
}

}  // namespace tunemeadow
