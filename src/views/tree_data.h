// SPDX-License-Identifier: GPL-3.0-or-later
// The tree as data: its nodes, what is expanded and selected, what the two name lists hold. Filled
// by views/tree.h; the window only shows it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace tunemeadow {

/// What a node of the tree stands for.
enum class NodeKind {
  kRoot,      ///< MYMP3S
  kDatabase,  ///< the whole library
  kGroup,     ///< a value of the chosen kind, or a folder
  kPlaylists,
  kPlaylist,
  kArchives,
  kArchive,
  kArchiveFolder
};

/// The node that is selected: the one clicked last, or that of the clicked row.
struct TreeSelection {
  NodeKind kind = NodeKind::kRoot;
  std::string key;   ///< as the nodes are keyed: "MainArchive\Artist\Abba", "CDArchive|MP3-CD01"
  std::string name;  ///< of a playlist, or of an archive and for its folders; otherwise empty
};

/// What the library is grouped by, in the order of cboTreeSelector.
enum class TreeKind { kLocation, kArtist, kAlbum, kGenre, kYear };
inline constexpr std::array<std::string_view, 5> kTreeKinds = {"Location", "Artist", "Album",
                                                               "Genre", "Year"};

/// One node. The children of a node stand side by side, in the order in which they are shown.
struct TreeNode {
  NodeKind kind = NodeKind::kRoot;
  std::int32_t parent = -1;  ///< index of its parent; -1: it has none
  std::int32_t first_child = 0;
  std::int32_t child_count = 0;
  bool fills_later = false;  ///< shown as if it had children, which are read when it is clicked
  std::string text;          ///< what is shown; bytes where it is part of a path
  std::string key;
  std::string name;  ///< as in TreeSelection
};

/// Parents stand before their children; the first node is the root. Empty before the first filling.
using TreeNodes = std::vector<TreeNode>;

/// What the tree and the two combos show.
struct TreeData {
  TreeSelection selected;
  TreeKind kind = TreeKind::kLocation;  ///< chosen in cboTreeSelector
  bool visible = true;                  ///< the pane is shown; a hidden one is not filled

  /// Replaced by each rebuild, so that who shows the old ones may keep them meanwhile.
  std::shared_ptr<TreeNodes> nodes = std::make_shared<TreeNodes>();
  std::unordered_set<std::string> expanded{"MYMP3S", "Database"};  ///< keys, also of other kinds

  std::string database_text;           ///< "Database [n Files]", "Database [shown/all Files]"
  std::vector<std::string> playlists;  ///< names for cboPlaylists, without the empty entry
  std::vector<std::int64_t> playlist_counts;  ///< tracks in each of them
  std::vector<std::string> archives;          ///< names for cboCDArchive, without the empty entry

  // Write counts of the catalogue at the moment of reading; none: not read yet.
  std::optional<std::int64_t> names_read_at;
  std::optional<std::int64_t> nodes_read_at;
  TreeKind nodes_kind = TreeKind::kLocation;  ///< what the nodes are grouped by
  std::string nodes_tag;                      ///< txtCDTag when they were read
};

}  // namespace tunemeadow
