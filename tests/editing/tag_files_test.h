// SPDX-License-Identifier: GPL-3.0-or-later
// Tracks whose rows say that they have every tag, all selected, and what became of them.
#pragma once

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <string_view>

#include "core/dates.h"
#include "editing/edited_tracks_test.h"
#include "files/file_facts.h"

namespace tunemeadow {

class TagFilesTest : public EditedTracksTest {
 protected:
  std::string Add(const std::string& name, std::string_view bytes) {
    return AddTrack(
        name, bytes,
        {{"hasid3v1", "1"}, {"hasid3v2", "1"}, {"haspic", "1"}, {"datetimeoffile", "old"}});
  }

  void ShowAll() {
    Show();
    bench_.ListInView().SetSelected(0, bench_.ListInView().RowCount() - 1, true);
  }

  /// "123 time" of each row: hasid3v1, hasid3v2, haspic, and "new" for the time of the file.
  Texts Flags() {
    Texts flags = Rows(
        "select hasid3v1 || hasid3v2 || haspic || ' ' || datetimeoffile from mp3sTabelle order by "
        "uid");
    const Texts paths = Column("location");
    for (std::size_t i = 0; i < flags.size(); ++i) {
      if (flags[i].substr(4) == FileTimeText(paths[i]))
        flags[i].replace(4, std::string::npos, "new");
    }
    return flags;
  }

  /// The three cells of each row in the list in view.
  Texts Cells() {
    Texts cells;
    const ResultList& list = bench_.ListInView();
    for (std::size_t row = 0; row < list.RowCount(); ++row) {
      std::string text(list.Cell(row, TrackField::hasid3v1));
      text.append(list.Cell(row, TrackField::hasid3v2)).append(list.Cell(row, TrackField::haspic));
      cells.push_back(text);
    }
    return cells;
  }

  /// "title: text" of each box, with "#" in place of the elapsed seconds.
  Texts Boxes() {
    const std::regex seconds(R"(Elapsed Time: [0-9]+\.[0-9][0-9] seconds)");
    Texts texts = interaction_.BoxTexts();
    for (std::string& text : texts) text = std::regex_replace(text, seconds, "Elapsed Time: #");
    return texts;
  }

  /// Runs the command; the boxes get these answers.
  void Run(void (*click)(Workbench&), std::initializer_list<Answer> answers) {
    for (const Answer answer : answers) interaction_.WillAnswer(answer);
    click(bench_);
  }
  using CatalogueTest::Run;

  const std::string v1_ = Id3v1Record({.title = "one"});
  const std::string v2_ = Id3v2Tag({{"TIT2", "two"}}, {.padding = 30});
  const std::string lyrics_ = Lyrics3Bytes({{"LYR", "la la"}});
  const std::string torn_ = "ID3" + std::string("\3\0\0\0\0\x7F\x7F", 7) + "APIC" + audio_;
};

}  // namespace tunemeadow
