// SPDX-License-Identifier: GPL-3.0-or-later
// The data-access layer as the commands see it, over SQLite. Statements are passed as text in the
// commands' own dialect (store/statement.h). Each Execute stands alone: no transaction is ever open
// between two of them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/cell_table.h"

struct sqlite3;

namespace tunemeadow {

/// What the store reports: what() is its description.
class DatabaseError : public std::runtime_error {
 public:
  DatabaseError(int number, const std::string& description, std::string_view statement = {})
      : std::runtime_error(description), number_(number), statement_(statement) {}

  /// The store's result code.
  [[nodiscard]] int Number() const noexcept { return number_; }

  /// The statement that failed, as it was passed to Execute; empty if the file could not be
  /// opened. It may hold the bytes of a path.
  [[nodiscard]] const std::string& Statement() const noexcept { return statement_; }

  /// For a box: the description and, on a line of its own, the statement, if there is one, as valid
  /// UTF-8.
  [[nodiscard]] std::string WithStatement() const;

 private:
  int number_;
  std::string statement_;
};

/// The rows of one select, fetched whole. A null is an empty text.
class Recordset {
 public:
  Recordset() = default;
  Recordset(CellTable rows, std::vector<std::string> names)
      : rows_(std::move(rows)), names_(std::move(names)) {}

  /// No row (left).
  [[nodiscard]] bool Eof() const noexcept { return rows_.Empty(); }

  /// All rows; the recordset is empty afterwards. Columns are those of the select, in its order.
  [[nodiscard]] CellTable GetRows() noexcept { return std::move(rows_); }

  /// Text of a column of the first row, its name matched without regard to case; empty if there
  /// is no such column or no row.
  [[nodiscard]] std::string Fields(std::string_view name) const;

 private:
  CellTable rows_;
  std::vector<std::string> names_;
};

/// How much of the disk's word a write waits for.
enum class Durability {
  kFull,   ///< synced: a person's single edit
  kBatch,  ///< not synced row by row; going back to kFull syncs what was written
};

/// One open catalogue. Not copyable; closed by its destructor.
class Connection {
 public:
  Connection();
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Opens the SQLite file that the connection string names: what follows "Data Source=" (to the
  /// next ";"), or the whole string. Never creates a file. Throws DatabaseError if the file is
  /// missing, is no database, or cannot be read; the connection is closed then.
  void Open(std::string_view connection_string);

  /// Runs one statement and fetches all its rows. Throws DatabaseError, which carries the
  /// statement; nothing is changed then.
  Recordset Execute(std::string_view statement);

  /// Closes the file; the write-ahead log is folded in and removed. Never fails; harmless twice.
  void Close() noexcept;

  [[nodiscard]] bool IsOpen() const noexcept;

  /// Rows that the last insert, update or delete touched: 0 after an insert that was ignored.
  [[nodiscard]] std::int64_t Changes() const noexcept;

  /// Rows touched since the file was opened; grows with every write and tells a cache its age.
  [[nodiscard]] std::int64_t WriteCount() const noexcept;

  /// The key that the last insert was given.
  [[nodiscard]] std::int64_t LastInsertedKey() const noexcept;

  /// kBatch for the time of a batch. Nothing happens where it is so already, or while the file is
  /// closed; an opened one is in kFull.
  void SetDurability(Durability durability) noexcept;
  [[nodiscard]] Durability CurrentDurability() const noexcept { return durability_; }

  /// Called every few milliseconds while a long statement runs, so that the window can paint. It
  /// must not run a statement itself. Empty: nobody is called.
  void SetWorking(std::function<void()> callback);

 private:
  struct State;
  Recordset ExecuteInStore(std::string_view statement);

  std::unique_ptr<State> state_;
  std::function<void()> working_;
  Durability durability_ = Durability::kFull;
};

}  // namespace tunemeadow
