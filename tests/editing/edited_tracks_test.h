// SPDX-License-Identifier: GPL-3.0-or-later
// Real files, their rows in a real catalogue, and the list as a search shows it.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "audio/id3v2_reader.h"
#include "audio/mdl_ID3.h"
#include "core/text.h"
#include "editing/save.h"
#include "store/statement.h"
#include "support/mp3_builder.h"
#include "tracks/track_field_table.h"
#include "views/catalogue_test.h"

namespace tunemeadow {

/// A text of two letters in every field that a save writes, but for those that have a form.
inline void FillSample(DetailEditor& details) {
  details.texts = {{TrackField::Songname, "ti"},
                   {TrackField::Artist, "ar"},
                   {TrackField::album, "al"},
                   {TrackField::genrereal, "Rock"},
                   {TrackField::year, "2001"},
                   {TrackField::trackno, "07"},
                   {TrackField::BPM, "99"},
                   {TrackField::Playtime, "3:05"},
                   {TrackField::quality, "qu"},
                   {TrackField::Comment, "co"},
                   {TrackField::Situation, "si"},
                   {TrackField::tempo, "te"},
                   {TrackField::preference, "pr"},
                   {TrackField::Mood, "mo"},
                   {TrackField::bios, "bi"},
                   {TrackField::Lyrics, "ly"},
                   {TrackField::location, details.texts[TrackField::location]}};
  for (std::size_t i = 0; i < kExtraFields; ++i) {
    details.texts[ExtraField(i)] = "x" + std::to_string(i);
  }
}

class EditedTracksTest : public CatalogueTest {
 protected:
  using Values = std::initializer_list<std::pair<std::string_view, std::string_view>>;

  struct Watcher : WorkbenchWatcher {
    std::vector<std::size_t> rows;
    int details = 0;
    void RowChanged(std::size_t row) override { rows.push_back(row); }
    void DetailsChanged() override { ++details; }
  };

  EditedTracksTest() {
    session_.preferences.chkAutoComment = false;
    bench_.watcher = &watcher_;
    bench_.save_details = cmdSpeichern_Click;
  }

  /// A row of these values, and its file unless `bytes` is empty. Its path.
  std::string AddTrack(const std::string& name, std::string_view bytes, Values values = {}) {
    std::string path = folder_.Path("music/" + name);
    if (!bytes.empty()) folder_.Write("music/" + name, bytes);
    std::string columns = "location", texts = Quoted(path, '\'');
    for (const auto& [column, text] : values) {
      columns.append(",").append(column);
      texts.append(",").append(Quoted(text, '\''));
    }
    Run("insert into mp3sTabelle (" + columns + ") values (" + texts + ")");
    return path;
  }

  /// Fills the list in view with all rows.
  void Show() {
    std::string columns;
    for (std::size_t i = 0; i < kSelectedFields; ++i) {
      columns.append(i == 0 ? "" : ",").append("[").append(kTrackFieldTable[i].name).append("]");
    }
    bench_.ListInView().Fill(
        session_.connection.Execute("select " + columns + " from mp3sTabelle order by uid")
            .GetRows());
  }

  /// These rows of ListView1, for a list that holds a track twice.
  CellTable RowsOf(std::initializer_list<std::size_t> rows) {
    CellTable table(kSelectedFields);
    for (const std::size_t row : rows) {
      const TrackTexts track = bench_.ListView1.Record(row);
      table.AppendRow(std::vector<std::string_view>(track.texts.begin(),
                                                    track.texts.begin() + kSelectedFields));
    }
    return table;
  }

  /// Shows the rows and clicks one.
  DetailEditor& Edit(std::size_t row = 0) {
    Show();
    bench_.ListInView().SelectOnly(row);
    bench_.ListInView().SetFocusedRow(row);
    ListView1_ItemClick(bench_, row);
    watcher_.rows.clear();
    return bench_.details;
  }

  /// A column of all rows.
  Texts Column(const std::string& name) {
    return Rows("select " + name + " from mp3sTabelle order by uid");
  }

  /// Some columns of all rows, "a|b|c".
  Texts Joined(const std::string& columns) {
    std::string all;
    for (const std::string_view name : Split(columns, ' ')) {
      all.append(all.empty() ? "" : "||'|'||").append("ifnull(").append(name).append(",'')");
    }
    return Column(all);
  }

  std::string Bytes(const std::string& name) { return folder_.Read("music/" + name); }

  /// The ID3v2 tag of the file.
  Mp3Info Tag(const std::string& name) {
    Mp3Info info;
    EXPECT_EQ(ReadID3v2Tag(folder_.Path("music/" + name), ID3v2Versions::kAny, info), "OK") << name;
    return info;
  }

  Watcher watcher_;
  const std::string audio_ = Mp3File().Frames(5).Build();
};

}  // namespace tunemeadow
