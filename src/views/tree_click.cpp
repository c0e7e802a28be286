// SPDX-License-Identifier: GPL-3.0-or-later
// From a node of the tree to the tracks, and from a track to its node.
#include <algorithm>
#include <utility>

#include "core/text.h"
#include "views/tree.h"
#include "views/workbench.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kGroups = "MainArchive\\";

bool IsPath(std::string_view rest) {
  return rest.starts_with('/') || rest.starts_with("\\\\") ||
         rest.find(":\\") != std::string_view::npos;
}

/// The field that a node of the library fills; what is below "MainArchive\" tells which. A value
/// may look like a path, so the names of the kinds come first.
void FillField(SearchFields& fields, std::string_view key, char quote) {
  if (!key.starts_with(kGroups)) return;
  key.remove_prefix(kGroups.size());
  constexpr std::pair<std::string_view, TrackField> kFields[] = {
      {"Artist\\", TrackField::Artist},
      {"Album\\", TrackField::album},
      {"Genrereal\\", TrackField::genrereal},
      {"Year\\", TrackField::year}};
  for (const auto& [prefix, field] : kFields) {
    if (!key.starts_with(prefix)) continue;
    fields.texts[field] = key.substr(prefix.size());
    return;
  }
  if (IsPath(key)) fields.texts[TrackField::location] = PathPattern(key, quote);
}

void BringIntoView(Workbench& bench, std::string_view view, bool playlist) {
  bench.current_view = view;
  bench.playlist_in_view = playlist;
  cmdReset_Click(bench);
  bench.Watcher().ListInViewChanged();
}

void ShowGroup(Workbench& bench, const TreeSelection& node) {
  BringIntoView(bench, "Database", false);
  FillField(bench.search, node.key, bench.session.quote);
  bench.Watcher().SearchFieldsChanged();
  cmdSuchen(bench);
}

void ShowArchive(Workbench& bench, const TreeSelection& node) {
  BringIntoView(bench, "CDArchive", false);
  bench.search.cboCDArchive = node.name;
  const std::size_t folder = std::string_view("CDArchive|").size() + node.name.size() + 1;
  if (node.kind == NodeKind::kArchiveFolder && node.key.size() > folder) {
    bench.search.texts[TrackField::location] =
        PathPattern(std::string_view(node.key).substr(folder), bench.session.quote);
  }
  bench.Watcher().SearchFieldsChanged();
  cmdSuchen(bench);
}

void ShowPlaylist(Workbench& bench, const TreeSelection& node) {
  bench.current_playlist = node.name;
  BringIntoView(bench, "Database", true);
  cmdSuchen(bench);
}

/// Index of the child with that key, case-blind as the store groups; -1: there is none.
std::int32_t ChildOfKey(const TreeNodes& nodes, std::int32_t parent, std::string_view key) {
  const TreeNode& node = nodes[static_cast<std::size_t>(parent)];
  for (std::int32_t child = node.first_child; child < node.first_child + node.child_count;
       ++child) {
    if (EqualsNoCase(nodes[static_cast<std::size_t>(child)].key, key)) return child;
  }
  return -1;
}

/// The folder's node in the library, otherwise in the first archive that has it.
std::int32_t NodeOfLocation(const TreeNodes& nodes, std::int32_t database,
                            std::string_view location) {
  std::int32_t found = IndexOfFolder(nodes, database, location);
  for (std::size_t i = 0; found < 0 && i < nodes.size(); ++i) {
    if (nodes[i].kind == NodeKind::kArchive) {
      found = IndexOfFolder(nodes, static_cast<std::int32_t>(i), location);
    }
  }
  return found;
}

std::int32_t NodeOfRow(const TreeData& tree, const ResultList& list, std::size_t row) {
  const TreeNodes& nodes = *tree.nodes;
  const std::int32_t database = IndexOfKey(nodes, "Database");
  if (database < 0 || row >= list.RowCount()) return -1;
  const auto value = [&](std::string_view prefix, TrackField field) {
    const std::string_view cell = list.Cell(row, field);
    if (cell.empty()) return -1;
    return ChildOfKey(nodes, database,
                      std::string(kGroups).append(prefix).append("\\").append(cell));
  };
  switch (tree.nodes_kind) {
    case TreeKind::kLocation:
      return NodeOfLocation(nodes, database, list.Cell(row, TrackField::location));
    case TreeKind::kArtist:
      return value("Artist", TrackField::Artist);
    case TreeKind::kAlbum:
      return value("Album", TrackField::album);
    case TreeKind::kGenre:
      return value("Genrereal", TrackField::genrereal);
    case TreeKind::kYear:
      return value("Year", TrackField::year);
  }
  return -1;
}

void SelectNodeOfRow(Workbench& bench, std::size_t row) {
  TreeData& tree = bench.tree;
  if (!tree.visible) return;
  const TreeNodes& nodes = *tree.nodes;
  const std::int32_t index = NodeOfRow(tree, bench.ListInView(), row);
  if (index < 0) return;
  const TreeNode& node = nodes[static_cast<std::size_t>(index)];
  tree.selected = {node.kind, node.key, node.name};
  for (std::int32_t up = node.parent; up >= 0; up = nodes[static_cast<std::size_t>(up)].parent) {
    tree.expanded.insert(nodes[static_cast<std::size_t>(up)].key);
  }
  bench.Watcher().TreeNodeSelected();
}

}  // namespace

void TreeView1_NodeClick(Workbench& bench, const TreeSelection& node) {
  const TreeSelection clicked = node;  // the search may replace what it lies in
  if (HasTextsForMany(bench.details) && !AskToSaveChanges(bench)) return;
  bench.tree.selected = clicked;
  switch (clicked.kind) {
    case NodeKind::kRoot:
    case NodeKind::kPlaylists:
    case NodeKind::kArchives:
      return;
    case NodeKind::kDatabase:
      return ShowDatabase(bench);
    case NodeKind::kGroup:
      return ShowGroup(bench, clicked);
    case NodeKind::kArchive:
    case NodeKind::kArchiveFolder:
      return ShowArchive(bench, clicked);
    case NodeKind::kPlaylist:
      return ShowPlaylist(bench, clicked);
  }
}

void BringLibraryIntoView(Workbench& bench) {
  BringIntoView(bench, "Database", false);
  SelectDatabaseInTree(bench);
}

void SelectDatabaseInTree(Workbench& bench) {
  const NodeKind kind = bench.tree.selected.kind;
  if (kind != NodeKind::kPlaylist && kind != NodeKind::kArchive &&
      kind != NodeKind::kArchiveFolder) {
    return;
  }
  bench.tree.selected = {.kind = NodeKind::kDatabase, .key = "Database"};
  bench.Watcher().TreeNodeSelected();
}

void ShowDatabase(Workbench& bench) {
  BringLibraryIntoView(bench);
  cmdSuchen(bench);
}

bool LibraryIsAway(const Workbench& bench) noexcept {
  return bench.playlist_in_view || bench.current_view == "CDArchive";
}

void FollowRowInTree(Workbench& bench, std::size_t row) {
  if (bench.track_selection && !bench.playlist_in_view) SelectNodeOfRow(bench, row);
}

void cmdSeekto_Click(Workbench& bench) {
  const auto row = bench.ListInView().RowOfUid(bench.details.uid);
  if (bench.details.uid != 0 && row) SelectNodeOfRow(bench, *row);
}

std::int32_t SelectedNode(const TreeData& tree) noexcept {
  if (tree.selected.kind != NodeKind::kPlaylist) {
    const TreeNodes& nodes = *tree.nodes;
    const auto found = std::find_if(nodes.begin(), nodes.end(), [&](const TreeNode& node) {
      return node.kind == tree.selected.kind && node.key == tree.selected.key;
    });
    return found == nodes.end() ? -1 : static_cast<std::int32_t>(found - nodes.begin());
  }
  const TreeNodes& nodes = *tree.nodes;
  const auto found = std::find_if(nodes.begin(), nodes.end(), [&](const TreeNode& node) {
    return node.kind == NodeKind::kPlaylist && EqualsNoCase(node.name, tree.selected.name);
  });
  return found == nodes.end() ? -1 : static_cast<std::int32_t>(found - nodes.begin());
}

std::string PathPattern(std::string_view path, char quote) {
  std::string pattern;
  while (!path.empty()) {
    const CodePoint point = DecodeUtf8(path);
    if (point.value >= kMalformed || point.value < ' ' ||
        point.value == static_cast<char32_t>(quote)) {
      pattern += '_';
    } else {
      pattern.append(path.substr(0, point.bytes));
    }
    path.remove_prefix(point.bytes);
  }
  return pattern;
}

bool ArchivesTakeRows(const Workbench& bench) noexcept {
  return !bench.playlist_in_view && bench.current_view == "Database";
}

bool NameCombosShown(const Workbench& bench) noexcept { return !LibraryIsAway(bench); }

}  // namespace tunemeadow
