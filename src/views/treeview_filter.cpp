// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/treeview_filter.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/text.h"
#include "views/tree.h"
#include "views/workbench.h"

namespace tunemeadow {

/// A group under the root, which is named as its key, and its load.
struct TreeviewFilter::Group {
  const char* key;
  void (TreeviewFilter::*load)(TreeBuilder& group);
};

const std::array<TreeviewFilter::Group, 4>& TreeviewFilter::Groups() {
  static constexpr std::array<Group, 4> kGroups = {{{"Artist", &TreeviewFilter::LoadView},
                                                    {"Album", &TreeviewFilter::LoadView2},
                                                    {"Genre", &TreeviewFilter::LoadView3},
                                                    {"Location", &TreeviewFilter::LoadView4}}};
  return kGroups;
}

namespace {

constexpr std::string_view kLocationKey = "LocationLIST|";

MessageBox StoreErrorBox(const DatabaseError& error) {
  return {.text = std::to_string(error.Number()) + " " + error.what(), .icon = Icon::kExclamation};
}

TreeNodes EmptyGroup(const char* key) {
  TreeBuilder builder;
  const std::int32_t group = builder.Add(-1, NodeKind::kDatabase, key, key);
  builder.Node(group).fills_later = true;
  return builder.Arrange(false);
}

}  // namespace

TreeviewFilter::TreeviewFilter(Interaction& interaction) : interaction_(interaction) {}

bool TreeviewFilter::Form_Load(const std::string& connection_string) {
  try {
    connection_.Open(connection_string);
  } catch (const DatabaseError& error) {
    interaction_.ShowMessage(StoreErrorBox(error));
    return false;
  }
  for (std::size_t i = 0; i < parts_.size(); ++i) parts_[i] = EmptyGroup(Groups()[i].key);
  loaded_ = {};
  Compose();
  return true;
}

bool TreeviewFilter::Load(std::string_view key) {
  const auto& groups = Groups();
  const auto group =
      std::find_if(groups.begin(), groups.end(), [&](const Group& g) { return key == g.key; });
  if (loading_ || group == groups.end()) return false;
  const auto number = static_cast<std::size_t>(group - groups.begin());
  if (loaded_[number]) return false;
  loading_ = true;
  cancelled_ = false;
  TreeBuilder builder;
  builder.Add(-1, NodeKind::kDatabase, group->key, group->key);
  std::optional<DatabaseError> failure;
  try {
    (this->*group->load)(builder);
  } catch (const DatabaseError& error) {
    failure = error;
  }
  loading_ = false;
  loaded_[number] = !cancelled_ && !failure;
  parts_[number] = builder.Arrange();
  parts_[number].front().fills_later = !loaded_[number];
  Compose();
  if (failure) interaction_.ShowMessage(StoreErrorBox(*failure));
  return true;
}

/// Puts the groups together under the root.
void TreeviewFilter::Compose() {
  TreeBuilder whole;
  const std::int32_t root = whole.Add(-1, NodeKind::kRoot, "DATABASE", "Database");
  for (const TreeNodes& part : parts_) {
    std::int32_t first = -1;
    for (const TreeNode& node : part) {
      const std::int32_t above = node.parent < 0 ? root : first + node.parent;
      const std::int32_t added = whole.Add(above, node.kind, node.key, node.text, node.name);
      whole.Node(added).fills_later = node.fills_later;
      if (first < 0) first = added;
    }
  }
  nodes_ = std::make_shared<TreeNodes>(whole.Arrange(false));
}

bool TreeviewFilter::Step(std::size_t row, std::size_t rows) {
  if (on_row) on_row(row, rows);
  return !cancelled_;
}

void TreeviewFilter::LoadPairs(TreeBuilder& group, const char* statement, const std::string& outer,
                               const std::string& inner) {
  const CellTable rows = connection_.Execute(statement).GetRows();
  std::int32_t parent = -1;
  int outer_number = 0;
  int inner_number = 0;
  for (std::size_t row = 0; row < rows.RowCount() && Step(row, rows.RowCount()); ++row) {
    const std::string_view text = rows.Cell(row, 0);
    // The store groups without regard to case; the spelling of the first row stands for all.
    if (parent < 0 || !EqualsNoCase(group.Node(parent).text, text)) {
      ++outer_number;
      inner_number = 0;
      parent =
          group.Add(0, NodeKind::kGroup, outer + std::to_string(outer_number), std::string(text));
    }
    group.Add(parent, NodeKind::kGroup,
              inner + std::to_string(outer_number) + "|" + std::to_string(++inner_number),
              std::string(rows.Cell(row, 1)));
  }
}

void TreeviewFilter::LoadView(TreeBuilder& group) {
  LoadPairs(group,
            "SELECT Artist ,album FROM mp3sTabelle where album<>'' and Artist<>'' group by Artist "
            ",album order by Artist ,album ",
            "ArtistLIST|", "ArtistAlbumLIST|");
}

void TreeviewFilter::LoadView2(TreeBuilder& group) {
  LoadPairs(group,
            "SELECT album ,Artist FROM mp3sTabelle where album<>'' and Artist<>'' group by "
            "album,Artist order by album,Artist",
            "AlbumLIST|", "AlbumArtistLIST|");
}

void TreeviewFilter::LoadView3(TreeBuilder& group) {
  const CellTable rows =
      connection_
          .Execute(
              "SELECT genrereal FROM mp3sTabelle where genrereal<>'' group  by genrereal "
              "order by genrereal")
          .GetRows();
  for (std::size_t row = 0; row < rows.RowCount() && Step(row, rows.RowCount()); ++row) {
    group.Add(0, NodeKind::kGroup, "GenreLIST|" + std::to_string(row + 1),
              std::string(rows.Cell(row, 0)));
  }
}

void TreeviewFilter::LoadFolders(TreeBuilder& group) {
  const CellTable rows = connection_
                             .Execute(
                                 "SELECT location FROM mp3sTabelle where location<>'' group  "
                                 "by location order by location")
                             .GetRows();
  for (std::size_t row = 0; row < rows.RowCount() && Step(row, rows.RowCount()); ++row) {
    group.AddFolderOf(rows.Cell(row, 0), 0, NodeKind::kGroup, kLocationKey);
  }
}

void TreeviewFilter::LoadView4(TreeBuilder& group) { LoadFolders(group); }

void TreeviewFilter::LoadView4ALT(TreeBuilder& group) {
  TreeBuilder walking(FolderLookup::kWalk);
  const TreeNode top = group.Node(0);
  walking.Add(-1, top.kind, top.key, top.text);
  LoadFolders(walking);
  group = std::move(walking);
}

void TreeviewFilter_NodeClick(Workbench& bench, const TreeNodes& nodes, std::int32_t node) {
  if (node < 0 || static_cast<std::size_t>(node) >= nodes.size()) return;
  const TreeNode& clicked = nodes[static_cast<std::size_t>(node)];
  if (clicked.kind != NodeKind::kGroup) return;
  const std::string& above = nodes[static_cast<std::size_t>(clicked.parent)].text;
  BringLibraryIntoView(bench);
  SearchFields& fields = bench.search;
  const auto begins = [&](std::string_view prefix) { return clicked.key.starts_with(prefix); };
  if (begins("ArtistAlbumLIST|")) {
    fields.texts[TrackField::Artist] = above;
    fields.texts[TrackField::album] = clicked.text;
  } else if (begins("ArtistLIST|")) {
    fields.texts[TrackField::Artist] = clicked.text;
  } else if (begins("AlbumLIST|")) {
    fields.texts[TrackField::album] = clicked.text;
  } else if (begins("AlbumArtistLIST|")) {
    fields.texts[TrackField::album] = above;
    fields.texts[TrackField::Artist] = clicked.text;
  } else if (begins("GenreLIST|")) {
    fields.texts[TrackField::genrereal] = clicked.text;
  } else if (begins(kLocationKey)) {
    fields.texts[TrackField::location] =
        PathPattern(std::string_view(clicked.key).substr(kLocationKey.size()), bench.session.quote);
  }
  bench.Watcher().SearchFieldsChanged();
  cmdSuchen(bench);
}

}  // namespace tunemeadow
