// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/store_handle.h"

#include <sqlite3.h>
#include <sys/stat.h>

namespace tunemeadow {

void StoreCloser::operator()(sqlite3* store) const noexcept { sqlite3_close_v2(store); }

void StatementFinalizer::operator()(sqlite3_stmt* statement) const noexcept {
  sqlite3_finalize(statement);
}

StoreHandle OpenStoreFile(const std::string& path, int& result, bool create) noexcept {
  sqlite3* store = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE |
                    (create ? SQLITE_OPEN_CREATE : 0);
  result = sqlite3_open_v2(path.c_str(), &store, flags, nullptr);
  if (store != nullptr) sqlite3_busy_timeout(store, kBusyWaitMilliseconds);
  return StoreHandle(store);
}

StoreHandle OpenSoundStore(const std::string& path, bool create) noexcept {
  struct stat status {};
  const bool there = stat(path.c_str(), &status) == 0;
  if (path.empty() || (there ? !S_ISREG(status.st_mode) : !create)) return nullptr;
  int result = SQLITE_OK;
  StoreHandle store = OpenStoreFile(path, result, create);
  if (result != SQLITE_OK) return nullptr;
  if (RunPlain(store.get(), "select 1 from sqlite_schema") != SQLITE_OK) return nullptr;
  return store;
}

int RunPlain(sqlite3* store, const char* sql) noexcept {
  return sqlite3_exec(store, sql, nullptr, nullptr, nullptr);
}

std::optional<std::string> FirstText(sqlite3* store, const char* sql) {
  sqlite3_stmt* prepared = nullptr;
  if (sqlite3_prepare_v2(store, sql, -1, &prepared, nullptr) != SQLITE_OK) return std::nullopt;
  const StatementHandle statement(prepared);
  const int result = sqlite3_step(prepared);
  if (result == SQLITE_DONE) return std::string();
  if (result != SQLITE_ROW) return std::nullopt;
  const unsigned char* const text = sqlite3_column_text(prepared, 0);
  return text == nullptr ? std::string() : std::string(reinterpret_cast<const char*>(text));
}

bool HasAllTables(sqlite3* store) {
  return FirstText(store,
                   "select count(*) from sqlite_schema where type='table' and "
                   "lower(name) in ('mp3stabelle','playlists','cdarchives')") == "3";
}

ReadTransaction::ReadTransaction(sqlite3* store) noexcept
    : store_(store), begun_(RunPlain(store, "begin; select 1 from sqlite_schema") == SQLITE_OK) {}

ReadTransaction::~ReadTransaction() { RunPlain(store_, "rollback"); }

bool LogIsEmpty(const std::string& path) {
  struct stat status {};
  return stat((path + "-wal").c_str(), &status) != 0 || status.st_size == 0;
}

bool JournalLiesBeside(const std::string& path) {
  struct stat status {};
  return stat((path + "-wal").c_str(), &status) == 0 ||
         stat((path + "-journal").c_str(), &status) == 0;
}

}  // namespace tunemeadow
