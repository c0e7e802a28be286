// SPDX-License-Identifier: GPL-3.0-or-later
// The texts of the three detail panels, and what fills them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "audio/id3v2_pictures.h"
#include "audio/lyrics3.h"
#include "tracks/track_fields.h"

namespace tunemeadow {

class ResultList;
struct Workbench;

using FieldMarks = std::array<bool, kTrackFields>;  ///< by field

/// What the panels know of several selected rows. It goes when another selection is made.
struct ManyTracks {
  std::vector<std::int64_t> uids;  ///< of the rows, in the shown order
  bool of_playlist = false;        ///< rows of ListView3, which are not saved together
  FieldMarks typed{};              ///< the person has changed the text since
  FieldMarks differs{};            ///< the rows' values are not all the same

  bool operator==(const ManyTracks&) const = default;
};

/// The record in the panels.
struct DetailEditor {
  std::int64_t uid = 0;  ///< key of the row it was loaded from; 0: nothing is loaded
  TrackTexts texts;      ///< of the panels' fields, and the flags hasid3v1 and hasid3v2 of the row

  bool enabled = false;          ///< one row is loaded
  bool save_all = false;         ///< several rows are selected: the save button reads "&Save all"
  bool comment_enabled = false;  ///< txtCommentSave takes input: Auto-Comment is off

  bool DetailsKeyed = false;    ///< a key went down in a text field since the record was loaded
  bool DetailsChanged = false;  ///< the text of a field was changed since
  bool InRenameSave = false;    ///< a rename saves through the save command

  /// The record's own texts, while save_all lets the controls hold what is meant for many.
  std::optional<TrackTexts> texts_of_one;

  FieldMarks chosen{};  ///< ticked: "&Save all" writes the field into all tracks
  ManyTracks many;      ///< while save_all is set

  Lyrics3 lyrics3;  ///< the file's own block, read at the item click

  /// The picture in the pane; no bytes: none.
  ID3v2Picture picture;
  std::string picture_path;  ///< audio file that it was read from; bytes
  std::string picture_file;  ///< its copy as a file of its own, "pic." and its extension; bytes
};

/// What a click on a row does, in either list: fills the editor from its cells, reads the Lyrics3
/// block and, where the row has one and the pane is shown, the picture. With two or more rows
/// selected the editor goes into the mode for many. `row` is the clicked one. What was typed for
/// other rows than those now selected is asked for first, while these are highlighted once more.
/// Changes of the record that is about to go are asked for first; where they were to be saved and
/// could not be, that record stays (KeepLoadedRecord). Changes of the clicked row itself stay in
/// the editor.
void ListView1_ItemClick(Workbench& bench, std::size_t row);

/// The same for the focused row, from elsewhere.
void ListView1_ItemExternClick(Workbench& bench);

/// The same for what a command has selected: the row with the focus, or the first selected one.
/// The tree keeps the node that was chosen there. Nothing happens where no row is selected.
void LoadSelectedRow(Workbench& bench);

/// Asks "Save your changes?" where the person has changed the record in the editor, or has texts
/// for many, and on Yes calls the save command. For the moments at which they are about to go:
/// another row, a search, the end of the program. False where the person wants the changes saved
/// and that did not happen.
bool AskToSaveChanges(Workbench& bench);

/// Whether a text was typed for the selected rows, its field is still ticked, and it is not saved.
[[nodiscard]] bool HasTextsForMany(const DetailEditor& details) noexcept;

/// For a record that must stay in the editor though another row was chosen: selects its row alone,
/// or no row where the list in view does not have it, and tells the watcher. In the mode for many
/// it selects the rows that the mode is about.
void KeepLoadedRecord(Workbench& bench);

/// The editor's mode for many rows, and back to that for one. It shows the record that it holds
/// where that is one of the selected rows, else the first of these; it begins anew, with no field
/// ticked, where other rows are selected than before. What was typed for many goes on the way back:
/// the record has the texts again that it went in with.
void ChangeDetailtoSaveALL(Workbench& bench);
void ChangeDetailSaveNo(Workbench& bench);

/// The person has taken the selection away: the mode for many ends, behind its question, and the
/// record stays.
void EndModeForMany(Workbench& bench);

/// Behind a save of many: shows what the selected rows hold now, with no field ticked.
void ShowSavedTracks(Workbench& bench);

/// Fills the editor again from the cells of the row that it holds, if that is selected; else from
/// the first selected row. Without a selection, from its own row or the one with the focus. For
/// commands that have changed rows. Changes that were not saved go.
void ReloadDetails(Workbench& bench);

/// The way back: the texts of the editor go into the cells of the row.
void StoreDetails(const DetailEditor& details, ResultList& list, std::size_t row);

/// Next (0) or previous (1) row of the list in view, then its item click; a box where there is
/// none.
void cmdItemBlaetter_Click(Workbench& bench, int index);

/// Reads the picture of the file into the editor. Where the file is missing, holds none, or the
/// pane is not shown (chkPicShow), the editor has none afterwards.
void ShowPic(Workbench& bench, const std::string& path);

/// Takes the location of the loaded record from the catalogue, after a command has changed
/// locations there: a save must not write the old one back. What was typed stays.
void RefreshLocation(Workbench& bench);

/// Shows the picture of the loaded record again, or none: the pane was shown or hidden.
void ShowPicOfDetails(Workbench& bench);

/// The line at the picture: its description, "no description", or "no picture". UTF-8.
[[nodiscard]] std::string PictureText(const DetailEditor& details);

}  // namespace tunemeadow
