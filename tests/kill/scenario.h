// SPDX-License-Identifier: GPL-3.0-or-later
// What is run and cut short: each writer and remover on each form of a file, and groups of files as
// the mass save forms them.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "files/undo_journal.h"

namespace tunemeadow::kill {

/// One writer. True if it says that it has written.
using Step = std::function<bool(UndoJournal& journal, const std::string& path)>;

struct File {
  std::function<std::string()> bytes;  ///< before; made again each time, for a child gets a copy of
                                       ///< all that is kept
  std::vector<Step> steps;             ///< one after the other
};

struct Scenario {
  std::string writer;
  std::string form;
  std::vector<File> files;
  bool grouped = false;  ///< prepared, synced and ended together, each file marked when it is done
};

inline constexpr std::int64_t kGroupGrowth = 4096;

/// `audio` is what stands between the tags. `picture_file` is the path of a picture to be added.
[[nodiscard]] std::vector<Scenario> AllScenarios(const std::string& audio,
                                                 const std::string& picture_file);

/// The frames of the MP3 file `mp3`, without its tags, over and over up to `size` bytes.
[[nodiscard]] std::string AudioOf(const std::string& mp3, std::size_t size);

}  // namespace tunemeadow::kill
