// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/database_care.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <string_view>

#include "core/dates.h"
#include "core/durable_file.h"
#include "core/numbers.h"
#include "core/paths.h"
#include "core/statement.h"
#include "core/store_handle.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kJetString = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=";

constexpr std::array<std::string_view, 3> kTableProbes = {
    "Select [UId] , [Songname], [Artist], [genrereal], [quality], [location], [Year], [Album], "
    "[trackno], [Playtime], [Filesize], [Comment], [bpm], [preview], [lasttimeplayed], "
    "[Situation], [preference], [tempo], [Mood], [bios], [Lyrics], [hasPic], [composer], "
    "[CopyRight], [encodedby], [originalartist], [url],[hasid3v1],[hasid3v2] from mp3sTabelle "
    "where uid=1",
    "Select [UIDCDArchive],[CDArchive],[UID] from CDArchives where UIDCDArchive=1",
    "Select [UIDPLaylist],[Playlist],[UID],[position] from Playlists where UIDPLaylist=1"};

struct BackupFinisher {
  void operator()(sqlite3_backup* backup) const noexcept { sqlite3_backup_finish(backup); }
};

/// Copies every page as of one moment.
bool CopyPages(sqlite3* from, sqlite3* to) {
  const std::unique_ptr<sqlite3_backup, BackupFinisher> backup(
      sqlite3_backup_init(to, "main", from, "main"));
  return backup != nullptr && sqlite3_backup_step(backup.get(), -1) == SQLITE_DONE;
}

/// Makes the backup under a name of its own; every handle is closed at the end.
bool CopyAndCheck(const std::string& from, const std::string& to) {
  const StoreHandle source = OpenSoundStore(from);
  if (source == nullptr || !HasAllTables(source.get())) return false;
  const StoreHandle copy = OpenSoundStore(to, true);
  if (copy == nullptr) return false;
  // Nothing is lost with an unfinished copy: it needs neither a journal nor a sync of each step.
  RunPlain(copy.get(), "pragma journal_mode=off; pragma synchronous=off");
  return CopyPages(source.get(), copy.get()) &&
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

void DetermineConnection(Session& session) {
  Preferences& preferences = session.preferences;
  if (preferences.lblConfigDB.empty()) {
    preferences.lblConfigDB = JoinPath(session.program_folder, "mp3s.mdb");
  }
  if (!preferences.sConnString.empty()) {
    preferences.lblConfigDB = kOtherDatabase;
    session.connection_string = preferences.sConnString;
    session.quote = '\'';
    return;
  }
  session.connection_string = std::string(kJetString) + preferences.lblConfigDB;
  session.quote = '"';
}

bool MakeBackup(const std::string& database_path, const std::string& program_folder) {
  const std::string backup = JoinPath(program_folder, "mp3s.bak");
  const std::string unfinished = backup + ".new";
  RemoveUnfinished(unfinished);
  bool made = CopyAndCheck(database_path, unfinished) && SyncBackup(unfinished);
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

void CheckDatabase(Connection& connection, Interaction& interaction) {
  for (const std::string_view probe : kTableProbes) {
    try {
      connection.Execute(probe);
    } catch (const DatabaseError& error) {
      interaction.ShowMessage(
          {.text = std::string("Warning: Your database seems to be corrupt!\n\n") + error.what(),
           .title = "Error loading database!",
           .icon = Icon::kExclamation});
    }
  }
}

bool RefreshDemonstrationRow(Session& session, const std::string& monster_path) {
  if (!MyFileExists(monster_path)) return false;
  const std::string now = Now();
  const std::string statement = "Update MP3sTabelle set datetimeoffile='" +
                                FileTimeText(monster_path) + "',datetimeofdbinsert='" + now +
                                "',datetimeofdbupdate='" + now + "',location='" +
                                QuoteInner(monster_path, '\'') + "' where UID=1";
  try {
    session.connection.Execute(statement);
  } catch (const DatabaseError&) {
    return false;
  }
  return session.connection.Changes() == 1;
}

void CountAllTracks(Session& session) {
  const Recordset counted =
      session.connection.Execute("select count(uid) as countuid FROM mp3sTabelle");
  session.track_count = ParseWhole(counted.Fields("countuid")).value_or(0);
}

}  // namespace tunemeadow
