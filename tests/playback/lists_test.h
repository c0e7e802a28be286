// SPDX-License-Identifier: GPL-3.0-or-later
// A workbench whose list holds tracks that are told from each other by their paths.
#pragma once

#include <string>
#include <vector>

#include "store/statement.h"
#include "support/list_rows.h"
#include "support/other_program.h"
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
    const std::string trigger = "create trigger [" + word + "] before " + event +
                                " begin select raise(abort, '" + word + "'); end";
    const OtherProgram other(folder_.Path("mp3s.mdb"), trigger.c_str());
  }

  static void Select(ResultList& list, std::size_t count) {
    list.ClearSelection();
    if (count > 0) list.SetSelected(0, count - 1, true);
  }

  static Texts Locations(const ResultList& list) { return ColumnOf(list, TrackField::location); }

  void ClickNode(NodeKind kind, const std::string& name) {
    bench_.tree.selected = {.kind = kind, .name = name};
  }
};

}  // namespace tunemeadow
