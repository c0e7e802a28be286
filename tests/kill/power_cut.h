// SPDX-License-Identifier: GPL-3.0-or-later
// What a power cut can leave of a list of calls.
//
// What it assumes: a file's bytes and length are on the disk as they stood at its last sync (or
// that of its volume, which the journal is not on); of every later write, cut and reservation any
// part may be there or not, pages of 4096 bytes one by one, and what is there came in the order of
// the calls. Names in a folder are there as of the folder's last sync, and of the later ones the
// first so many: file systems keep the order of these. A page is written whole or not at all, a
// sync that succeeds tells the truth, and nothing that was synced goes bad: no program trusts a
// disk with less.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "kill/interpose.h"
#include "kill/stage.h"

namespace tunemeadow::kill {

struct PowerCut {
  Image left;
  bool at_the_end = false;  ///< all calls had taken place
};

/// Cuts the power somewhere in `operations`, which began with `before` on the disk. `folder` stands
/// before the names.
[[nodiscard]] PowerCut CutPower(const Image& before, const std::vector<Operation>& operations,
                                const std::string& folder, std::mt19937& random);

/// What all of the operations leave.
[[nodiscard]] Image AllDone(const Image& before, const std::vector<Operation>& operations,
                            const std::string& folder);

}  // namespace tunemeadow::kill
