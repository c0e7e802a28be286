// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/row_update.h"

#include <algorithm>
#include <array>

#include "core/dates.h"
#include "core/numbers.h"
#include "core/paths.h"
#include "core/text.h"
#include "files/file_facts.h"
#include "store/database.h"

namespace tunemeadow {
namespace {

constexpr std::array kWithPicture = {FieldText{TrackField::haspic, "1"}};
constexpr std::array kWithoutPicture = {FieldText{TrackField::haspic, "0"}};

void SetFlagsOfEditor(DetailEditor& details, std::span<const FieldText> cells) {
  for (const FieldText& cell : cells) {
    const bool is_flag = cell.field == TrackField::hasid3v1 || cell.field == TrackField::hasid3v2;
    if (is_flag) details.texts[cell.field] = cell.text;
  }
}

/// Throws DatabaseError.
void UpdateRowOfFile(Workbench& bench, const RowUpdate& update, const SelectedFile& file,
                     const TrackRows& rows) {
  const std::string time = FileTimeText(file.path);
  if (time.empty()) return;
  std::string statement(update.before);
  statement.append(time).append(update.after).append(std::to_string(file.uid));
  bench.session.connection.Execute(statement);
  rows.SetCells(bench, file.uid, update.cells);
  if (bench.details.uid == file.uid) SetFlagsOfEditor(bench.details, update.cells);
}

}  // namespace

const RowUpdate kPictureAdded = {.before = "Update MP3sTabelle set datetimeoffile='",
                                 .after = "',haspic=1 where UID=",
                                 .cells = kWithPicture};
const RowUpdate kPictureRemoved = {.before = "Update MP3sTabelle set haspic=0 ,datetimeoffile ='",
                                   .after = "' where UID=",
                                   .cells = kWithoutPicture};

SelectedFiles TakeSelectedFiles(Workbench& bench) {
  const ResultList& list = bench.ListInView();
  const std::vector<std::size_t> rows = list.SelectedRows();
  SelectedFiles selected;
  selected.items = rows.size();
  for (const std::size_t row : rows) {
    const std::string_view path = list.Cell(row, TrackField::location);
    if (!HasExtension(path, "mp3")) continue;
    selected.files.push_back({.uid = list.Uid(row), .path = std::string(path), .row = row});
  }
  return selected;
}

std::optional<MessageBox> TryUpdateRow(Workbench& bench, const RowUpdate& update,
                                       const SelectedFile& file, const TrackRows& rows) {
  try {
    UpdateRowOfFile(bench, update, file, rows);
    return std::nullopt;
  } catch (const DatabaseError& error) {
    return MessageBox{.text = error.WithStatement(), .icon = Icon::kCritical};
  }
}

void RefreshPicture(Workbench& bench, const SelectedFiles& files) {
  const DetailEditor& details = bench.details;
  if (details.uid == 0) return;
  const bool holds = std::any_of(files.files.begin(), files.files.end(),
                                 [&](const SelectedFile& file) { return file.uid == details.uid; });
  if (holds) ShowPic(bench, details.texts[TrackField::location]);
}

void TellLosses(Workbench& bench, const TagLosses& losses) {
  // What an earlier save left may have been undone before this one: that weighs more.
  std::string told = RollBackSentence(bench.session.journal.TakeRolledBack());
  if (told.empty()) told = LossSentence(losses);
  if (!told.empty()) bench.interaction.SetStatus(told);
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
