// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/library_tree.h"

#include <QContextMenuEvent>
#include <QDragMoveEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTimer>
#include <algorithm>

#include "ui/kit/highlight_icon.h"
#include "ui/kit/tree_model.h"

namespace tunemeadow {
namespace {

constexpr int kRowsMeasured = 100;  ///< of those in sight and after them, for the column's width
constexpr int kRowMargin = 2;       ///< above and below the text, device independent pixels

class NodeDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                               const QModelIndex& index) const override {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    size.setHeight(std::max(size.height(), option.fontMetrics.height() + 2 * kRowMargin));
    return size;
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->state.testFlag(QStyle::State_Selected) && !option->icon.isNull()) {
      option->icon = IconOnHighlight(*option);
    }
  }
};

}  // namespace

LibraryTree::LibraryTree(QWidget* parent) : QTreeView(parent) {
  setItemDelegate(new NodeDelegate(this));
  // As wide as the nodes in sight, never narrower than the view: what is deep is scrolled to.
  header()->setStretchLastSection(false);
  header()->setResizeContentsPrecision(kRowsMeasured);
  header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setAcceptDrops(true);
}

void LibraryTree::ExpandQuietly(const std::vector<QModelIndex>& indexes) {
  const QSignalBlocker quiet(this);
  // With a layout to come, an expansion is only noted.
  scheduleDelayedItemsLayout();
  for (const QModelIndex& index : indexes) expand(index);
  executeDelayedItemsLayout();
}

int LibraryTree::sizeHintForColumn(int column) const {
  return std::max(QTreeView::sizeHintForColumn(column), viewport()->width());
}

void LibraryTree::scrollTo(const QModelIndex& index, ScrollHint hint) {
  // Qt would go back to the left end at each click.
  const int place = horizontalScrollBar()->value();
  QTreeView::scrollTo(index, hint);
  horizontalScrollBar()->setValue(place);
}

void LibraryTree::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  resizeColumnToContents(0);
}

void LibraryTree::keyPressEvent(QKeyEvent* event) {
  const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
    event->accept();
    if (currentIndex().isValid()) emit EnterPressed(currentIndex());
    return;
  }
  QTreeView::keyPressEvent(event);
}

void LibraryTree::contextMenuEvent(QContextMenuEvent* event) {
  const bool by_key = event->reason() == QContextMenuEvent::Keyboard;
  const QModelIndex index = by_key ? currentIndex() : indexAt(event->pos());
  event->accept();
  if (!index.isValid()) return;
  setCurrentIndex(index);
  const QRect row = visualRect(index).intersected(viewport()->rect());
  const QPoint where = by_key ? viewport()->mapToGlobal(row.isValid() ? row.center() : QPoint(0, 0))
                              : event->globalPos();
  emit MenuWanted(index, where);
}

bool LibraryTree::TakesRows(NodeKind kind) const {
  if (kind == NodeKind::kArchive) return archives_take_rows_ && archives_take_rows_();
  return kind == NodeKind::kPlaylist || kind == NodeKind::kPlaylists;
}

/// The node that takes the rows of a list which are held over it; invalid for anything else.
QModelIndex LibraryTree::TargetOf(const QDropEvent& event) const {
  if (!isEnabled() || dynamic_cast<RowSource*>(event.source()) == nullptr) return {};
  const QModelIndex index = indexAt(event.position().toPoint());
  const TreeNode* node = static_cast<const TreeModel*>(model())->NodeAt(index);
  return node != nullptr && TakesRows(node->kind) ? index : QModelIndex();
}

void LibraryTree::MarkTarget(const QModelIndex& index) {
  if (target_ == index) return;
  target_ = index;
  viewport()->update();
}

void LibraryTree::dragEnterEvent(QDragEnterEvent* event) {
  const bool rows = isEnabled() && dynamic_cast<RowSource*>(event->source()) != nullptr;
  if (!rows) return event->ignore();
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void LibraryTree::dragMoveEvent(QDragMoveEvent* event) {
  const QModelIndex target = TargetOf(*event);
  MarkTarget(target);
  if (!target.isValid()) return event->ignore();
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void LibraryTree::dragLeaveEvent(QDragLeaveEvent* event) {
  MarkTarget({});
  event->accept();
}

void LibraryTree::dropEvent(QDropEvent* event) {
  const QPersistentModelIndex target = TargetOf(*event);
  MarkTarget({});
  if (!target.isValid()) return event->ignore();
  // Nothing left the window: the rows must not count as handed to a player.
  event->setDropAction(Qt::IgnoreAction);
  event->accept();
  QTimer::singleShot(0, this, [this, target] {
    if (target.isValid()) emit RowsDroppedOn(target);
  });
}

void LibraryTree::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
  QTreeView::drawRow(painter, option, index);
  if (target_ != index) return;
  painter->save();
  painter->setPen(palette().color(QPalette::Highlight));
  painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  painter->restore();
}

}  // namespace tunemeadow
