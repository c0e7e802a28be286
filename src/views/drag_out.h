// SPDX-License-Identifier: GPL-3.0-or-later
// What follows when the person has dragged rows of the list out of the window.
#pragma once

namespace tunemeadow {

struct Workbench;

/// Stamps the selected rows of the list in view as played now, in the catalogue and in their cells.
/// Throws DatabaseError; the cells stay then.
void ListView1_OLECompleteDrag(Workbench& bench);

}  // namespace tunemeadow
