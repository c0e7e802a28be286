// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/track_path.h"

#include "core/paths.h"
#include "tracks/cd_archive_path.h"
#include "views/workbench.h"

namespace tunemeadow {

std::string PathOfRow(Workbench& bench, std::size_t row) {
  std::string path(bench.ListInView().Cell(row, TrackField::location));
  CheckCDArchive(path, bench.session.preferences);
  return path;
}

std::string PathToPlay(Workbench& bench, std::size_t row) {
  const ResultList& list = bench.ListInView();
  if (!bench.try_preview || list.Cell(row, TrackField::preview) != "Available") {
    return PathOfRow(bench, row);
  }
  const Preferences& preferences = bench.session.preferences;
  std::string path = JoinPath(preferences.lblPreviewPath, std::to_string(list.Uid(row)) + ".mp3");
  CheckCDArchive(path, preferences);
  return path;
}

}  // namespace tunemeadow
