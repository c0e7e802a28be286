// SPDX-License-Identifier: GPL-3.0-or-later
// The tree of the main window: the library by folder, artist, album, genre or year, the playlists,
// the CD archives; what a click on a node does, and which node a row belongs to. updatetreeview,
// which many commands end with, is declared in views/workbench.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "views/path_tree.h"
#include "views/tree_data.h"

namespace tunemeadow {

struct Workbench;

/// Chooses what the library is grouped by, and renews the tree.
void cboTreeSelector_Click(Workbench& bench, TreeKind kind);

/// Adds the groups of `kind` below the node `parent`, keys "MainArchive\" and so on. Tracks whose
/// location begins with txtCDTag stay out of "Location", unless that setting is empty. Throws
/// DatabaseError.
void LoadViewMain(Workbench& bench, TreeKind kind, TreeBuilder& tree, std::int32_t parent);

/// Adds the folders of one archive below its node `parent`, keys "CDArchive|" name "\" and the
/// path. Throws DatabaseError.
void LoadView4(Workbench& bench, const std::string& archive, TreeBuilder& tree,
               std::int32_t parent);

/// What a click on a node does: remembers it, brings the list of its kind into view, fills the
/// search fields and searches. The three parent nodes search nothing.
void TreeView1_NodeClick(Workbench& bench, const TreeSelection& node);

/// Where a playlist or an archive is selected in the tree, the node of the library is selected in
/// its place: to be called when the list of the former has gone.
void SelectDatabaseInTree(Workbench& bench);

/// Brings ListView1 into view, search fields emptied, and searches nothing yet.
/// SelectDatabaseInTree.
void BringLibraryIntoView(Workbench& bench);

/// The same, and searches: the whole library.
void ShowDatabase(Workbench& bench);

/// Whether a playlist or an archive is in view.
[[nodiscard]] bool LibraryIsAway(const Workbench& bench) noexcept;

/// Where chkTrackSelection is on: the node of a row of the library is selected, its parents
/// expanded. A row without a node, and a hidden tree, leave the selection; so does a playlist in
/// view, whose own node stays selected.
void FollowRowInTree(Workbench& bench, std::size_t row);

/// Selects the node of the record in the details, whatever chkTrackSelection says.
void cmdSeekto_Click(Workbench& bench);

/// Index of the node that is selected; -1: it is not among the nodes. A playlist is found by its
/// name.
[[nodiscard]] std::int32_t SelectedNode(const TreeData& tree) noexcept;

/// A path as a value of txtLocation: what the field cannot hold, or the search would change,
/// becomes
/// "_", which stands for any one character.
[[nodiscard]] std::string PathPattern(std::string_view path, char quote);

/// Whether rows of the list in view may be archived: those of the library, of no playlist and of no
/// archive.
[[nodiscard]] bool ArchivesTakeRows(const Workbench& bench) noexcept;

/// Whether the two combos for names, and their labels, are shown: not for a playlist, nor for an
/// archive.
[[nodiscard]] bool NameCombosShown(const Workbench& bench) noexcept;

}  // namespace tunemeadow
