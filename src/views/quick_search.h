// SPDX-License-Identifier: GPL-3.0-or-later
// The search panels as data: their fields, the statement they make, the last five searches.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tracks/track_fields.h"

namespace tunemeadow {

struct Workbench;

/// What is searched for. The file name and the location are bytes.
struct SearchFields {
  TrackTexts texts;  ///< of the fields that have a place in a search; empty: any
  std::string cboPlaylists, cboCDArchive;

  bool operator==(const SearchFields&) const = default;
};

/// What a search asks of the store.
struct SearchRequest {
  SearchFields fields;
  char quote = '"';
  bool playlist_view = false;    ///< ListView3 is in view
  std::string current_playlist;  ///< open in it
  bool archive_view = false;     ///< the archive was clicked in the tree, not chosen as a field
};

/// A statement that fills a list, and what its rows are: that is never read back out of the text,
/// which holds whatever was typed.
struct SearchStatement {
  std::string text;
  std::optional<std::string> playlist;  ///< the tracks of this playlist, in its order
  bool of_archive = false;              ///< only tracks of an archive
  /// An archive that is chosen beside other fields is not tied to the tracks: each of them comes
  /// once for each row of the archive. This counts the rows of such a product, and stops after
  /// kProductLimit. Empty if the rows are none.
  std::string product_count;
};
inline constexpr std::int64_t kProductLimit = 1'000'000;  ///< rows that a product may have

/// The statement, character for character, and the label of the history.
struct BuiltSearch {
  SearchStatement statement;
  std::string label;  ///< ";" word "=" value for each filled field
};
[[nodiscard]] BuiltSearch BuildSearch(const SearchRequest& request);

/// The last five searches, the oldest first.
class SearchHistory {
 public:
  using Entry = BuiltSearch;
  static constexpr std::size_t kPlaces = 5;

  void Add(Entry entry);  ///< a sixth drops the oldest
  [[nodiscard]] const std::vector<Entry>& Entries() const noexcept { return entries_; }

  /// Caption of the menu entry `index` (1 to 5): "Empty Search", "1.) Full Search", "1.)
  /// ;Artist=x". Plain text: an "&" is not doubled.
  [[nodiscard]] std::string Caption(std::size_t index) const;

 private:
  std::vector<Entry> entries_;
};

/// Totals of a result, summed row by row. What cannot be read counts as 0.
struct ListTotals {
  std::int64_t seconds = 0;
  std::int64_t megabytes = 0;  ///< the sum is rounded at each row, halves to even: files of under
                               ///< half a megabyte add nothing
  void Add(std::string_view playtime, std::string_view filesize);
};
[[nodiscard]] std::string TotalTimeText(std::int64_t seconds);    ///< "2 days, 3hh:4min;5sec"
[[nodiscard]] std::string TotalSizeText(std::int64_t megabytes);  ///< "512 MB", "1.50 GB"

/// Runs the search of the fields, a new entry of the history, and fills the list in view. The first
/// row is selected and comes into the details as a click would bring it there. A statement that
/// fails shows its box and leaves an empty list. Nothing happens inside a running search.
void cmdSuchen(Workbench& bench);

/// As cmdSuchen, with a statement as it stands instead of the fields; the history stays as it is.
/// One that does not list the open playlist first brings ListView1 into view: its rows would be
/// taken for the content of the playlist. Likewise one that lists no archive leaves the view of an
/// archive, and its field is emptied.
void SearchPrepared(Workbench& bench, const SearchStatement& prepared);

/// Empties every search field. Runs no search.
void cmdReset_Click(Workbench& bench);

/// Replays entry `index` (1 to 5) of the history; nothing if it is empty.
void mnuSuche_Click(Workbench& bench, std::size_t index);

/// What an empty list in view says in its middle.
[[nodiscard]] std::string_view EmptyListHint(const Workbench& bench) noexcept;

/// Sets the totals under the list: a blank and the text each.
void Updatelistiewinfos(Workbench& bench, const std::string& time, const std::string& size);

}  // namespace tunemeadow
