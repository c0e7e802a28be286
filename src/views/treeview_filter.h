// SPDX-License-Identifier: GPL-3.0-or-later
// The window frmTreeviewFilter as data: a tree over the library that fills itself group by group,
// over a connection of its own, and the search that a click on one of its nodes makes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "run/interaction.h"
#include "store/database.h"
#include "views/path_tree.h"
#include "views/tree_data.h"

namespace tunemeadow {

struct Workbench;

class TreeviewFilter {
 public:
  /// `interaction` must outlive the object.
  explicit TreeviewFilter(Interaction& interaction);

  /// Opens the catalogue and starts again, with the root "Database" and four groups that wait for
  /// their load. False, after a box with number and description, where it cannot be opened.
  [[nodiscard]] bool Form_Load(const std::string& connection_string);

  /// Closes the connection. Not to be called while a load runs.
  void Close() noexcept { connection_.Close(); }

  /// The nodes as they are shown, replaced by each load. Keys: "DATABASE", "Artist", "Album",
  /// "Genre", "Location", and below those "ArtistLIST|1", "ArtistAlbumLIST|1|2", "AlbumLIST|1",
  /// "AlbumArtistLIST|1|2", "GenreLIST|1", "LocationLIST|" and the path with a separator at its
  /// end. Numbers count from 1.
  [[nodiscard]] const std::shared_ptr<TreeNodes>& Nodes() const noexcept { return nodes_; }

  /// Runs the load of the group of that key, once; again only after one that was stopped or has
  /// failed, which leaves what it had read so far. True if it ran; false for any other key,
  /// inside a running load, or where the group is there.
  bool Load(std::string_view key);

  /// Called at each row of a load, with its number from 0 and their count. May call Cancel.
  std::function<void(std::size_t row, std::size_t rows)> on_row;

  /// Stops the load that runs.
  void Cancel() noexcept { cancelled_ = true; }
  [[nodiscard]] bool Loading() const noexcept { return loading_; }

  // The loads. Each fills a builder below its node 0. LoadView4ALT makes the same nodes as
  // LoadView4, but finds the folders that are there one by one. Throw DatabaseError.
  void LoadView(TreeBuilder& group);   ///< artist over album
  void LoadView2(TreeBuilder& group);  ///< album over artist
  void LoadView3(TreeBuilder& group);  ///< genre
  void LoadView4(TreeBuilder& group);  ///< location
  void LoadView4ALT(TreeBuilder& group);

 private:
  struct Group;
  static const std::array<Group, 4>& Groups();

  void LoadPairs(TreeBuilder& group, const char* statement, const std::string& outer,
                 const std::string& inner);
  void LoadFolders(TreeBuilder& group);
  bool Step(std::size_t row, std::size_t rows);
  void Compose();

  Interaction& interaction_;
  Connection connection_;
  std::array<TreeNodes, 4> parts_;  ///< each group and what is below it
  std::array<bool, 4> loaded_{};
  std::shared_ptr<TreeNodes> nodes_ = std::make_shared<TreeNodes>();
  bool loading_ = false;
  bool cancelled_ = false;
};

/// What a click on a node below the groups does: brings the library into view with the search
/// fields empty, fills those that the node stands for, and searches. Nothing happens for the root
/// and the groups.
void TreeviewFilter_NodeClick(Workbench& bench, const TreeNodes& nodes, std::int32_t node);

}  // namespace tunemeadow
