// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/database.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <algorithm>
#include <exception>
#include <new>
#include <string>

#include "core/paths.h"
#include "core/text.h"
#include "files/file_facts.h"
#include "store/statement.h"
#include "store/store_functions.h"
#include "store/store_handle.h"

namespace tunemeadow {
namespace {

constexpr int kStepsPerSignOfLife = 50000;  ///< of the store's machine: a few milliseconds
constexpr std::size_t kKeptStatements = 32;
constexpr std::size_t kLongestKeptStatement = 8192;  ///< lists of keys come once and are long

[[noreturn]] void ThrowStoreError(sqlite3* store) {
  throw DatabaseError(sqlite3_errcode(store), sqlite3_errmsg(store));
}

/// Gives a statement back: no lock is held and no text is bound afterwards. `running` counts the
/// statements under way.
class StatementUse {
 public:
  StatementUse(sqlite3_stmt* statement, int& running) noexcept
      : statement_(statement), running_(running) {
    ++running_;
  }
  ~StatementUse() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
    --running_;
  }
  StatementUse(const StatementUse&) = delete;
  StatementUse& operator=(const StatementUse&) = delete;

 private:
  sqlite3_stmt* statement_;
  int& running_;
};

/// The file that a connection string names. A ";" ends it, unless a file of the whole rest is
/// there.
std::string FileOfConnectionString(std::string_view text) {
  constexpr std::string_view kKey = "Data Source=";
  const std::size_t key = FindNoCase(text, kKey);
  if (key == std::string_view::npos) return std::string(text);
  const std::string rest(text.substr(key + kKey.size()));
  return MyFileExists(rest) ? rest : rest.substr(0, rest.find(';'));
}

/// A pipe or a device would hang the program, not fail.
void RequireRegularFile(const std::string& path) {
  struct stat status {};
  const bool there = stat(path.c_str(), &status) == 0;
  if (path.empty() || (there && !S_ISREG(status.st_mode))) {
    throw DatabaseError(SQLITE_CANTOPEN, "This is no database file: " + DisplayPath(path));
  }
}

StatementHandle PrepareStatement(sqlite3* store, std::string_view sql, unsigned flags) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v3(store, sql.data(), static_cast<int>(sql.size()), flags, &statement,
                         nullptr) != SQLITE_OK) {
    ThrowStoreError(store);
  }
  if (statement == nullptr) throw DatabaseError(SQLITE_ERROR, "The statement is empty.");
  return StatementHandle(statement);
}

/// Reads the schema, which is what shows whether the file is a database at all, and looks for one
/// of the tables of a catalogue. Which of them is missing is for CheckDatabase to say.
void RequireCatalogue(sqlite3* store, const std::string& path) {
  const StatementHandle probe =
      PrepareStatement(store,
                       "select 1 from sqlite_schema where type='table' and "
                       "lower(name) in ('mp3stabelle','playlists','cdarchives')",
                       0);
  const int result = sqlite3_step(probe.get());
  if (result == SQLITE_DONE) {
    throw DatabaseError(SQLITE_NOTADB, "This is not a catalogue: it has none of the tables.");
  }
  if (result != SQLITE_ROW) {
    throw DatabaseError(sqlite3_errcode(store),
                        std::string(sqlite3_errmsg(store)) + ": " + DisplayPath(path));
  }
}

void BindTexts(sqlite3* store, sqlite3_stmt* statement, const std::vector<std::string>& values) {
  int place = 0;
  for (const std::string& value : values) {
    if (sqlite3_bind_text64(statement, ++place, value.data(), value.size(), SQLITE_STATIC,
                            SQLITE_UTF8) != SQLITE_OK) {
      ThrowStoreError(store);
    }
  }
}

std::vector<std::string> ColumnNames(sqlite3_stmt* statement, int columns) {
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(columns));
  for (int column = 0; column < columns; ++column) {
    const char* const name = sqlite3_column_name(statement, column);
    names.emplace_back(name == nullptr ? "" : name);
  }
  return names;
}

/// Steps to the end and keeps every row.
CellTable FetchRows(sqlite3* store, sqlite3_stmt* statement, int columns) {
  CellTable rows(static_cast<std::size_t>(columns));
  std::vector<std::string_view> cells(static_cast<std::size_t>(columns));
  for (;;) {
    const int result = sqlite3_step(statement);
    if (result == SQLITE_DONE) return rows;
    if (result != SQLITE_ROW) ThrowStoreError(store);
    for (int column = 0; column < columns; ++column) {
      const unsigned char* const text = sqlite3_column_text(statement, column);
      cells[static_cast<std::size_t>(column)] =
          text == nullptr
              ? std::string_view()
              : std::string_view(reinterpret_cast<const char*>(text),
                                 static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
    }
    rows.AppendRow(cells);
  }
}

}  // namespace

struct Connection::State {
  struct Kept {
    std::string sql;
    StatementHandle statement;
  };

  StoreHandle store;
  std::vector<Kept> kept;  ///< the last used first; goes before the store
  int running = 0;         ///< above 1 only below a sign of life
  std::int64_t changes = 0;
  std::int64_t writes_at_open = 0;

  explicit State(StoreHandle handle) : store(std::move(handle)) { kept.reserve(kKeptStatements); }
  ~State() { kept.clear(); }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  sqlite3_stmt* Prepared(std::string sql);
  Recordset Run(const StoreStatement& translated, sqlite3_stmt* statement);
};

sqlite3_stmt* Connection::State::Prepared(std::string sql) {
  const auto found =
      std::find_if(kept.begin(), kept.end(), [&](const Kept& entry) { return entry.sql == sql; });
  if (found != kept.end()) {
    std::rotate(kept.begin(), found, found + 1);
    return kept.front().statement.get();
  }
  StatementHandle statement = PrepareStatement(store.get(), sql, SQLITE_PREPARE_PERSISTENT);
  if (kept.size() == kKeptStatements) kept.pop_back();
  kept.insert(kept.begin(), Kept{std::move(sql), std::move(statement)});
  return kept.front().statement.get();
}

Recordset Connection::State::Run(const StoreStatement& translated, sqlite3_stmt* statement) {
  const StatementUse use(statement, running);
  BindTexts(store.get(), statement, translated.values);
  const int columns = sqlite3_column_count(statement);
  CellTable rows = FetchRows(store.get(), statement, columns);
  if (sqlite3_stmt_readonly(statement) == 0) changes = sqlite3_changes64(store.get());
  return {std::move(rows), ColumnNames(statement, columns)};
}

std::string DatabaseError::WithStatement() const {
  return statement_.empty() ? what() : what() + ("\n" + ToValidUtf8(statement_));
}

std::string Recordset::Fields(std::string_view name) const {
  if (rows_.Empty()) return {};
  const auto found = std::find_if(names_.begin(), names_.end(), [&](const std::string& column) {
    return EqualsNoCase(column, name);
  });
  if (found == names_.end()) return {};
  return std::string(rows_.Cell(0, static_cast<std::size_t>(found - names_.begin())));
}

Connection::Connection() = default;

Connection::~Connection() { Close(); }

void Connection::Open(std::string_view connection_string) {
  Close();
  const std::string path = FileOfConnectionString(connection_string);
  RequireRegularFile(path);
  int result = SQLITE_OK;
  StoreHandle handle = OpenStoreFile(path, result);
  sqlite3* const store = handle.get();
  if (store == nullptr) throw DatabaseError(SQLITE_NOMEM, sqlite3_errstr(SQLITE_NOMEM));
  if (result != SQLITE_OK) {
    throw DatabaseError(result, std::string(sqlite3_errmsg(store)) + ": " + DisplayPath(path));
  }
  // A text in double quotes must never be taken for a name, nor a name for a text.
  sqlite3_db_config(store, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(store, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_db_config(store, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  if (RegisterStoreFunctions(store) != SQLITE_OK) ThrowStoreError(store);
  RequireCatalogue(store, path);
  // A file system without shared memory keeps the old kind of journal: slower, but as safe.
  RunPlain(store, "pragma journal_mode=wal");
  RunPlain(store, "pragma synchronous=full");
  durability_ = Durability::kFull;
  // Kilobytes. Measured on 100,000 rows: with less or with more the sort of a whole catalogue is
  // slower, and a search does not care.
  RunPlain(store, "pragma cache_size=-8000");
  state_ = std::make_unique<State>(std::move(handle));
  SetWorking(std::move(working_));
  state_->writes_at_open = sqlite3_total_changes64(store);
}

Recordset Connection::Execute(std::string_view statement) {
  try {
    return ExecuteInStore(statement);
  } catch (const DatabaseError& error) {
    throw DatabaseError(error.Number(), error.what(), statement);
  } catch (const std::bad_alloc&) {
    throw DatabaseError(SQLITE_NOMEM, sqlite3_errstr(SQLITE_NOMEM), statement);
  } catch (const std::length_error& error) {
    throw DatabaseError(SQLITE_TOOBIG, error.what(), statement);
  }
}

Recordset Connection::ExecuteInStore(std::string_view statement) {
  if (!state_) throw DatabaseError(SQLITE_MISUSE, "The database is not open.");
  StoreStatement translated = TranslateStatement(statement);
  State& state = *state_;
  sqlite3* const store = state.store.get();
  Recordset rows;
  // Below a sign of life the kept statements may be in use.
  if (translated.sql.size() > kLongestKeptStatement || state.running > 0) {
    const StatementHandle once = PrepareStatement(store, translated.sql, 0);
    rows = state.Run(translated, once.get());
  } else {
    rows = state.Run(translated, state.Prepared(std::move(translated.sql)));
  }
  if (sqlite3_get_autocommit(store) == 0) {
    RunPlain(store, "rollback");
    throw DatabaseError(SQLITE_MISUSE, "Each statement stands alone: there are no transactions.");
  }
  return rows;
}

void Connection::Close() noexcept {
  if (!state_) return;
  state_->kept.clear();
  sqlite3_wal_checkpoint_v2(state_->store.get(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr,
                            nullptr);
  state_.reset();  // the last one to close removes the log
}

bool Connection::IsOpen() const noexcept { return state_ != nullptr; }

std::int64_t Connection::Changes() const noexcept { return state_ ? state_->changes : 0; }

std::int64_t Connection::WriteCount() const noexcept {
  return state_ ? sqlite3_total_changes64(state_->store.get()) - state_->writes_at_open : 0;
}

std::int64_t Connection::LastInsertedKey() const noexcept {
  return state_ ? sqlite3_last_insert_rowid(state_->store.get()) : 0;
}

void Connection::SetDurability(Durability durability) noexcept {
  if (!state_ || durability == durability_) return;
  durability_ = durability;
  sqlite3* const store = state_->store.get();
  if (durability == Durability::kBatch) {
    RunPlain(store, "pragma synchronous=normal");
    return;
  }
  RunPlain(store, "pragma synchronous=full");
  // The checkpoint syncs the log before it moves anything.
  sqlite3_wal_checkpoint_v2(store, nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
}

void Connection::SetWorking(std::function<void()> callback) {
  working_ = std::move(callback);
  if (!state_) return;
  const auto call = [](void* connection) {
    static_cast<Connection*>(connection)->working_();
    return 0;
  };
  if (working_) {
    sqlite3_progress_handler(state_->store.get(), kStepsPerSignOfLife, call, this);
  } else {
    sqlite3_progress_handler(state_->store.get(), 0, nullptr, nullptr);
  }
}

}  // namespace tunemeadow
