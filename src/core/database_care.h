// SPDX-License-Identifier: GPL-3.0-or-later
// What the start does for the catalogue: where it lies, its backup, its first checks.
#pragma once

#include <string>

#include "core/compact_copy.h"
#include "core/database.h"
#include "core/interaction.h"
#include "core/session.h"

namespace tunemeadow {

/// Settles connection string and quote character of the session. A stored `sConnString` is the
/// string as it stands, with texts in single quotes, and `lblConfigDB` becomes "andere". Otherwise
/// the string names `lblConfigDB`, which is `mp3s.mdb` of the program's folder where it is empty,
/// and texts stand in double quotes.
void DetermineConnection(Session& session);

/// Copies the catalogue to `mp3s.bak` of the program's folder, log included. The old backup stays
/// until the new one is whole, checked and synced. False where that failed; nobody is told, and the
/// old backup is as it was: a damaged catalogue never takes the place of a sound backup.
bool MakeBackup(const std::string& database_path, const std::string& program_folder);

/// Probes the three tables and each column that a search reads. Every probe that fails shows the
/// box "Error loading database!" and the next one runs; the program goes on whatever they found.
void CheckDatabase(Connection& connection, Interaction& interaction);

/// Points the demonstration row (key 1) to its file at `monster_path` and stamps its times. Nothing
/// happens where there is no such file: the row may be a track of the person's own then. False also
/// where the store refused; nobody is told, a broken table was reported by CheckDatabase.
bool RefreshDemonstrationRow(Session& session, const std::string& monster_path);

/// Counts all tracks into `track_count`. Throws DatabaseError.
void CountAllTracks(Session& session);

}  // namespace tunemeadow
