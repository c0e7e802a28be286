// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/quick_search.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <string_view>
#include <utility>

#include "core/numbers.h"
#include "run/busy.h"
#include "store/database.h"
#include "views/paint_while_working.h"
#include "views/tree.h"
#include "views/workbench.h"

namespace tunemeadow {
namespace {

/// Rows between two signs of life. A hundred thousand of them pass in some hundredths of a second.
constexpr std::size_t kRowsPerYield = 10;

/// Rows that a search does not belong to must not stand in the view of a playlist, nor in that of
/// an archive.
void BringFittingListIntoView(Workbench& bench, const SearchStatement& statement) {
  const bool leaves_playlist =
      bench.playlist_in_view && statement.playlist != bench.current_playlist;
  const bool leaves_archive =
      !bench.playlist_in_view && bench.current_view == "CDArchive" && !statement.of_archive;
  if (leaves_playlist || leaves_archive) {
    bench.playlist_in_view = false;
    bench.current_view = "Database";
    bench.Watcher().ListInViewChanged();
    SelectDatabaseInTree(bench);
  }
  if (leaves_archive && !bench.search.cboCDArchive.empty()) {
    // Chosen by the tree, out of sight: it must not narrow what is searched next.
    bench.Watcher().SearchFieldsWanted();
    bench.search.cboCDArchive.clear();
    bench.Watcher().SearchFieldsChanged();
  }
  if (bench.current_view.empty()) bench.current_view = "Database";
}

/// A playlist keeps the order of its rows. Others come by the bytes of their locations, and are
/// shown as a person looks for them.
void FillListInView(Workbench& bench, CellTable rows) {
  bench.Watcher().ListCleared();
  bench.ListInView().Fill(std::move(rows));
  if (!bench.playlist_in_view) bench.ListInView().ArrangeByLocation();
  bench.Watcher().ListFilled();
}

void ClearListInView(Workbench& bench) {
  bench.interaction.SetStatus("Clearing View...");
  bench.row_icons = {};
  FillListInView(bench, CellTable(kSelectedFields));
}

CellTable RunStatement(Workbench& bench, const SearchStatement& statement) {
  Connection& connection = bench.session.connection;
  if (!statement.product_count.empty()) {
    const CellTable count = connection.Execute(statement.product_count).GetRows();
    if (!count.Empty() && ParseWhole(count.Cell(0, 0)).value_or(0) > kProductLimit) {
      throw DatabaseError(0, "The search yields more than " + std::to_string(kProductLimit) +
                                 " rows: beside other fields, each track comes once for each row "
                                 "of the archive.");
    }
  }
  return connection.Execute(statement.text).GetRows();
}

/// Walks the rows for totals and icons, with a sign of life now and then.
ListTotals WalkRows(Workbench& bench, const CellTable& rows) {
  Interaction& interaction = bench.interaction;
  ListTotals totals;
  const std::size_t count = rows.RowCount();
  interaction.ShowProgress(static_cast<std::int64_t>(count));
  interaction.ResizeForm();
  for (std::size_t row = 0; row < count; ++row) {
    if (row % kRowsPerYield == 0) {
      interaction.SetStatus("Entry " + std::to_string(row) + "/" + std::to_string(count));
      interaction.SetProgress(static_cast<std::int64_t>(row));
      interaction.Yield();
    }
    totals.Add(rows.Cell(row, IndexOf(TrackField::Playtime)),
               rows.Cell(row, IndexOf(TrackField::Filesize)));
    bench.row_icons.Add(rows.Cell(row, IndexOf(TrackField::location)));
  }
  return totals;
}

/// Fetches and shows the rows; the totals are those of what is shown.
ListTotals RunSearch(Workbench& bench, const SearchStatement& statement) {
  CellTable rows = RunStatement(bench, statement);
  bench.interaction.SetStatus("Visualization...");
  if (rows.Empty()) return {};
  if (rows.ColumnCount() < kSelectedFields) {
    throw DatabaseError(0, "The statement does not yield the columns of the list.");
  }
  const ListTotals totals = WalkRows(bench, rows);
  FillListInView(bench, std::move(rows));
  return totals;
}

/// One row, or none: what stands in the editor for many belongs to rows that have gone.
void SelectFirstRow(Workbench& bench) {
  if (bench.details.save_all) ChangeDetailSaveNo(bench);
  ResultList& list = bench.ListInView();
  if (list.RowCount() == 0) return;
  list.SelectOnly(0);
  list.SetFocusedRow(0);
  bench.Watcher().SelectionSet();
  LoadSelectedRow(bench);
}

/// What cmdSuchen and SearchPrepared have in common. A new search goes into the history.
void Search(Workbench& bench, const BuiltSearch& search, bool is_new) {
  // Texts for many go with their rows; those of one record are asked for when another is loaded.
  if (HasTextsForMany(bench.details) && !AskToSaveChanges(bench)) return;
  const SearchStatement& statement = search.statement;
  ListTotals totals;
  std::optional<MessageBox> failure;
  {
    const Busy busy(bench.session, bench.interaction, {.flag = &bench.searching});
    const PaintWhileWorking paint(bench);
    BringFittingListIntoView(bench, statement);
    ClearListInView(bench);
    bench.interaction.SetStatus("Searching...");
    if (is_new) bench.history.Add(search);
    bench.Watcher().HistoryChanged();
    try {
      totals = RunSearch(bench, statement);
    } catch (const std::exception& error) {
      failure = MessageBox{.text = std::string(error.what()) + "\n" + statement.text};
    }
    bench.interaction.HideProgress();
    if (!bench.playlist_in_view) bench.search_ran = true;
  }
  if (failure) bench.interaction.ShowMessage(*failure);
  Updatelistiewinfos(bench, TotalTimeText(totals.seconds), TotalSizeText(totals.megabytes));
  bench.interaction.SetStatus("Ready.");
  updatetreeview(bench);
  SelectFirstRow(bench);
}

}  // namespace

void cmdSuchen(Workbench& bench) {
  if (bench.searching) return;
  bench.Watcher().SearchFieldsWanted();
  Search(bench,
         BuildSearch({.fields = bench.search,
                      .quote = bench.session.quote,
                      .playlist_view = bench.playlist_in_view,
                      .current_playlist = bench.current_playlist,
                      .archive_view = bench.current_view == "CDArchive"}),
         true);
}

void SearchPrepared(Workbench& bench, const SearchStatement& prepared) {
  if (!bench.searching) Search(bench, {.statement = prepared, .label = {}}, false);
}

void cmdReset_Click(Workbench& bench) {
  bench.search = {};
  bench.Watcher().SearchFieldsChanged();
}

void mnuSuche_Click(Workbench& bench, std::size_t index) {
  const auto& entries = bench.history.Entries();
  if (index < 1 || index > entries.size()) return;
  const SearchStatement statement = entries[index - 1].statement;
  SearchPrepared(bench, statement);
}

std::string_view EmptyListHint(const Workbench& bench) noexcept {
  if (bench.playlist_in_view) {
    const auto is_filled = [](const std::string& text) { return !text.empty(); };
    const auto& searched = bench.search.texts.texts;
    return std::any_of(searched.begin(), searched.end(), is_filled)
               ? "No track of this playlist fits the search fields."
               : "No tracks in this playlist.";
  }
  if (bench.session.track_count == 0) {
    return "No tracks here. Import files with File, Import files..., or drop them here.";
  }
  return bench.search_ran
             ? "No track fits this search."
             : "Nothing searched yet. Fill a field and press Enter, or press F5 to see "
               "all tracks.";
}

void Updatelistiewinfos(Workbench& bench, const std::string& time, const std::string& size) {
  bench.total_time = " " + time;
  bench.total_size = " " + size;
  bench.Watcher().TotalsChanged();
}

void SearchHistory::Add(Entry entry) {
  if (entries_.size() == kPlaces) entries_.erase(entries_.begin());
  entries_.push_back(std::move(entry));
}

std::string SearchHistory::Caption(std::size_t index) const {
  if (index < 1 || index > entries_.size()) return "Empty Search";
  const std::string& label = entries_[index - 1].label;
  return std::to_string(index) + ".) " + (label.empty() ? "Full Search" : label);
}

}  // namespace tunemeadow
