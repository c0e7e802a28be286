// SPDX-License-Identifier: GPL-3.0-or-later
// The tree at the left, with the choice above it of what the library is grouped by.
#pragma once

#include <QIcon>
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "views/tree_data.h"

class QComboBox;

namespace tunemeadow {

class LibraryTree;
class TreeModel;

class TreePane : public QWidget {
  Q_OBJECT

 public:
  /// Shows `tree`, and keeps in it what the person selects and expands; it must outlive the pane.
  explicit TreePane(TreeData& tree, QWidget* parent = nullptr);

  /// The nodes as they are now. New ones come with what was expanded and selected before.
  void Show();

  /// The selected node, brought into sight, its parents expanded.
  void ShowSelected();

  /// The rule of LibraryTree for rows over an archive.
  void SetArchivesTakeRows(std::function<bool()> rule);

  void FocusTree();

  /// The kind of the tree in cboTreeSelector, without a signal.
  void ShowKind();

 signals:
  /// A node was clicked, or Enter pressed on it.
  void NodeClicked(const TreeSelection& node);
  void KindChosen(TreeKind kind);
  /// The context menu of a node, at a place of the screen; the node is selected by then.
  void ContextMenuWanted(NodeKind kind, const QPoint& where);
  /// Selected rows of a result list were dropped on a playlist or an archive (`name`), or on the
  /// parent of the playlists (no name). The drag is over when it comes.
  void RowsDropped(NodeKind kind, const std::string& name);

 private:
  void BuildSelector();
  void ConnectTree();
  void Click(const QModelIndex& index);
  void RestoreExpanded();
  [[nodiscard]] QIcon IconOf(const TreeNode& node);

  TreeData& data_;
  QComboBox* selector_;
  LibraryTree* tree_;
  TreeModel* model_;
  bool showing_ = false;  ///< what the view tells now was not done by the person
  std::map<std::string, QIcon> icons_;
};

}  // namespace tunemeadow
