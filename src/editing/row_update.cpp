// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/row_update.h"

#include <algorithm>
#include <array>

#include "core/database.h"
#include "core/dates.h"
#include "core/numbers.h"
#include "core/paths.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

constexpr std::array kWithPicture = {CellChange{Field::haspic, "1"}};
constexpr std::array kWithoutPicture = {CellChange{Field::haspic, "0"}};

void SetCellsOfRow(ResultList& list, std::size_t row, std::span<const CellChange> cells) {
  for (const CellChange& cell : cells) list.SetCell(row, cell.field, cell.text);
}

/// A playlist may hold a track several times, and the rows behind it show it too.
void SetCellsBesideRow(Workbench& bench, const SelectedFile& file,
                       std::span<const CellChange> cells) {
  for (std::size_t row = 0; row < bench.ListView3.RowCount(); ++row) {
    if (row == file.row || bench.ListView3.Uid(row) != file.uid) continue;
    SetCellsOfRow(bench.ListView3, row, cells);
    bench.Watcher().RowChanged(row);
  }
  if (const auto row = bench.ListView1.RowOfUid(file.uid)) {
    SetCellsOfRow(bench.ListView1, *row, cells);
  }
}

void SetFlagsOfEditor(DetailEditor& details, std::span<const CellChange> cells) {
  for (const CellChange& cell : cells) {
    if (cell.field == Field::hasid3v1) details.hasid3v1 = cell.text;
    if (cell.field == Field::hasid3v2) details.hasid3v2 = cell.text;
  }
}

}  // namespace

const RowUpdate kPictureAdded = {.before = "Update MP3sTabelle set datetimeoffile ='",
                                 .after = "',haspic=1 where UID=",
                                 .cells = kWithPicture};
const RowUpdate kPictureRemoved = {.before = "Update MP3sTabelle set haspic=0 ,datetimeoffile ='",
                                   .after = "' where UID=",
                                   .cells = kWithoutPicture};

std::vector<std::string> SelectedFiles::Paths() const {
  std::vector<std::string> paths;
  paths.reserve(files.size());
  for (const SelectedFile& file : files) paths.push_back(file.path);
  return paths;
}

SelectedFiles TakeSelectedFiles(Workbench& bench) {
  const ResultList& list = bench.ListInView();
  const std::vector<std::size_t> rows = list.SelectedRows();
  SelectedFiles selected;
  selected.items = rows.size();
  for (const std::size_t row : rows) {
    const std::string_view path = list.Cell(row, Field::location);
    if (!HasExtension(path, "mp3")) continue;
    selected.files.push_back({row, list.Uid(row), std::string(path)});
  }
  return selected;
}

void UpdateRowOfFile(Workbench& bench, const RowUpdate& update, const SelectedFile& file) {
  const std::string time = FileTimeText(file.path);
  if (time.empty()) return;
  Command& command = bench.session.command;
  command.ActiveConnection = &bench.session.connection;
  command.CommandType = 1;
  command.CommandText = std::string(update.before) + time + std::string(update.after);
  command.CommandText += std::to_string(file.uid);
  command.Execute();
  if (file.row < bench.ListInView().RowCount()) {
    SetCellsOfRow(bench.ListInView(), file.row, update.cells);
    bench.Watcher().RowChanged(file.row);
  }
  if (bench.playlist_in_view) SetCellsBesideRow(bench, file, update.cells);
  if (bench.details.uid == file.uid) SetFlagsOfEditor(bench.details, update.cells);
}

std::optional<MessageBox> TryUpdateRow(Workbench& bench, const RowUpdate& update,
                                       const SelectedFile& file) {
  try {
    UpdateRowOfFile(bench, update, file);
    return std::nullopt;
  } catch (const DatabaseError& error) {
    return MessageBox{
        .text = error.what() + ("\n" + ToValidUtf8(bench.session.command.CommandText)),
        .icon = Icon::kCritical};
  }
}

void RefreshPicture(Workbench& bench, const SelectedFiles& files) {
  const DetailEditor& details = bench.details;
  if (details.uid == 0) return;
  const bool holds = std::any_of(files.files.begin(), files.files.end(),
                                 [&](const SelectedFile& file) { return file.uid == details.uid; });
  if (holds) ShowPic(bench, details.txtLocationSave);
}

std::string Stopwatch::Text() const {
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start_;
  return "Elapsed Time: " + FormatFixed(elapsed.count(), 2) + " seconds";
}

void TellTagResult(Workbench& bench, const std::string& line, const Stopwatch& watch) {
  if (!bench.session.success_messages) return;
  bench.interaction.ShowMessage({.text = line + "\n" + watch.Text(), .icon = Icon::kInformation});
}

}  // namespace tunemeadow
