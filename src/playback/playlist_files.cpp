// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/playlist_files.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "core/paths.h"
#include "core/text.h"
#include "files/durable_file.h"
#include "files/file_facts.h"
#include "playback/missing_file.h"
#include "tracks/cd_archive_path.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kListLineEnd = "\r\n";

struct PlaylistFormat {
  std::string_view filter;
  std::string_view offered;    ///< the name that the dialog begins with
  std::string_view extension;  ///< with its point
  std::string (*text)(std::span<const std::string> paths);
};

constexpr PlaylistFormat kM3u{"Winamp-Playlist (*.m3u)", "*.m3u", ".m3u", &M3uText};
constexpr PlaylistFormat kPls{"Sonique-Playlist (*.pls)", "*.pls", ".pls", &PlsText};

bool AnyMp3Selected(const ResultList& list, const std::vector<std::size_t>& rows) {
  return std::any_of(rows.begin(), rows.end(), [&](std::size_t row) {
    return EndsWithNoCase(list.Cell(row, TrackField::location), ".MP3");
  });
}

constexpr std::string_view kFolderKey = "lblExportFolder";  ///< where the last file was written

/// The name of the open playlist, as far as a file can have it; otherwise the format's pattern.
std::string OfferedName(const Workbench& bench, const PlaylistFormat& format) {
  if (!bench.playlist_in_view || bench.current_playlist.empty()) {
    return std::string(format.offered);
  }
  std::string name = bench.current_playlist;
  std::replace(name.begin(), name.end(), '/', '_');
  return name.append(format.extension);
}

/// The last folder, otherwise that of the program, with the name.
std::string OfferedPath(const Workbench& bench, const PlaylistFormat& format) {
  const Session& session = bench.session;
  const std::string last = session.ini.GetString(kConfigSection, kFolderKey, "", 0);
  return JoinPath(IsDirectory(last) ? last : session.program_folder, OfferedName(bench, format));
}

/// The place of the file, with its extension. The pattern that the dialog begins with is no name.
std::optional<std::string> ChooseDestination(Workbench& bench, const PlaylistFormat& format) {
  for (;;) {
    auto path = bench.interaction.ChooseFile({.title = "Export",
                                              .filter = std::string(format.filter),
                                              .start = OfferedPath(bench, format),
                                              .for_saving = true,
                                              .asks_itself = true});
    if (!path || path->empty()) return std::nullopt;
    if (FileNamePart(*path) == format.offered) continue;
    if (!EndsWithNoCase(*path, format.extension)) path->append(format.extension);
    return path;
  }
}

/// The files of the rows that are there; nullopt if the person aborts.
std::optional<std::vector<std::string>> FilesThatAreThere(Workbench& bench,
                                                          const std::vector<std::size_t>& rows) {
  std::vector<std::string> paths;
  for (const std::size_t row : rows) {
    std::string path(bench.ListInView().Cell(row, TrackField::location));
    CheckCDArchive(path, bench.session.preferences);
    const FileState state = LookForFile(bench.interaction, path);
    if (state == FileState::kAborted) return std::nullopt;
    if (state == FileState::kThere) paths.push_back(std::move(path));
  }
  return paths;
}

bool MayWrite(Workbench& bench, const std::string& destination) {
  return !MyFileExists(destination) ||
         bench.interaction.ShowMessage(
             {.text = "Overwrite file?", .title = "File exists", .buttons = Buttons::kYesNo}) ==
             Answer::kYes;
}

/// No box where that fails; the player that is to read the file will say that it is missing.
void WriteAndTell(Workbench& bench, const std::string& destination, const PlaylistFormat& format,
                  const std::vector<std::string>& paths) {
  if (!ReplaceFile(destination, format.text(paths))) {
    bench.interaction.SetStatus(DisplayPath(destination) + " cannot be written.");
    return;
  }
  bench.session.ini.SaveString(kConfigSection, kFolderKey, FolderPart(destination));
  const std::string written = std::to_string(paths.size());
  const std::size_t all = bench.ListInView().RowCount();
  const std::string of_all = paths.size() < all ? " of " + std::to_string(all) : std::string();
  bench.interaction.SetStatus(written + of_all + (all == 1 ? " track" : " tracks") + " written.");
}

void ExportPlaylist(Workbench& bench, const PlaylistFormat& format) {
  const std::vector<std::size_t> rows = bench.ListInView().SelectedRows();
  if (!AnyMp3Selected(bench.ListInView(), rows)) {
    bench.interaction.ShowMessage({.text = "No Objects selected!", .icon = Icon::kInformation});
    return;
  }
  const auto destination = ChooseDestination(bench, format);
  if (!destination) return;
  const auto paths = FilesThatAreThere(bench, rows);
  if (!paths || !MayWrite(bench, *destination)) return;
  WriteAndTell(bench, *destination, format, *paths);
}

}  // namespace

std::string M3uText(std::span<const std::string> paths) {
  std::string text = "#EXTM3U";
  text += kListLineEnd;
  for (const std::string& path : paths) text.append(path).append(kListLineEnd);
  return text;
}

std::string PlsText(std::span<const std::string> paths) {
  std::string text = "[playlist]";
  text += kListLineEnd;
  std::size_t number = 0;
  for (const std::string& path : paths) {
    text.append("File")
        .append(std::to_string(++number))
        .append("=")
        .append(path)
        .append(kListLineEnd);
  }
  text.append("NumberOfEntries = ").append(std::to_string(number)).append(kListLineEnd);
  return text.append("Version = 2").append(kListLineEnd);
}

void mnuExporttoPlaylist_Click(Workbench& bench) { ExportPlaylist(bench, kM3u); }

void mnuExporttoplsPlaylist_Click(Workbench& bench) { ExportPlaylist(bench, kPls); }

}  // namespace tunemeadow
