// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that a click, a drop or a choice hands something to.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ui/shell/command_table.h"
#include "views/tree_data.h"

namespace tunemeadow {

/// Files and folders, as paths in bytes, were dropped on a list; none: something else was.
extern const Gesture<const std::vector<std::string>&> kFilesDropped;

/// A row of the list in view was chosen.
extern const Gesture<std::size_t> kRowChosen;

/// The header of a column of the list in view was clicked.
extern const Gesture<int> kHeaderClicked;

/// An entry of the search history was chosen, 1 to 5.
extern const Gesture<std::size_t> kHistoryChosen;

/// One of the panels was chosen, 0 to 2.
extern const Gesture<int> kPanelChosen;

extern const Gesture<const TreeSelection&> kNodeClicked;
extern const Gesture<TreeKind> kTreeKindChosen;

/// The selected rows were dropped on a node: its kind and name.
extern const Gesture<const TreeSelection&> kRowsDroppedOnNode;

/// The selected rows of the playlist were dropped before this row, or after the last one.
extern const Gesture<std::size_t> kRowsMoved;

/// vsOrder wants the selected row of the playlist at this place, from 0.
extern const Gesture<std::size_t> kPlaceChosen;

}  // namespace tunemeadow
