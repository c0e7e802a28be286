// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tree.h"

#include <cstdint>
#include <numeric>
#include <utility>

#include "audio/genres.h"
#include "core/numbers.h"
#include "core/text.h"
#include "run/busy.h"
#include "run/catalogue.h"
#include "store/statement.h"
#include "views/paint_while_working.h"
#include "views/sort_keys.h"
#include "views/workbench.h"

namespace tunemeadow {
namespace {

CellTable RowsOf(Workbench& bench, std::string_view statement) {
  return bench.session.connection.Execute(statement).GetRows();
}

/// The rows; none where the statement fails: a catalogue without the table has told so at the
/// start.
CellTable RowsOrNone(Workbench& bench, const char* statement) {
  try {
    return RowsOf(bench, statement);
  } catch (const DatabaseError&) {
    return CellTable();
  }
}

/// The rows in the order of the names in a column.
std::vector<std::uint32_t> OrderOfNames(const CellTable& rows, std::size_t column) {
  std::vector<std::uint32_t> order(rows.RowCount());
  std::iota(order.begin(), order.end(), 0U);
  SortOrder(
      order, [&](std::uint32_t row) { return rows.Cell(row, column); }, SortKind::kText, true);
  return order;
}

/// Reads the names of playlists and archives, if the catalogue was written since. Whether it was.
bool ReadNames(Workbench& bench) {
  TreeData& tree = bench.tree;
  const std::int64_t written = bench.session.connection.WriteCount();
  if (tree.names_read_at == written) return false;
  tree.names_read_at = written;
  tree.playlists.clear();
  tree.playlist_counts.clear();
  const CellTable lists = RowsOrNone(
      bench, "select count(uid),playlist FROM playlists group by playlist order by playlist");
  for (const std::uint32_t row : OrderOfNames(lists, 1)) {
    tree.playlist_counts.push_back(ParseWhole(lists.Cell(row, 0)).value_or(0));
    tree.playlists.emplace_back(lists.Cell(row, 1));
  }
  tree.archives.clear();
  const CellTable archives =
      RowsOrNone(bench, "select cdarchive FROM cdarchives group by cdarchive order by cdarchive");
  for (const std::uint32_t row : OrderOfNames(archives, 0)) {
    tree.archives.emplace_back(archives.Cell(row, 0));
  }
  return true;
}

/// " [n Files]", or " [shown/n Files]" where the list shows fewer.
std::string CountText(std::size_t shown, bool narrowing, std::int64_t all) {
  const bool fewer = narrowing && static_cast<std::int64_t>(shown) < all;
  return " [" + (fewer ? std::to_string(shown) + "/" : std::string()) + std::to_string(all) +
         " Files]";
}

std::string DatabaseText(const Workbench& bench) {
  return "Database" +
         CountText(bench.ListView1.RowCount(), bench.search_ran, bench.session.track_count);
}

std::string PlaylistText(const Workbench& bench, std::size_t number) {
  const std::string& name = bench.tree.playlists[number];
  const bool open = bench.playlist_in_view && EqualsNoCase(bench.current_playlist, name);
  return name + CountText(bench.ListView3.RowCount(), open, bench.tree.playlist_counts[number]);
}

std::string ParentText(std::string_view word, std::size_t children) {
  return std::string(word) + " [" + std::to_string(children) + "]";
}

void AddPlaylists(const Workbench& bench, TreeBuilder& builder, std::int32_t root) {
  const std::vector<std::string>& names = bench.tree.playlists;
  const std::int32_t parent = builder.Add(root, NodeKind::kPlaylists, "ROOTPlaylist",
                                          ParentText("Playlists", names.size()));
  for (std::size_t i = 0; i < names.size(); ++i) {
    builder.Add(parent, NodeKind::kPlaylist, names[i] + "|" + std::to_string(i + 1),
                PlaylistText(bench, i), names[i]);
  }
}

void AddArchives(Workbench& bench, TreeBuilder& builder, std::int32_t root) {
  const std::vector<std::string>& names = bench.tree.archives;
  const std::int32_t parent = builder.Add(root, NodeKind::kArchives, "ROOTCDArchives",
                                          ParentText("CDArchive", names.size()));
  for (const std::string& name : names) {
    const std::int32_t node =
        builder.Add(parent, NodeKind::kArchive, "CDArchive|" + name, name, name);
    try {
      LoadView4(bench, name, builder, node);
    } catch (const DatabaseError&) {
      // The archive stands without folders.
    }
  }
}

bool NodesStand(const Workbench& bench) {
  const TreeData& tree = bench.tree;
  return tree.nodes_read_at == bench.session.connection.WriteCount() &&
         tree.nodes_kind == tree.kind && tree.nodes_tag == bench.session.preferences.txtCDTag;
}

void RebuildNodes(Workbench& bench) {
  TreeData& tree = bench.tree;
  TreeBuilder builder;
  const std::int32_t root = builder.Add(-1, NodeKind::kRoot, "MYMP3S", "MyMP3s");
  const std::int32_t database =
      builder.Add(root, NodeKind::kDatabase, "Database", DatabaseText(bench));
  tree.expanded.insert("Database");
  tree.nodes_read_at = bench.session.connection.WriteCount();
  tree.nodes_kind = tree.kind;
  tree.nodes_tag = bench.session.preferences.txtCDTag;
  const Busy busy(bench.session, bench.interaction);
  const PaintWhileWorking paint(bench);
  try {
    LoadViewMain(bench, tree.kind, builder, database);
  } catch (const DatabaseError&) {
    // The library stands without groups.
  }
  AddPlaylists(bench, builder, root);
  AddArchives(bench, builder, root);
  tree.nodes = std::make_shared<TreeNodes>(builder.Arrange());
}

TreeNode& NodeAt(TreeNodes& nodes, std::int32_t index) {
  return nodes[static_cast<std::size_t>(index)];
}

/// The counts in the texts of nodes that stand. Whether one has changed.
bool RenewTexts(const Workbench& bench) {
  bool changed = false;
  const auto set = [&changed](TreeNode& node, std::string text) {
    changed |= node.text != text;
    node.text = std::move(text);
  };
  TreeNodes& nodes = *bench.tree.nodes;
  if (nodes.empty()) return false;
  for (std::int32_t i = 0; i < nodes.front().child_count; ++i) {
    TreeNode& node = NodeAt(nodes, nodes.front().first_child + i);
    if (node.kind == NodeKind::kDatabase) set(node, DatabaseText(bench));
    if (node.kind != NodeKind::kPlaylists) continue;
    for (std::int32_t k = 0; k < node.child_count; ++k) {
      TreeNode& list = NodeAt(nodes, node.first_child + k);
      const auto number = ParseWhole(std::string_view(list.key).substr(list.name.size() + 1));
      set(list, PlaylistText(bench, static_cast<std::size_t>(number.value_or(1) - 1)));
    }
  }
  return changed;
}

/// The column that the values of a kind stand in, which is also its part of their keys.
std::string_view ColumnOf(TreeKind kind) {
  return kind == TreeKind::kGenre ? "Genrereal" : kTreeKinds[static_cast<std::size_t>(kind)];
}

/// A genre that is a number is shown by its name.
std::string ShownValue(TreeKind kind, std::string_view value) {
  if (kind != TreeKind::kGenre) return std::string(value);
  const auto number = ParseWhole(value);
  if (!number || *number < 0 || *number >= kGenreCount) return std::string(value);
  return std::string(GenreName(static_cast<int>(*number)).value_or(value));
}

void LoadFolders(Workbench& bench, TreeBuilder& tree, std::int32_t parent) {
  const std::string& tag = bench.session.preferences.txtCDTag;
  std::string statement = "SELECT mp3sTabelle.location FROM mp3sTabelle where ";
  if (!tag.empty()) {
    statement +=
        "left(location," + std::to_string(Length(tag)) + ")<>'" + QuoteInner(tag, '\'') + "' and ";
  }
  statement += "location<>'' group  by location order by location";
  const CellTable rows = RowsOf(bench, std::move(statement));
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    tree.AddFolderOf(rows.Cell(row, 0), parent, NodeKind::kGroup, "MainArchive\\");
  }
}

}  // namespace

void LoadViewMain(Workbench& bench, TreeKind kind, TreeBuilder& tree, std::int32_t parent) {
  if (kind == TreeKind::kLocation) return LoadFolders(bench, tree, parent);
  const std::string field(ColumnOf(kind));
  const CellTable rows =
      RowsOf(bench, "SELECT mp3sTabelle." + field + " FROM mp3sTabelle where " + field +
                        "<>'' group  by " + field + " order by " + field);
  const std::string prefix = "MainArchive\\" + field + "\\";
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    const std::string_view value = rows.Cell(row, 0);
    tree.Add(parent, NodeKind::kGroup, prefix + std::string(value), ShownValue(kind, value));
  }
}

void LoadView4(Workbench& bench, const std::string& archive, TreeBuilder& tree,
               std::int32_t parent) {
  const CellTable rows =
      RowsOf(bench,
             "SELECT mp3sTabelle.location FROM mp3sTabelle ,cdarchives where location<>'' and "
             "cdarchives.cdarchive='" +
                 QuoteInner(archive, '\'') +
                 "' and cdarchives.uid=mp3stabelle.uid group  by location order by location");
  const std::string prefix = "CDArchive|" + archive + "\\";
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    tree.AddFolderOf(rows.Cell(row, 0), parent, NodeKind::kArchiveFolder, prefix, archive);
  }
}

void updatetreeview(Workbench& bench) {
  TreeData& tree = bench.tree;
  bool changed = ReadNames(bench);
  std::string text = DatabaseText(bench);
  changed |= text != tree.database_text;
  tree.database_text = std::move(text);
  if (tree.visible) {
    if (NodesStand(bench)) {
      changed |= RenewTexts(bench);
    } else {
      RebuildNodes(bench);
      changed = true;
    }
  }
  if (changed) bench.Watcher().TreeChanged();
}

void UpdateTrackCount(Workbench& bench) {
  try {
    CountAllTracks(bench.session);
  } catch (const DatabaseError&) {
    // The node keeps the count of last time.
  }
  updatetreeview(bench);
}

void cboTreeSelector_Click(Workbench& bench, TreeKind kind) {
  bench.tree.kind = kind;
  updatetreeview(bench);
}

}  // namespace tunemeadow
