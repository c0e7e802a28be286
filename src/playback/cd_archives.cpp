// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/cd_archives.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "core/numbers.h"
#include "core/paths.h"
#include "core/text.h"
#include "platform/drives.h"
#include "playback/catalogue_writing.h"
#include "store/statement.h"
#include "views/sort_keys.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

void ShowStoreError(Workbench& bench, const DatabaseError& error) {
  bench.interaction.ShowMessage({.text = error.what(), .title = "Error!"});
}

/// Rows of ListView1 that are selected and not archived yet.
std::vector<std::string> ArchivableUids(const ResultList& list, std::string_view tag) {
  std::vector<std::string> uids;
  for (const std::size_t row : list.SelectedRows()) {
    if (!tag.empty() && list.Cell(row, TrackField::location).starts_with(tag)) continue;
    uids.push_back(std::to_string(list.Uid(row)));
  }
  return uids;
}

std::string Joined(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) {
    if (!joined.empty()) joined += ',';
    joined += text;
  }
  return joined;
}

/// The tag and the number of the next disc; the number alone would be wrong with a failing store.
std::string ProposedDisc(Workbench& bench) {
  const std::string& tag = bench.session.preferences.txtCDTag;
  const CellTable rows =
      bench.session.connection
          .Execute("SELECT location FROM mp3sTabelle where location like \"" +
                   QuoteInner(tag, '"') + "%\" group by location order by location")
          .GetRows();
  std::vector<std::string> locations;
  locations.reserve(rows.RowCount());
  for (std::size_t row = 0; row < rows.RowCount(); ++row) locations.emplace_back(rows.Cell(row, 0));
  return tag + NextDiscNumber(locations, tag);
}

std::vector<std::string> MountRoots(Drives& drives) {
  std::vector<std::string> roots;
  for (Drive& drive : drives.Mounted()) roots.push_back(std::move(drive.root));
  return roots;
}

/// Deleting an archive takes its name from the head of every location that begins with it: those of
/// all files of a folder or a drive.
bool NamesARoot(std::string_view disc) {
  const auto is_separator = [](char c) { return c == '/' || c == '\\'; };
  const bool is_drive = disc.size() >= 2 && disc[1] == ':' && LowerAscii(disc[0]) >= 'a' &&
                        LowerAscii(disc[0]) <= 'z' && (disc.size() == 2 || is_separator(disc[2]));
  return is_drive || is_separator(disc.front());
}

MessageBox NoDiscNameBox(const std::string& disc) {
  return {
      .text = "\"" + disc +
              "\" cannot be the name of a disc: it begins like the path of a folder or a drive.\n"
              "Nothing was changed.",
      .icon = Icon::kExclamation};
}

/// One separator between the two: a path that never had a root brings none of its own.
std::string ArchivedLocation(const std::string& disc, std::string_view path) {
  const char separator = SeparatorOf(path);
  const bool rooted = path.empty() || path.front() == separator;
  return disc + (rooted ? std::string() : std::string(1, separator)) + std::string(path);
}

/// The new location of every track, then the rows of the archive.
void ArchiveTracks(CatalogueWriting& writing, Connection& connection, const std::string& disc,
                   const std::string& uids, const std::vector<std::string>& mounts) {
  const CellTable rows =
      connection
          .Execute(
              "SELECT uid,Songname,Artist,genre,quality,location,[year],album FROM "
              "mp3sTabelle where uid in (" +
              uids + ") order by UID")
          .GetRows();
  constexpr std::size_t kLocation = 5;
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    const std::string_view path = PathWithoutRoot(rows.Cell(row, kLocation), mounts);
    writing.Run("Update mp3sTabelle set location=" + Quoted(ArchivedLocation(disc, path), '"') +
                " where UID =" + std::string(rows.Cell(row, 0)));
  }
  writing.Run("insert into CDArchives (CDArchive,uid) select " + Quoted(disc, '"') +
              ",mp3sTabelle.uid from mp3sTabelle where mp3sTabelle.uid in (" + uids + ")");
}

/// lblConfigCDROM without a separator at its end: the locations bring their own.
std::string DriveOfArchives(const Preferences& preferences) {
  std::string drive = preferences.lblConfigCDROM;
  while (drive.ends_with('/') || drive.ends_with('\\')) drive.pop_back();
  return drive;
}

/// A separator after the name, or "CD1" would take the tracks of "CD10" along.
std::string RestoreStatement(const std::string& name, const std::string& drive) {
  const std::string length = std::to_string(Length(name));
  const std::string head = "left(location," + std::to_string(Length(name) + 1) + ") =";
  return "Update mp3sTabelle set Location=" + Quoted(drive, '"') +
         " & right(Location,len(Location)-" + length + ") where " + head + Quoted(name + "/", '"') +
         " collate nocase or " + head + Quoted(name + "\\", '"') + " collate nocase";
}

/// False if there is still none.
bool HasDrive(Workbench& bench, const DriveChooser& choose_drive) {
  const std::string& drive = bench.session.preferences.lblConfigCDROM;
  if (drive.empty() && choose_drive) choose_drive();
  if (!drive.empty()) return true;
  bench.interaction.ShowMessage({.text =
                                     "No CD drive is chosen, so the locations cannot be restored.\n"
                                     "The archive was not deleted.",
                                 .icon = Icon::kExclamation});
  return false;
}

std::optional<std::string> ArchiveOfTree(const Workbench& bench) {
  const TreeSelection& node = bench.tree.selected;
  const bool archive = node.kind == NodeKind::kArchive || node.kind == NodeKind::kArchiveFolder;
  return archive ? std::optional(node.name) : std::nullopt;
}

}  // namespace

std::string_view PathWithoutRoot(std::string_view location, std::span<const std::string> mounts) {
  if (location.size() >= 3 && location.substr(1, 2) == ":\\") return location.substr(2);
  if (location.starts_with("\\\\") && SeparatorOf(location) == '\\') {
    const std::size_t share = location.find('\\', 2);
    const std::size_t behind =
        share == std::string_view::npos ? share : location.find('\\', share + 1);
    return behind == std::string_view::npos ? location : location.substr(behind);
  }
  std::size_t cut = 0;
  for (const std::string& mount : mounts) {
    if (mount.size() > 1 && location.starts_with(mount)) cut = std::max(cut, mount.size() - 1);
  }
  return location.substr(cut);
}

std::string NextDiscNumber(std::span<const std::string> locations, std::string_view tag) {
  std::int64_t largest = 0;
  for (const std::string_view location : locations) {
    const std::size_t separator = location.find(SeparatorOf(location));
    if (separator == std::string_view::npos || separator < tag.size()) continue;
    const auto number = ParseWhole(location.substr(tag.size(), separator - tag.size()));
    if (number && *number < std::numeric_limits<std::int64_t>::max()) {
      largest = std::max(largest, *number);
    }
  }
  std::string next = std::to_string(largest + 1);
  if (next.size() == 1) next.insert(0, 1, '0');
  return next;
}

void mnuExtrasDisk2CD_Click(Workbench& bench, const std::string& offered) {
  const std::vector<std::string> uids =
      ArchivableUids(bench.ListView1, bench.session.preferences.txtCDTag);
  if (uids.empty()) {
    bench.interaction.ShowMessage({.text = "No archievable items selected!"});
    return;
  }
  std::optional<DatabaseError> failure;
  try {
    const auto disc = bench.interaction.AskText(
        "CD-Number:", "Change " + std::to_string(uids.size()) + " item(s)",
        offered.empty() ? ProposedDisc(bench) : offered);
    if (!disc || disc->empty()) return;
    if (NamesARoot(*disc)) {
      bench.interaction.ShowMessage(NoDiscNameBox(*disc));
      return;
    }
    CatalogueWriting writing(bench);
    ArchiveTracks(writing, bench.session.connection, *disc, Joined(uids),
                  MountRoots(bench.world.drives));
  } catch (const DatabaseError& error) {
    failure = error;
  }
  RefreshLocation(bench);
  if (failure) ShowStoreError(bench, *failure);
  cmdSuchen(bench);
}

void mnuItem3CDArchivloeschen_Click(Workbench& bench, const DriveChooser& choose_drive) {
  const auto name = ArchiveOfTree(bench);
  if (!name) {
    bench.interaction.ShowMessage({.text = "No CDArchive is  selected."});
    return;
  }
  const Answer answer = bench.interaction.ShowMessage(
      {.text = "Are you sure to delete CD-Archiv \"" + *name +
               "\"?\nLocations will be renamed to your CD-Drive-letter",
       .buttons = Buttons::kYesNo});
  if (answer != Answer::kYes || !HasDrive(bench, choose_drive)) return;
  std::optional<DatabaseError> failure;
  bool gone_from_view = false;
  try {
    CatalogueWriting writing(bench);
    writing.Run("delete from cdarchives where cdarchive=" + Quoted(*name, '"'));
    bench.tree.selected = {.kind = NodeKind::kArchives, .key = "ROOTCDArchives"};
    gone_from_view = !bench.playlist_in_view && EqualsNoCase(bench.search.cboCDArchive, *name);
    writing.Run(RestoreStatement(*name, DriveOfArchives(bench.session.preferences)));
  } catch (const DatabaseError& error) {
    failure = error;
  }
  RefreshLocation(bench);
  if (failure) ShowStoreError(bench, *failure);
  if (gone_from_view) {
    ShowDatabase(bench);
  } else if (bench.ListInView().RowCount() > 0) {
    cmdSuchen(bench);  // the rows must not keep locations that are gone
  }
  updatetreeview(bench);
}

std::vector<std::string> ArchiveNames(Workbench& bench) {
  std::vector<std::string> names;
  try {
    const CellTable rows =
        bench.session.connection
            .Execute("select CDArchive from CDArchives group by CDArchive order by CDArchive")
            .GetRows();
    names = SortedTexts(rows.RowCount(), [&](std::uint32_t row) { return rows.Cell(row, 0); });
  } catch (const DatabaseError&) {
    // A catalogue without the table has told so at the start.
  }
  return names;
}

}  // namespace tunemeadow
