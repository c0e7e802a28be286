// SPDX-License-Identifier: GPL-3.0-or-later
// Real files, their rows in a real catalogue, and the list that shows them, all selected.
#pragma once

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include "core/dates.h"
#include "support/list_rows.h"
#include "support/mp3_builder.h"
#include "views/catalogue_test.h"

namespace tunemeadow {

class TagFilesTest : public CatalogueTest {
 protected:
  struct Watcher : WorkbenchWatcher {
    std::vector<std::size_t> rows;
    void RowChanged(std::size_t row) override { rows.push_back(row); }
  };

  TagFilesTest() { bench_.watcher = &watcher_; }

  /// A row for the file, which is made unless `bytes` is empty. All its flags are set. Its path.
  std::string AddTrack(const std::string& name, std::string_view bytes) {
    const std::string path = "music/" + name;
    if (!bytes.empty()) folder_.Write(path, bytes);
    paths_.push_back(folder_.Path(path));
    Run("insert into mp3sTabelle (location, hasid3v1, hasid3v2, haspic, datetimeoffile) values ('" +
        paths_.back() + "', 1, 1, 1, 'old')");
    return paths_.back();
  }

  /// Shows all rows in the list in view and selects them.
  void ShowAll() {
    CellTable rows(kTrackFields);
    const Texts uids = Rows("select uid from mp3sTabelle order by uid");
    for (std::size_t i = 0; i < uids.size(); ++i) {
      AppendCells(rows, {{Field::uid, uids[i]},
                         {Field::location, paths_[i]},
                         {Field::hasid3v1, "1"},
                         {Field::hasid3v2, "1"},
                         {Field::haspic, "1"}});
    }
    ResultList& list = bench_.ListInView();
    list.Fill(std::move(rows));
    list.SetSelected(0, list.RowCount() - 1, true);
  }

  /// The row in the editor, as a click on it alone puts it there.
  void Edit(std::size_t row) {
    const std::vector<std::size_t> selected = bench_.ListInView().SelectedRows();
    bench_.ListInView().SelectOnly(row);
    ListView1_ItemClick(bench_, row);
    for (const std::size_t each : selected) bench_.ListInView().SetSelected(each, each, true);
  }

  /// "hasid3v1 hasid3v2 haspic time" of each row, the time being "old", "new" (that of the file) or
  /// what else stands there.
  Texts Flags() {
    Texts flags;
    const Texts stored = Rows(
        "select hasid3v1 || hasid3v2 || haspic || ' ' || datetimeoffile from mp3sTabelle order by "
        "uid");
    for (std::size_t i = 0; i < stored.size(); ++i) {
      const std::string time = stored[i].substr(4);
      flags.push_back(stored[i].substr(0, 4) + (time == FileTimeText(paths_[i]) ? "new" : time));
    }
    return flags;
  }

  /// The three cells of each row in the list in view.
  Texts Cells() {
    Texts cells;
    const ResultList& list = bench_.ListInView();
    for (std::size_t row = 0; row < list.RowCount(); ++row) {
      std::string text;
      for (const Field field : {Field::hasid3v1, Field::hasid3v2, Field::haspic}) {
        text += list.Cell(row, field);
      }
      cells.push_back(text);
    }
    return cells;
  }

  /// "title: text" of each box, with "#" in the place of the elapsed seconds.
  Texts Boxes() {
    const std::regex seconds(R"(Elapsed Time: [0-9]+\.[0-9][0-9] seconds)");
    Texts texts = interaction_.BoxTexts();
    for (std::string& text : texts) text = std::regex_replace(text, seconds, "Elapsed Time: #");
    return texts;
  }

  std::string Bytes(const std::string& name) { return folder_.Read("music/" + name); }

  Watcher watcher_;
  std::vector<std::string> paths_;
  const std::string audio_ = Mp3File().Frames(5).Build();
  const std::string v1_ = Id3v1Record({.title = "one"});
  const std::string v2_ = Id3v2Tag({{"TIT2", "two"}}, {.padding = 30});
  const std::string lyrics_ = Lyrics3Bytes({{"LYR", "la la"}});
};

}  // namespace tunemeadow
