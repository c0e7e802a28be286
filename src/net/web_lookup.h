// SPDX-License-Identifier: GPL-3.0-or-later
// Sends the track in the editor to a search on the web: makes the address of the query and hands it
// to the system's browser. Nothing is fetched here.
#pragma once

#include <string>
#include <string_view>

#include "views/workbench.h"

namespace tunemeadow {

/// The boxes that choose what is sent.
struct LookupChoice {
  bool chkCDDBSong = false;
  bool chkCDDBArtist = false;
  bool chkCDDBAlbum = false;
  bool chkCDDBLocation = false;  ///< the file name
};

/// The chosen values as they stand, in the order song, artist, album, file name, with a blank
/// between two of them; empty if there is none.
[[nodiscard]] std::string LookupValues(const DetailEditor& details, const LookupChoice& choice);

/// The text for use in a query: "#", "&", "%" and "+", which would end it or mean something else in
/// it, are percent-coded, all else stays.
[[nodiscard]] std::string LookupText(std::string_view text);

/// The four sites. Without a choice the artist is sent. A browser that cannot be started is not
/// told.
void mnuAmazoncom_Click(Workbench& bench, const LookupChoice& choice);
void mnucddbcom_Click(Workbench& bench, const LookupChoice& choice);
void mnuSearchCovers_Click(Workbench& bench, const LookupChoice& choice);

/// This one searches by artist or by album alone. Other choices are refused with a box; without any
/// the artist is taken, and a box says so.
void mnusonicnet_Click(Workbench& bench, const LookupChoice& choice);

}  // namespace tunemeadow
