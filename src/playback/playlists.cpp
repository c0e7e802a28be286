// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/playlists.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <vector>

#include "core/numbers.h"
#include "core/text.h"
#include "playback/catalogue_writing.h"
#include "store/statement.h"
#include "views/sort_keys.h"

namespace tunemeadow {
namespace {

std::string CutName(std::string_view name) { return std::string(Left(name, kLongestPlaylistName)); }

/// "Playlist 7"; each proposal raises the number.
std::string NextName(Workbench& bench) {
  std::string name = "Playlist " + std::to_string(bench.PlaylistCounter);
  const bool last = bench.PlaylistCounter == std::numeric_limits<std::int16_t>::max();
  bench.PlaylistCounter =
      last ? std::int16_t{1} : static_cast<std::int16_t>(bench.PlaylistCounter + 1);
  return name;
}

/// The next name that no playlist has.
std::string ProposedName(Workbench& bench) {
  const std::vector<std::string> taken = PlaylistNames(bench);
  const auto is_taken = [&taken](const std::string& name) {
    return std::any_of(taken.begin(), taken.end(),
                       [&](const std::string& each) { return EqualsNoCase(each, name); });
  };
  std::string name = NextName(bench);
  for (std::size_t tries = taken.size(); tries > 0 && is_taken(name); --tries) {
    name = NextName(bench);
  }
  return name;
}

/// Empty if the person cancels.
std::string AskPlaylistName(Workbench& bench, const std::string& prompt, const std::string& title) {
  const auto name = bench.interaction.AskText(prompt, title, ProposedName(bench));
  return name ? CutName(*name) : std::string();
}

std::vector<std::string> SelectedUids(const ResultList& list) {
  std::vector<std::string> uids;
  uids.reserve(list.SelectedCount());
  for (const std::size_t row : list.SelectedRows()) {
    uids.push_back(std::to_string(list.Uid(row)));
  }
  return uids;
}

/// Runs the statements of `count` rows. Tells of the first that fails, and ends there. How many
/// were written.
template <typename StatementOfRow>
std::size_t WritePlaylistRows(Workbench& bench, std::size_t count, StatementOfRow statement_of) {
  std::optional<MessageBox> failure;
  std::size_t written = 0;
  {
    CatalogueWriting writing(bench);
    for (std::size_t i = 0; i < count && !failure; ++i) {
      try {
        writing.Run(statement_of(i));
        ++written;
      } catch (const DatabaseError& error) {
        failure = MessageBox{.text = error.WithStatement()};
      }
    }
  }
  if (failure) bench.interaction.ShowMessage(*failure);
  return written;
}

/// Runs one statement; false, with its box, where the store refuses it.
bool ChangePlaylists(Workbench& bench, const std::string& statement) {
  try {
    bench.session.connection.Execute(statement);
    return true;
  } catch (const DatabaseError& error) {
    bench.interaction.ShowMessage({.text = error.what()});
    return false;
  }
}

bool PlaylistExists(Workbench& bench, const std::string& name) {
  try {
    return !bench.session.connection
                .Execute("select playlist FROM playlists where playlist=" + Quoted(name, '"') +
                         " group by playlist")
                .Eof();
  } catch (const DatabaseError&) {
    return false;  // the change itself will tell
  }
}

/// Two names that the store takes for one.
bool IsOpen(const Workbench& bench, const std::string& name) {
  return bench.playlist_in_view && EqualsNoCase(bench.current_playlist, name);
}

/// Shows what was written: the rows of the open list where it was `name`, the tree in any case.
void ShowWritten(Workbench& bench, const std::string& name) {
  if (IsOpen(bench, name)) {
    cmdSuchen(bench);
  } else {
    updatetreeview(bench);
  }
}

void TellWritten(Workbench& bench, std::size_t tracks, const std::string& name) {
  bench.interaction.SetStatus(std::to_string(tracks) + (tracks == 1 ? " track" : " tracks") +
                              " added to the playlist \"" + name + "\".");
}

const std::string* PlaylistOfTree(const Workbench& bench) {
  const TreeSelection& node = bench.tree.selected;
  return node.kind == NodeKind::kPlaylist ? &node.name : nullptr;
}

}  // namespace

void mnuPlaylistSave_Click(Workbench& bench, const std::string& target_name) {
  std::string name = CutName(target_name);
  if (name.empty()) name = AskPlaylistName(bench, "Playlist Name?", std::string(kProgramTitle));
  if (name.empty()) return;
  const std::string head =
      "insert into playlists (Playlist,uid) values (" + Quoted(name, '"') + ",";
  const std::vector<std::string> uids = SelectedUids(bench.ListInView());
  const std::size_t written =
      WritePlaylistRows(bench, uids.size(), [&](std::size_t i) { return head + uids[i] + ")"; });
  ShowWritten(bench, name);
  TellWritten(bench, written, name);
}

void mnuPlaylistAddItems_Click(Workbench& bench, const std::string& chosen) {
  if (!chosen.empty()) mnuPlaylistSave_Click(bench, chosen);
}

std::vector<std::string> PlaylistNames(Workbench& bench) {
  std::vector<std::string> names;
  try {
    const CellTable rows =
        bench.session.connection
            .Execute("select playlist FROM playlists group by playlist order by playlist")
            .GetRows();
    names = SortedTexts(rows.RowCount(), [&](std::uint32_t row) { return rows.Cell(row, 0); });
  } catch (const DatabaseError&) {
    // A catalogue without the table has told so at the start.
  }
  return names;
}

void mnuToolsRandomPlaylist_Click(Workbench& bench) {
  const std::vector<std::string> uids = SelectedUids(bench.ListInView());
  if (uids.empty()) {
    bench.interaction.ShowMessage({.text = "You view is empty!"});
    return;
  }
  const std::string name =
      AskPlaylistName(bench, std::to_string(uids.size()) + " items selected.", "Playlist Name?");
  if (name.empty()) return;
  std::mt19937_64 generator(
      static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count()));
  const std::size_t rows = bench.ListInView().RowCount();
  std::uniform_int_distribution<std::size_t> position(0, rows - 1);
  const std::string head =
      "insert into playlists (Playlist,uid,[position]) values (" + Quoted(name, '"') + ",";
  const std::size_t written = WritePlaylistRows(bench, uids.size(), [&](std::size_t i) {
    return head + uids[i] + "," + std::to_string(position(generator)) + ")";
  });
  ShowWritten(bench, name);
  TellWritten(bench, written, name);
}

void mnuPlaylistDelete_Click(Workbench& bench) {
  const std::string* const node = PlaylistOfTree(bench);
  if (node == nullptr) return;
  const std::string name = *node;
  const Answer answer = bench.interaction.ShowMessage(
      {.text = "Are you sure to delete playlist \"" + name + "\"?", .buttons = Buttons::kYesNo});
  if (answer != Answer::kYes) return;
  if (ChangePlaylists(bench, "delete from playlists where playlist=" + Quoted(name, '"'))) {
    bench.tree.selected = {.kind = NodeKind::kPlaylists, .key = "ROOTPlaylist"};
    if (IsOpen(bench, name)) LeavePlaylist(bench);
  }
  updatetreeview(bench);
}

void mnuPlaylistUmbenennen_Click(Workbench& bench) {
  const std::string* const node = PlaylistOfTree(bench);
  if (node == nullptr) return;
  const std::string old_name = *node;
  const std::string name = CutName(
      bench.interaction.AskText("Neuer Name:", "Playliste name umbenennen", old_name).value_or(""));
  if (name.empty() || name == old_name) return;
  const bool merges = !EqualsNoCase(name, old_name) && PlaylistExists(bench, name);
  if (merges) {
    const Answer answer = bench.interaction.ShowMessage(
        {.text = "There is a playlist \"" + name +
                 "\" already.\nMake one playlist of both? They cannot be parted again.",
         .icon = Icon::kExclamation,
         .buttons = Buttons::kYesNo});
    if (answer != Answer::kYes) return;
  }
  if (ChangePlaylists(bench, "Update playlists set playlist=" + Quoted(name, '"') +
                                 " where playlist=" + Quoted(old_name, '"'))) {
    if (EqualsNoCase(bench.current_playlist, old_name)) bench.current_playlist = name;
    bench.tree.selected.name = name;
    if (merges) return ShowWritten(bench, name);
  }
  updatetreeview(bench);
}

}  // namespace tunemeadow
