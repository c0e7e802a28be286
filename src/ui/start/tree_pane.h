// SPDX-License-Identifier: GPL-3.0-or-later
// The tree at the left, with the choice above it of what the library is grouped by.
#pragma once

#include <QIcon>
#include <QTreeView>
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "views/tree_data.h"

class QComboBox;
class QDropEvent;

namespace tunemeadow {

class TreeModel;

/// The view of the nodes: tells Enter, right clicks and dropped rows apart from the rest.
class LibraryTree : public QTreeView {
  Q_OBJECT

 public:
  explicit LibraryTree(QWidget* parent = nullptr);

  /// Expands these without laying the tree out for each of them; nothing is emitted.
  void ExpandQuietly(const std::vector<QModelIndex>& indexes);

  /// Asked while rows are held over an archive: whether they may be dropped there. Without it, none
  /// may.
  void SetArchivesTakeRows(std::function<bool()> rule) { archives_take_rows_ = std::move(rule); }

  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

 signals:
  void EnterPressed(const QModelIndex& index);
  void MenuWanted(const QModelIndex& index, const QPoint& where);
  void RowsDroppedOn(const QModelIndex& index);

 protected:
  [[nodiscard]] int sizeHintForColumn(int column) const override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

 private:
  [[nodiscard]] bool TakesRows(NodeKind kind) const;
  [[nodiscard]] QModelIndex TargetOf(const QDropEvent& event) const;
  void MarkTarget(const QModelIndex& index);

  std::function<bool()> archives_take_rows_;
  QPersistentModelIndex target_;  ///< node under the rows that are dragged
};

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
