// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of the tag writers share: a folder with files, another with the journal.
#pragma once

#include <string>
#include <string_view>

#include "audio/tag_writing.h"
#include "files/undo_journal.h"
#include "support/mp3_builder.h"
#include "support/temp_folder.h"

namespace tunemeadow {

struct WriterBench {
  TempFolder folder;
  TempFolder program_folder;
  UndoJournal journal{program_folder.Path()};
  TagWriting writing{journal};
  std::string path = folder.Path("a.mp3");

  /// Makes `bytes` the file at `path`.
  void File(std::string_view bytes) const { folder.Write("a.mp3", bytes); }
  [[nodiscard]] std::string File() const { return folder.Read("a.mp3"); }
};

/// Some bytes that no writer touches.
inline std::string Audio() { return Mp3File().Frames(3).Build(); }

}  // namespace tunemeadow
