// SPDX-License-Identifier: GPL-3.0-or-later
// What is done to the playlist that is open in ListView3.
#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "core/numbers.h"
#include "core/text.h"
#include "playback/catalogue_writing.h"
#include "playback/playlists.h"
#include "run/batch.h"
#include "store/statement.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

/// From here on the list is read again, which is quicker than taking rows out one by one.
constexpr std::size_t kRowsToSearchAnew = 20;

struct RowsToDelete {
  std::string uids;               ///< "3,17"
  std::vector<std::size_t> rows;  ///< those of these tracks, also where they stand again
};

RowsToDelete RowsOfSelectedTracks(const ResultList& list) {
  RowsToDelete found;
  std::unordered_set<std::int64_t> tracks;
  for (const std::size_t row : list.SelectedRows()) {
    const std::int64_t uid = list.Uid(row);
    if (!tracks.insert(uid).second) continue;
    if (!found.uids.empty()) found.uids += ',';
    found.uids += std::to_string(uid);
  }
  for (std::size_t row = 0; row < list.RowCount(); ++row) {
    if (tracks.contains(list.Uid(row))) found.rows.push_back(row);
  }
  return found;
}

void TakeRowsOut(Workbench& bench, const std::vector<std::size_t>& rows) {
  bench.Watcher().ListCleared();
  bench.ListView3.RemoveRows(rows);
  bench.Watcher().ListFilled();
}

/// The row that has come into the place of those that are gone.
void SelectFocusedRow(Workbench& bench) {
  ResultList& list = bench.ListView3;
  if (list.RowCount() == 0) return;
  const std::size_t row = list.FocusedRow().value_or(0);
  list.SelectOnly(row);
  list.SetFocusedRow(row);
  bench.Watcher().SelectionSet();
  ListView1_ItemClick(bench, row);
}

bool IsGone(Workbench& bench) {
  const std::vector<std::string> names = PlaylistNames(bench);
  return std::none_of(names.begin(), names.end(), [&](const std::string& name) {
    return EqualsNoCase(name, bench.current_playlist);
  });
}

}  // namespace

void LeavePlaylist(Workbench& bench) {
  bench.current_playlist.clear();
  ShowDatabase(bench);
}

void DeleteFromPlaylist(Workbench& bench) {
  const std::size_t count = bench.ListView3.SelectedCount();
  if (count == 0) {
    bench.interaction.ShowMessage({.text = "No Objects selected!", .icon = Icon::kInformation});
    return;
  }
  const Answer answer =
      bench.interaction.ShowMessage({.text = "Are you sure to delete " + std::to_string(count) +
                                             " item(s) of your selected playlist?",
                                     .title = "Delete",
                                     .icon = Icon::kExclamation,
                                     .buttons = Buttons::kYesNo});
  if (answer != Answer::kYes) return;
  bench.interaction.SetStatus("Prepare delete...");
  const RowsToDelete found = RowsOfSelectedTracks(bench.ListView3);
  std::optional<MessageBox> failure;
  {
    CatalogueWriting writing(bench);
    bench.interaction.SetStatus("Delete in progress...");
    try {
      writing.Run("delete from playlists where playlist=" + Quoted(bench.current_playlist, '"') +
                  " and UID in (" + found.uids + ")");
      if (count < kRowsToSearchAnew) TakeRowsOut(bench, found.rows);
    } catch (const DatabaseError& error) {
      failure = MessageBox{.text = error.what()};
    }
  }
  bench.interaction.SetStatus("Ready.");
  if (failure) {
    bench.interaction.ShowMessage(*failure);
    return;
  }
  if (count >= kRowsToSearchAnew) cmdSuchen(bench);
  ChangeDetailSaveNo(bench);
  if (bench.ListView3.RowCount() == 0 && IsGone(bench)) return LeavePlaylist(bench);
  SelectFocusedRow(bench);
  updatetreeview(bench);
}

bool ShowsWholePlaylist(Workbench& bench) {
  if (!bench.playlist_in_view) return false;
  try {
    const CellTable count =
        bench.session.connection
            .Execute("select count(*) FROM mp3sTabelle , playlists where playlists.playlist=" +
                     Quoted(bench.current_playlist, '\'') + " and playlists.uid=mp3sTabelle.uid")
            .GetRows();
    return !count.Empty() &&
           ParseWhole(count.Cell(0, 0)) == static_cast<std::int64_t>(bench.ListView3.RowCount());
  } catch (const DatabaseError&) {
    return false;
  }
}

void SavePlaylistOrder(Workbench& bench) {
  bench.interaction.SetStatus("Saving Playlist...");
  std::optional<MessageBox> failure;
  {
    CatalogueWriting writing(bench);
    bench.interaction.Yield();
    const std::string tail = " and Playlist=" + Quoted(bench.current_playlist, '\'');
    const ResultList& list = bench.ListView3;
    try {
      for (std::size_t row = 0; row < list.RowCount(); ++row) {
        writing.Run("Update Playlists set [position]=" + std::to_string(row + 1) +
                    " where UID=" + std::to_string(list.Uid(row)) + tail);
      }
    } catch (const DatabaseError& error) {
      failure = MessageBox{.text = error.what(), .title = "Error!"};
    }
  }
  bench.interaction.SetStatus("Ready.");
  if (failure) bench.interaction.ShowMessage(*failure);
}

std::optional<std::size_t> RowToOrder(const ResultList& list) noexcept {
  const auto focused = list.FocusedRow();
  if (focused && list.IsSelected(*focused)) return focused;
  for (std::size_t row = 0; row < list.RowCount() && list.SelectedCount() > 0; ++row) {
    if (list.IsSelected(row)) return row;
  }
  return std::nullopt;
}

void MoveSelectedPlaylistRows(Workbench& bench, std::size_t before) {
  ResultList& list = bench.ListView3;
  if (list.SelectedCount() == 0 || !ShowsWholePlaylist(bench)) return;
  bool moved = false;
  std::size_t passed = 0;  // rows that stood above the place and went up by one each time
  for (const std::size_t row : list.SelectedRows()) {
    const bool from_above = row < before;
    const std::size_t from = from_above ? row - passed : row;
    const std::size_t to = from_above ? before - 1 : before++;
    passed += from_above ? 1 : 0;
    moved |= from != to;
    list.MoveRow(from, to);
  }
  if (!moved) return;
  bench.Watcher().OrderChanged();
  SavePlaylistOrder(bench);
}

void MovePlaylistRow(Workbench& bench, std::size_t from, std::size_t to) {
  ResultList& list = bench.ListView3;
  if (from >= list.RowCount() || to >= list.RowCount() || from == to) return;
  if (!ShowsWholePlaylist(bench)) return;
  list.MoveRow(from, to);
  list.SelectOnly(to);
  list.SetFocusedRow(to);
  bench.Watcher().OrderChanged();
  SavePlaylistOrder(bench);
}

}  // namespace tunemeadow
