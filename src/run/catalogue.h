// SPDX-License-Identifier: GPL-3.0-or-later
// What the start settles of the catalogue: where it lies, its first checks.
#pragma once

#include <string>

#include "run/interaction.h"
#include "run/session.h"
#include "store/database.h"

namespace tunemeadow {

/// The catalogue of the program's own folder, which an empty `lblConfigDB` means.
[[nodiscard]] std::string StandardCatalogue(const Session& session);

/// `lblConfigDB` as it is stored: the standard one as an empty text, so that a program folder that
/// is copied to another place opens the catalogue that came along.
[[nodiscard]] std::string StoredCatalogue(const Session& session, const std::string& database);

/// Settles connection string and quote character of the session. A stored `sConnString` is the
/// string as it stands, with texts in single quotes, and `lblConfigDB` becomes "andere". Otherwise
/// the string names `lblConfigDB`, which is `mp3s.mdb` of the program's folder where it is empty,
/// and texts stand in double quotes.
void DetermineConnection(Session& session);

/// Probes the three tables and each column that a search reads. Every probe that fails shows the
/// box "Error loading database!" and the next one runs; the program goes on whatever they found.
void CheckDatabase(Connection& connection, Interaction& interaction);

/// Points the demonstration row (key 1) to its file at `monster_path` and stamps its times. Nothing
/// happens if there is no such file, nor where the row is a track of the person's own: it names
/// a file that is there, or one of another name. False also where the store refused; nobody is
/// told, a broken table was reported by CheckDatabase.
bool RefreshDemonstrationRow(Session& session, const std::string& monster_path);

/// Counts all tracks into `track_count`. Throws DatabaseError.
void CountAllTracks(Session& session);

}  // namespace tunemeadow
