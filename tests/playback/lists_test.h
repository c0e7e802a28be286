// SPDX-License-Identifier: GPL-3.0-or-later
// A workbench whose list holds tracks that are told from each other by their paths.
#pragma once

#include <sqlite3.h>

#include <string>
#include <vector>

#include "store/statement.h"
#include "views/catalogue_test.h"

namespace tunemeadow {

class ListsTest : public CatalogueTest {
 protected:
  /// Adds a track; its key.
  std::string AddTrack(const std::string& location) {
    Run("insert into mp3sTabelle (location, Songname) values (" + Quoted(location, '"') + ",'t')");
    return std::to_string(session_.connection.LastInsertedKey());
  }

  /// All tracks into ListView1, the first `selected` of them selected.
  void ShowTracks(std::size_t selected) {
    bench_.playlist_in_view = false;
    bench_.search = {};
    cmdSuchen(bench_);
    Select(bench_.ListView1, selected);
  }

  void OpenPlaylist(const std::string& name, std::size_t selected = 0) {
    bench_.playlist_in_view = true;
    bench_.current_playlist = name;
    cmdSuchen(bench_);
    Select(bench_.ListView3, selected);
  }

  /// Makes the store refuse `event` ("insert on playlists when ..."), with this word.
  void Refuse(const std::string& event, const std::string& word) {
    sqlite3* store = nullptr;
    EXPECT_EQ(sqlite3_open(folder_.Path("mp3s.mdb").c_str(), &store), SQLITE_OK);
    const std::string trigger = "create trigger [" + word + "] before " + event +
                                " begin select raise(abort, '" + word + "'); end";
    EXPECT_EQ(sqlite3_exec(store, trigger.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(store);
  }

  static void Select(ResultList& list, std::size_t count) {
    list.ClearSelection();
    if (count > 0) list.SetSelected(0, count - 1, true);
  }

  static Texts Locations(const ResultList& list) {
    Texts texts;
    for (std::size_t row = 0; row < list.RowCount(); ++row) {
      texts.emplace_back(list.Cell(row, TrackField::location));
    }
    return texts;
  }

  void ClickNode(NodeKind kind, const std::string& name) {
    bench_.tree.selected = {.kind = kind, .name = name};
  }
};

}  // namespace tunemeadow
