// SPDX-License-Identifier: GPL-3.0-or-later
// Handles of the store that give themselves back, for the code that speaks to SQLite itself.
// A file that is open through one of these must not be opened by other means in this process:
// closing it there would drop the locks that SQLite holds on it.
#pragma once

#include <memory>
#include <optional>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace tunemeadow {

struct StoreCloser {
  void operator()(sqlite3* store) const noexcept;
};
struct StatementFinalizer {
  void operator()(sqlite3_stmt* statement) const noexcept;
};
using StoreHandle = std::unique_ptr<sqlite3, StoreCloser>;
using StatementHandle = std::unique_ptr<sqlite3_stmt, StatementFinalizer>;

/// How long a statement waits for another process, in milliseconds.
inline constexpr int kBusyWaitMilliseconds = 3000;

/// Opens a database for reading and writing, or where `create` is set makes it. `result` is
/// SQLite's code. Null only where memory is short: after any other failure the handle describes it.
/// The file itself is looked at by the first statement.
[[nodiscard]] StoreHandle OpenStoreFile(const std::string& path, int& result,
                                        bool create = false) noexcept;

/// OpenStoreFile, and the first look: a log that a crash left is folded in. Null where that failed.
[[nodiscard]] StoreHandle OpenSoundStore(const std::string& path, bool create = false) noexcept;

/// Runs statements that return nothing of use; SQLite's code.
int RunPlain(sqlite3* store, const char* sql) noexcept;

/// First column of the first row as text, "" for none and for a null; nullopt if it failed.
[[nodiscard]] std::optional<std::string> FirstText(sqlite3* store, const char* sql);

/// Whether all three tables of a catalogue are there.
[[nodiscard]] bool HasAllTables(sqlite3* store);

/// A read transaction of a store; it ends with the scope.
class ReadTransaction {
 public:
  explicit ReadTransaction(sqlite3* store) noexcept;
  ~ReadTransaction();
  ReadTransaction(const ReadTransaction&) = delete;
  ReadTransaction& operator=(const ReadTransaction&) = delete;
  [[nodiscard]] bool Begun() const noexcept { return begun_; }

 private:
  sqlite3* store_;
  bool begun_;
};

/// Whether everything that was written stands in the file itself. The transaction of a reader that
/// was begun before keeps it so: what is written from then on stays in the log.
[[nodiscard]] bool LogIsEmpty(const std::string& path);

/// Whether a journal or a log lies beside the file: its bytes alone may not be the whole of it
/// then.
[[nodiscard]] bool JournalLiesBeside(const std::string& path);

}  // namespace tunemeadow
