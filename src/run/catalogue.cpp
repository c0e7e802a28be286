// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/catalogue.h"

#include <array>
#include <string_view>

#include "core/dates.h"
#include "core/numbers.h"
#include "core/paths.h"
#include "files/file_facts.h"
#include "store/statement.h"

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

/// Whether row 1 is still the track that the catalogue came with.
bool IsDemonstrationRow(Session& session, const std::string& monster_path) {
  const std::string location =
      session.connection.Execute("select location from mp3sTabelle where UID=1").Fields("location");
  if (FileNamePart(location) != FileNamePart(monster_path)) return false;
  return FolderPart(location).empty() || location == monster_path || !MyFileExists(location);
}

}  // namespace

std::string StandardCatalogue(const Session& session) {
  return JoinPath(session.program_folder, "mp3s.mdb");
}

std::string StoredCatalogue(const Session& session, const std::string& database) {
  return database == StandardCatalogue(session) ? std::string() : database;
}

void DetermineConnection(Session& session) {
  Preferences& preferences = session.preferences;
  if (preferences.lblConfigDB.empty()) {
    preferences.lblConfigDB = StandardCatalogue(session);
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
    if (!IsDemonstrationRow(session, monster_path)) return false;
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
