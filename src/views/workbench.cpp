// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/workbench.h"

#include <utility>

#include "core/database_care.h"

namespace tunemeadow {
namespace {

/// The texts of one column; none where the statement fails.
std::vector<std::string> NamesOf(Session& session, const char* statement, std::size_t column) {
  std::vector<std::string> names;
  try {
    session.command.CommandText = statement;
    const CellTable rows = session.command.Execute().GetRows();
    names.reserve(rows.RowCount());
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
      names.emplace_back(rows.Cell(row, column));
    }
  } catch (const DatabaseError&) {
    // A catalogue without the table has told so at the start.
  }
  return names;
}

/// Reads the names of playlists and archives, if the catalogue was written since. Whether it was.
bool ReadNames(Workbench& bench) {
  const std::int64_t written = bench.session.connection.WriteCount();
  if (bench.tree.names_read_at == written) return false;
  bench.tree.names_read_at = written;
  bench.tree.playlists =
      NamesOf(bench.session,
              "select count(uid),playlist FROM playlists group by playlist order by playlist", 1);
  bench.tree.archives = NamesOf(
      bench.session, "select cdarchive FROM cdarchives group by cdarchive order by cdarchive", 0);
  return true;
}

std::string DatabaseText(const Workbench& bench) {
  const std::int64_t all = bench.session.track_count;
  const auto shown = static_cast<std::int64_t>(bench.ListView1.RowCount());
  const bool narrowing = bench.search_ran && shown < all;
  return "Database [" + (narrowing ? std::to_string(shown) + "/" : std::string()) +
         std::to_string(all) + " Files]";
}

}  // namespace

void updatetreeview(Workbench& bench) {
  bool changed = ReadNames(bench);
  std::string text = DatabaseText(bench);
  changed |= text != bench.tree.database_text;
  bench.tree.database_text = std::move(text);
  if (changed) bench.Watcher().TreeChanged();
}

void UpdateTrackCount(Workbench& bench) {
  try {
    CountAllTracks(bench.session);
  } catch (const DatabaseError&) {
    // The node keeps the count of last time.
  }
  updatetreeview(bench);
}

}  // namespace tunemeadow
