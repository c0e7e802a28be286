// SPDX-License-Identifier: GPL-3.0-or-later
// How nodes of a tree are put together: added in any order below their parents, folder by folder
// for paths, and at the end arranged as they are shown.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "views/tree_data.h"

namespace tunemeadow {

/// Takes the parts of a folder one by one: "/music/Rock/" gives "/music" and "Rock",
/// "\\server\share\" gives "\\server" and "share", "C:\Rock\" gives "C:" and "Rock". Empty parts
/// are skipped; a folder that is nothing but its root has none.
class FolderParts {
 public:
  /// `folder` ends with its separator, as FolderPart gives it, and must outlive the object.
  explicit FolderParts(std::string_view folder) noexcept;

  /// Steps to the next part; false after the last one.
  bool Next() noexcept;

  [[nodiscard]] std::string_view Part() const noexcept { return part_; }
  /// The path up to and including the part and the separator after it.
  [[nodiscard]] std::string_view PathSoFar() const noexcept { return folder_.substr(0, next_); }

 private:
  std::string_view folder_;
  std::string_view part_;
  char separator_;
  std::size_t next_ = 0;
};

/// How a folder that is there already is found.
enum class FolderLookup {
  kKnownKeys,  ///< in a table of the keys so far
  kWalk        ///< among the children of its parent, one by one
};

class TreeBuilder {
 public:
  explicit TreeBuilder(FolderLookup lookup = FolderLookup::kKnownKeys) : lookup_(lookup) {}

  /// Adds a node, and returns its index until Arrange.
  std::int32_t Add(std::int32_t parent, NodeKind kind, std::string key, std::string text,
                   std::string name = {});

  /// Below `top`, adds what is missing of the folder that `location` lies in. Folders that differ
  /// in nothing but case are one node, with the spelling that came first. Keys are `prefix` and the
  /// path so far, with the separator at its end. A folder as the one before costs next to nothing.
  void AddFolderOf(std::string_view location, std::int32_t top, NodeKind kind,
                   std::string_view prefix, std::string_view name = {});

  [[nodiscard]] TreeNode& Node(std::int32_t index) {
    return nodes_[static_cast<std::size_t>(index)];
  }

  /// The nodes, the children of each one sorted by their texts (core/collation.h), those of equal
  /// texts in the order in which they came. The builder is empty then. Indexes change.
  [[nodiscard]] TreeNodes Arrange(bool sorted = true);

 private:
  [[nodiscard]] std::int32_t Find(std::int32_t parent, std::string_view part);

  FolderLookup lookup_ = FolderLookup::kKnownKeys;
  TreeNodes nodes_;
  std::unordered_map<std::string, std::int32_t> known_;  ///< parent and part in upper case
  std::string scratch_;                                  ///< the key asked for
  std::string last_folder_;
  std::int32_t last_top_ = -1;
};

/// Index of the node whose key this is, compared exactly; -1: there is none.
[[nodiscard]] std::int32_t IndexOfKey(const TreeNodes& nodes, std::string_view key) noexcept;

/// Index of the node for the folder that `location` lies in, among what is below `top`, case-blind;
/// -1: there is none.
[[nodiscard]] std::int32_t IndexOfFolder(const TreeNodes& nodes, std::int32_t top,
                                         std::string_view location);

}  // namespace tunemeadow
