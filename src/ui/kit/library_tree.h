// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPersistentModelIndex>
#include <QTreeView>
#include <functional>
#include <utility>
#include <vector>

#include "views/tree_data.h"

class QDropEvent;

namespace tunemeadow {

/// A view whose drags carry the selected rows of a result list.
class RowSource {
 public:
  virtual ~RowSource() = default;
};

/// The view of the nodes: reports Enter, right clicks and dropped rows apart from the rest.
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

}  // namespace tunemeadow
