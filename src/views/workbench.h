// SPDX-License-Identifier: GPL-3.0-or-later
// What a command is handed: the run, the way to ask and report, the world outside, the lists, the
// details. Owned by frmStart; a test builds one in three lines.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/world.h"
#include "run/interaction.h"
#include "run/session.h"
#include "tracks/classic_tags.h"
#include "views/detail_editor.h"
#include "views/quick_search.h"
#include "views/result_list.h"
#include "views/row_icons.h"
#include "views/search_items.h"
#include "views/tree_data.h"

namespace tunemeadow {

/// The window behind the workbench is told what has changed and shows it anew. Without one, nothing
/// happens. Each ListCleared is followed by a ListFilled before anything is painted; a search does
/// so twice, for the emptied list and for its result.
class WorkbenchWatcher {
 public:
  virtual ~WorkbenchWatcher() = default;
  virtual void ListCleared() {}  ///< the rows of the list in view are about to go
  virtual void ListFilled() {}   ///< the list in view holds new rows, or none
  virtual void RowChanged(std::size_t /*row*/) {}
  virtual void OrderChanged() {}  ///< the rows of the list in view stand in another order
  virtual void SelectionSet() {}  ///< selection or focus was set by a command: show it
  virtual void SearchFieldsChanged() {}
  virtual void SearchFieldsWanted() {
  }  ///< a search begins: put what the controls hold into the bench
  virtual void HistoryChanged() {}
  virtual void SearchItemsChanged() {}
  virtual void TotalsChanged() {}
  virtual void TreeChanged() {}
  virtual void TreeNodeSelected() {}  ///< a command chose another node of the tree: show it
  virtual void DetailsChanged() {}
  virtual void PictureChanged() {}
  virtual void ListInViewChanged() {}
};

struct Workbench {
  Workbench(Session& session_in, Interaction& interaction_in, World& world_in)
      : session(session_in), interaction(interaction_in), world(world_in) {}

  Session& session;
  Interaction& interaction;
  World& world;
  WorkbenchWatcher* watcher = nullptr;  ///< may be null
  [[nodiscard]] WorkbenchWatcher& Watcher() noexcept {
    return watcher != nullptr ? *watcher : silent_;
  }

  ResultList ListView1;
  ResultList ListView3;
  bool playlist_in_view = false;  ///< ListView3 is the list in view
  [[nodiscard]] ResultList& ListInView() noexcept {
    return playlist_in_view ? ListView3 : ListView1;
  }
  std::string current_view;          ///< "Database" or "CDArchive"; empty before the first search
  std::string current_playlist;      ///< open in ListView3
  std::int16_t PlaylistCounter = 1;  ///< of the next default name that is proposed

  SearchFields search;
  SearchHistory history;
  bool searching = false;   ///< cmdSuchen is at work
  bool search_ran = false;  ///< ListView1 holds the result of a search
  SearchItems search_items;
  RowIcons row_icons;                  ///< of the list in view
  std::string total_time, total_size;  ///< texts of lblTotalTime and lblTotalSize
  TreeData tree;

  DetailEditor details;
  /// The save command, which lies on a floor above: set by whoever builds the bench. Called where
  /// the person wants the changes of the record saved that is about to leave the editor.
  std::function<void(Workbench&)> save_details;
  std::string PictureFile;      ///< picture chosen in the pane for many files; bytes
  bool show_picture = true;     ///< chkPicShow
  bool track_selection = true;  ///< chkTrackSelection
  bool try_preview = false;     ///< chkPlayPreview
  std::string WinampWindow;     ///< the running player found last; empty: unknown
  std::string failed_player;    ///< could not be started; empty if the last one could

  [[nodiscard]] TagPort& Tags() noexcept { return classic_tags_; }  ///< of every command

  std::vector<std::string> ImportList;  ///< paths left by ripper, encoder or monitor
  bool ImportGivenFiles = false;        ///< ImportList is to be imported instead of a folder
  bool ImportFromMonitor = false;       ///< no question and no closing box

 private:
  WorkbenchWatcher silent_;
  ClassicTags classic_tags_;
};

/// Renews the tree's nodes and the names of playlists and archives, and tells the window where
/// something has changed. The nodes are read again only where the catalogue was written since, or
/// another kind was chosen. A hidden tree keeps its nodes; the names are renewed even then. A
/// statement that fails leaves its part of the tree empty.
void updatetreeview(Workbench& bench);

/// Counts the tracks of the whole catalogue again (session.track_count) and renews the tree. The
/// count stays where the statement fails.
void UpdateTrackCount(Workbench& bench);

}  // namespace tunemeadow
