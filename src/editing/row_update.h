// SPDX-License-Identifier: GPL-3.0-or-later
// What the commands on the tags of many files share: the files of the selected rows, the statement
// that corrects a row after its file was rewritten, and the cells that follow it.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "audio/tag_writing.h"
#include "editing/track_rows.h"
#include "tracks/track_fields.h"
#include "views/workbench.h"

namespace tunemeadow {

struct SelectedFile {
  std::int64_t uid = 0;
  std::string path;        ///< bytes
  std::size_t row = 0;     ///< in the list that was asked
  bool is_written = true;  ///< a command that writes files writes this one
};

struct SelectedFiles {
  std::size_t items = 0;            ///< all selected rows
  std::vector<SelectedFile> files;  ///< those whose path ends in ".mp3", in the shown order
};
[[nodiscard]] SelectedFiles TakeSelectedFiles(Workbench& bench);

/// The statement is `before`, the last-write time of the file, `after`, the uid.
struct RowUpdate {
  std::string_view before;
  std::string_view after;
  std::span<const FieldText> cells;
};

/// What a row is told of a picture that its file has got or lost.
extern const RowUpdate kPictureAdded;
extern const RowUpdate kPictureRemoved;

/// Runs the statement of `file`, then sets the cells wherever a list shows the track, and the flags
/// of the editor where it holds it. A file that is gone keeps its row as it is. The box that tells
/// of a failure, nullopt if there was none; no cell has changed where there is one.
[[nodiscard]] std::optional<MessageBox> TryUpdateRow(Workbench& bench, const RowUpdate& update,
                                                     const SelectedFile& file,
                                                     const TrackRows& rows);

/// Shows the picture of the track in the editor again, if `files` holds it and no other has come
/// into the editor.
void RefreshPicture(Workbench& bench, const SelectedFiles& files);

/// The status line says what saves have dropped or cut, where they have.
void TellLosses(Workbench& bench, const TagLosses& losses);

/// Time since it was made.
class Stopwatch {
 public:
  /// "Elapsed Time: 1.25 seconds"
  [[nodiscard]] std::string Text() const;

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// The closing box of such a command: `line`, line end, elapsed time. Not shown where the person
/// wants no boxes for what went well.
void TellTagResult(Workbench& bench, const std::string& line, const Stopwatch& watch);

}  // namespace tunemeadow
