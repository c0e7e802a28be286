// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/detail_editor.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "core/code_page.h"
#include "core/paths.h"
#include "core/text.h"
#include "files/file_facts.h"
#include "run/busy.h"
#include "tracks/field_order.h"
#include "tracks/track_field_table.h"
#include "views/changed_file.h"
#include "views/tree.h"
#include "views/workbench.h"

namespace tunemeadow {
namespace {

/// Calls `each` with the fields that the panels show.
template <typename Each>
void ForEachShownField(Each each) {
  for (const TrackFieldRow& row : kTrackFieldTable) {
    if (row.editor.shown) each(row.field);
  }
}

constexpr std::array kFlags = {TrackField::hasid3v1, TrackField::hasid3v2};

void CopyCells(const ResultList& list, std::size_t row, DetailEditor& details) {
  details.uid = list.Uid(row);
  const auto copy = [&](TrackField field) { details.texts[field] = list.Cell(row, field); };
  ForEachShownField(copy);
  for (const TrackField flag : kFlags) copy(flag);
  details.DetailsKeyed = false;
  details.DetailsChanged = false;
}

bool HasChanges(const DetailEditor& details) noexcept {
  return details.DetailsKeyed && details.DetailsChanged;
}

/// The flags stay: a command may have changed them meanwhile.
void LeaveModeForMany(DetailEditor& details) {
  details.save_all = false;
  details.chosen = {};
  details.many = {};
  auto texts = std::exchange(details.texts_of_one, std::nullopt);
  if (!texts) return;
  ForEachShownField([&](TrackField field) { details.texts[field] = std::move((*texts)[field]); });
}

/// What the list does not hold. The values of a block that is not whole are not used.
void ReadOwnLyrics3(DetailEditor& details) {
  if (!ReadLyrics3Tag(details.texts[TrackField::location], details.lyrics3)) details.lyrics3 = {};
}

/// The copy in the program's folder goes with its picture; the next one may have another name.
void DropPicture(DetailEditor& details) {
  if (!details.picture_file.empty()) std::remove(details.picture_file.c_str());
  details.picture = {};
  details.picture_path.clear();
  details.picture_file.clear();
}

void ClearPicture(Workbench& bench) {
  DropPicture(bench.details);
  bench.Watcher().PictureChanged();
}

/// Keeps the picture's bytes as a file of its own kind, for saving and for other programs. Empty
/// where that failed; the pane shows the bytes themselves.
std::string WritePictureFile(const Session& session, const ID3v2Picture& picture) {
  std::string path = JoinPath(session.program_folder, "pic." + picture.extension);
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(picture.data.data(), static_cast<std::streamsize>(picture.data.size()));
  file.close();
  return file ? path : std::string();
}

/// The row with the focus, otherwise the first selected one.
std::optional<std::size_t> CurrentRow(const ResultList& list) {
  auto row = list.FocusedRow();
  if (!row && list.SelectedCount() > 0) row = list.SelectedRows().front();
  return row;
}

std::optional<std::size_t> RowToLoadAgain(const ResultList& list, std::int64_t loaded) {
  const std::vector<std::size_t> selected = list.SelectedRows();
  for (const std::size_t row : selected) {
    if (loaded != 0 && list.Uid(row) == loaded) return row;
  }
  if (!selected.empty()) return selected.front();
  const auto own = loaded != 0 ? list.RowOfUid(loaded) : std::nullopt;
  return own ? own : CurrentRow(list);
}

void LoadTexts(Workbench& bench, std::size_t row) {
  DetailEditor& details = bench.details;
  details.enabled = true;
  details.comment_enabled = !bench.session.preferences.chkAutoComment;
  CopyCells(bench.ListInView(), row, details);
  ReadOwnLyrics3(details);
}

void ShowDetails(Workbench& bench, std::size_t row) {
  bench.Watcher().DetailsChanged();
  if (bench.show_picture && bench.ListInView().Cell(row, TrackField::haspic) == "1") {
    ShowPic(bench, bench.details.texts[TrackField::location]);
  } else {
    ClearPicture(bench);
  }
}

std::vector<std::int64_t> SelectedUids(const ResultList& list) {
  std::vector<std::int64_t> uids;
  uids.reserve(list.SelectedCount());
  for (const std::size_t row : list.SelectedRows()) uids.push_back(list.Uid(row));
  return uids;
}

/// Ends at the row behind which no field is left that all rows agree about.
FieldMarks DifferingFields(const ResultList& list) {
  FieldMarks differs{};
  const std::vector<std::size_t> rows = list.SelectedRows();
  std::vector<TrackField> same;
  for (const TrackField field : FieldsInOrder<&TrackFieldRow::save_all>()) same.push_back(field);
  for (const std::size_t row : rows) {
    std::erase_if(same, [&](TrackField field) {
      const bool differ = list.Cell(row, field) != list.Cell(rows.front(), field);
      differs[IndexOf(field)] = differ;
      return differ;
    });
    if (same.empty()) break;
  }
  return differs;
}

void Select(Workbench& bench, const std::vector<std::size_t>& rows,
            std::optional<std::size_t> focused) {
  ResultList& list = bench.ListInView();
  list.ClearSelection();
  for (const std::size_t row : rows) list.SetSelected(row, row, true);
  list.SetFocusedRow(focused);
  bench.Watcher().SelectionSet();
}

/// The rows that the mode for many is about, as far as the list has them.
std::vector<std::size_t> RowsOfMany(const ResultList& list, const ManyTracks& many) {
  std::unordered_multiset<std::int64_t> uids(many.uids.begin(), many.uids.end());
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < list.RowCount() && !uids.empty(); ++row) {
    const auto found = uids.find(list.Uid(row));
    if (found == uids.end()) continue;
    uids.erase(found);
    rows.push_back(row);
  }
  return rows;
}

void SelectRowsOfMany(Workbench& bench) {
  const ResultList& list = bench.ListInView();
  const std::vector<std::size_t> rows = RowsOfMany(list, bench.details.many);
  Select(bench, rows, rows.empty() ? list.FocusedRow() : rows.front());
}

/// Before other rows than those of the mode for many come into the panels. The person sees which
/// rows the question is about; they stay selected where their texts could not be saved.
bool MayLeaveMany(Workbench& bench) {
  const DetailEditor& details = bench.details;
  ResultList& list = bench.ListInView();
  if (!HasTextsForMany(details) || SelectedUids(list) == details.many.uids) return true;
  const std::vector<std::size_t> chosen = list.SelectedRows();
  const auto focused = list.FocusedRow();
  SelectRowsOfMany(bench);
  if (!AskToSaveChanges(bench)) return false;
  Select(bench, chosen, focused);
  return true;
}

void ChooseRow(Workbench& bench, std::size_t row, bool follows_in_tree) {
  const ResultList& list = bench.ListInView();
  if (row >= list.RowCount() || !MayLeaveMany(bench)) return;
  if (list.SelectedCount() >= 2) {
    ChangeDetailtoSaveALL(bench);
    return;
  }
  LeaveModeForMany(bench.details);
  const bool is_loaded = bench.details.uid != 0 && bench.details.uid == list.Uid(row);
  if (!is_loaded && !AskToSaveChanges(bench)) {
    KeepLoadedRecord(bench);
    return;
  }
  if (row >= list.RowCount()) return;  // the window lives while a record is saved
  if (follows_in_tree) FollowRowInTree(bench, row);
  if (!is_loaded || !HasChanges(bench.details)) LoadTexts(bench, row);
  ShowDetails(bench, row);
  TellChangedFile(bench, bench.details.uid, bench.details.texts[TrackField::location]);
}

}  // namespace

void ListView1_ItemClick(Workbench& bench, std::size_t row) { ChooseRow(bench, row, true); }

void LoadSelectedRow(Workbench& bench) {
  const ResultList& list = bench.ListInView();
  if (list.SelectedCount() == 0) return;
  const auto focused = list.FocusedRow();
  const bool chosen = focused && list.IsSelected(*focused);
  ChooseRow(bench, chosen ? *focused : list.SelectedRows().front(), false);
}

void KeepLoadedRecord(Workbench& bench) {
  ResultList& list = bench.ListInView();
  if (bench.details.save_all) {
    SelectRowsOfMany(bench);
    return;
  }
  if (const auto row = list.RowOfUid(bench.details.uid)) {
    list.SelectOnly(*row);
    list.SetFocusedRow(*row);
  } else {
    list.ClearSelection();
  }
  bench.Watcher().SelectionSet();
  bench.Watcher().DetailsChanged();
}

bool HasTextsForMany(const DetailEditor& details) noexcept {
  if (!details.save_all || details.many.of_playlist) return false;
  for (std::size_t field = 0; field < kTrackFields; ++field) {
    if (details.many.typed[field] && details.chosen[field]) return true;
  }
  return false;
}

bool AskToSaveChanges(Workbench& bench) {
  const auto unsaved = [&bench] {
    return HasChanges(bench.details) || HasTextsForMany(bench.details);
  };
  if (!unsaved() || !bench.save_details) return true;
  const Answer answer = bench.interaction.ShowMessage(
      {.text = "Save your changes?", .title = "Save", .buttons = Buttons::kYesNo});
  if (answer != Answer::kYes) {
    bench.details.many.typed = {};  // they are let go, and not asked for twice on one way
    return true;
  }
  bench.save_details(bench);
  return !unsaved();
}

void ChangeDetailtoSaveALL(Workbench& bench) {
  DetailEditor& details = bench.details;
  const ResultList& list = bench.ListInView();
  ManyTracks many = {.uids = SelectedUids(list), .of_playlist = bench.playlist_in_view};
  if (details.save_all && many.uids == details.many.uids &&
      many.of_playlist == details.many.of_playlist) {
    return;
  }
  LeaveModeForMany(details);
  if (std::find(many.uids.begin(), many.uids.end(), details.uid) == many.uids.end()) {
    if (!AskToSaveChanges(bench)) return KeepLoadedRecord(bench);
    ReloadDetails(bench);
  }
  many.differs = DifferingFields(list);
  details.texts_of_one = details.texts;
  details.many = std::move(many);
  details.save_all = true;
  bench.Watcher().DetailsChanged();
}

void ChangeDetailSaveNo(Workbench& bench) {
  LeaveModeForMany(bench.details);
  bench.details.comment_enabled = !bench.session.preferences.chkAutoComment;
  bench.Watcher().DetailsChanged();
}

void EndModeForMany(Workbench& bench) {
  if (bench.details.save_all && MayLeaveMany(bench)) ChangeDetailSaveNo(bench);
}

void ShowSavedTracks(Workbench& bench) {
  bench.details.DetailsKeyed = bench.details.DetailsChanged = false;
  ChangeDetailSaveNo(bench);
  ReloadDetails(bench);
  if (bench.ListInView().SelectedCount() >= 2) ChangeDetailtoSaveALL(bench);
}

void ReloadDetails(Workbench& bench) {
  const ResultList& list = bench.ListInView();
  const auto row = RowToLoadAgain(list, bench.details.uid);
  if (!row) return;
  LoadTexts(bench, *row);
  ShowDetails(bench, *row);
}

void StoreDetails(const DetailEditor& details, ResultList& list, std::size_t row) {
  std::vector<FieldText> texts;
  const auto add = [&](TrackField field) { texts.push_back({field, details.texts[field]}); };
  ForEachShownField(add);
  for (const TrackField flag : kFlags) add(flag);
  list.SetCells(row, texts);
}

void ListView1_ItemExternClick(Workbench& bench) {
  const auto row = CurrentRow(bench.ListInView());
  if (row) ListView1_ItemClick(bench, *row);
}

void cmdItemBlaetter_Click(Workbench& bench, int index) {
  ResultList& list = bench.ListInView();
  const auto focused = list.FocusedRow();
  const bool forward = index == 0;
  if (!focused || (forward ? *focused + 1 >= list.RowCount() : *focused == 0)) {
    bench.interaction.ShowMessage(
        {.text = forward ? "no next entry!" : "no previuos entry!", .title = "Error"});
    return;
  }
  const std::size_t row = forward ? *focused + 1 : *focused - 1;
  list.SelectOnly(row);
  list.SetFocusedRow(row);
  bench.Watcher().SelectionSet();
  ListView1_ItemClick(bench, row);
}

void ShowPic(Workbench& bench, const std::string& path) {
  if (!bench.show_picture || !MyFileExists(path)) {
    ClearPicture(bench);
    return;
  }
  const Busy busy(bench.session, bench.interaction);
  DetailEditor& details = bench.details;
  DropPicture(details);
  details.picture = bench.Tags().ReadPicture(path).value_or(ID3v2Picture{});
  if (!details.picture.data.empty()) {
    details.picture_path = path;
    details.picture_file = WritePictureFile(bench.session, details.picture);
  }
  bench.Watcher().PictureChanged();
}

void RefreshLocation(Workbench& bench) {
  DetailEditor& details = bench.details;
  if (details.uid == 0) return;
  try {
    const CellTable rows =
        bench.session.connection
            .Execute("select location from mp3sTabelle where uid=" + std::to_string(details.uid))
            .GetRows();
    if (rows.Empty()) return;
    details.texts[TrackField::location] = rows.Cell(0, 0);
    bench.Watcher().DetailsChanged();
  } catch (const DatabaseError&) {
    // The store that cannot tell the location takes no save either.
  }
}

void ShowPicOfDetails(Workbench& bench) {
  const ResultList& list = bench.ListInView();
  const auto row = list.RowOfUid(bench.details.uid);
  if (bench.details.uid != 0 && row && list.Cell(*row, TrackField::haspic) == "1") {
    ShowPic(bench, bench.details.texts[TrackField::location]);
  } else {
    ClearPicture(bench);
  }
}

std::string PictureText(const DetailEditor& details) {
  if (details.picture.data.empty()) return "no picture";
  const std::string description = StripNulls(FromTagText(details.picture.description));
  return description.empty() ? "no description" : description;
}

}  // namespace tunemeadow
