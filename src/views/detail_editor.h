// SPDX-License-Identifier: GPL-3.0-or-later
// The texts of the three detail panels, named as their controls, and what fills them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "audio/id3v2_pictures.h"
#include "audio/lyrics3.h"
#include "views/quick_search.h"

namespace tunemeadow {

class ResultList;
struct Workbench;

/// The boxes beside the fields that "&Save all" writes.
struct MassSelectors {
  bool chkAlbum = false, chkGenre = false, chkInterpret = false, chkYear = false;
  bool chkSituation = false, chkPreference = false, chkTempo = false, chkMood = false;
  std::array<bool, kExtraFields> chkDetail3{};
};

/// The captions of lblDetail3, in the order of txtSave3.
inline constexpr std::array<std::string_view, kExtraFields> kExtraCaptions = {
    "Composer", "Copyright", "Encoded by", "Orig. Artist", "URL"};

/// The record in the panels. Texts are UTF-8; txtLocationSave is bytes.
struct DetailEditor {
  std::int64_t uid = 0;  ///< key of the row it was loaded from; 0: nothing is loaded
  std::string txtTitelSave, txtInterpretSave, txtAlbumSave, cboGenre1, txtYearSave, txtTracknumber,
      txtBPMSave, txtPlaytime, txtQualitaetSave, lblFilesize, txtLocationSave, txtCommentSave;
  std::string txtSituationSave, txtPreferenceSave, txtTempoSave, txtMoodSave, txtBiosSave,
      txtLyricsSave;
  std::array<std::string, kExtraFields> txtSave3;

  bool enabled = false;          ///< one row is loaded
  bool save_all = false;         ///< several rows are selected: the save button reads "&Save all"
  bool comment_enabled = false;  ///< txtCommentSave takes input: Auto-Comment is off

  bool DetailsKeyed = false;    ///< a key went down in a text field since the record was loaded
  bool DetailsChanged = false;  ///< the text of a field was changed since
  bool InRenameSave = false;    ///< a rename saves through the save command

  std::string hasid3v1, hasid3v2;  ///< cells of the row it was loaded from

  /// The record's own texts, while save_all lets the controls hold what is meant for many.
  std::vector<std::string> texts_of_one;

  MassSelectors selectors;  ///< which fields "&Save all" writes

  Lyrics3 lyrics3;  ///< the file's own block, read at the item click

  /// The picture in the pane; no bytes: none.
  ID3v2Picture picture;
  std::string picture_path;  ///< audio file that it was read from; bytes
  std::string picture_file;  ///< its copy as a file of its own, "pic." and its extension; bytes
};

/// What a click on a row does, in either list: fills the editor from its cells, reads the Lyrics3
/// block and, where the row has one and the pane is shown, the picture. With two or more rows
/// selected the editor goes into the mode for many and keeps its texts. `row` is the clicked one.
/// Changes of the record that is about to go are asked for first; where they were to be saved and
/// could not be, that record stays (KeepLoadedRecord). Changes of the clicked row itself stay in
/// the editor.
void ListView1_ItemClick(Workbench& bench, std::size_t row);

/// The same for the focused row, from elsewhere.
void ListView1_ItemExternClick(Workbench& bench);

/// Asks "Save your changes?" where the person has changed the record in the editor, and on Yes
/// calls the save command. For the moments at which the record is about to go: another row, the end
/// of the program. False where the person wants the changes saved and that did not happen.
bool AskToSaveChanges(Workbench& bench);

/// For a record that must stay in the editor though another row was chosen: selects its row alone,
/// or no row where the list in view does not have it, and tells the watcher.
void KeepLoadedRecord(Workbench& bench);

/// The editor's mode for many rows, and back to that for one. What was typed for many goes on the
/// way back: the record has the texts again that it went in with.
void ChangeDetailtoSaveALL(Workbench& bench);
void ChangeDetailSaveNo(Workbench& bench);

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

/// Shows the picture of the loaded record anew, or none: the pane was shown or hidden.
void ShowPicOfDetails(Workbench& bench);

/// The line at the picture: its description, "no description", or "no picture". UTF-8.
[[nodiscard]] std::string PictureText(const DetailEditor& details);

}  // namespace tunemeadow
