// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/list_delegate.h"

#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>

#include "ui/kit/highlight_icon.h"
#include "ui/panes/list_model.h"

namespace tunemeadow {
namespace {

constexpr int kRoomAboveAndBelow = 3;  ///< device independent pixels

}  // namespace

ListDelegate::ListDelegate(const ResultList& list, QObject* parent)
    : QStyledItemDelegate(parent), list_(list) {}

void ListDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  const bool selected = list_.IsSelected(static_cast<std::size_t>(index.row()));
  option->state.setFlag(QStyle::State_Selected, selected);
  if (selected && !option->icon.isNull()) option->icon = IconOnHighlight(*option);
}

QSize ListDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QSize size = QStyledItemDelegate::sizeHint(option, index);
  size.setHeight(std::max(size.height(), option.fontMetrics.height() + 2 * kRoomAboveAndBelow));
  return size;
}

bool ListDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                             const QStyleOptionViewItem& option, const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip) {
    return QStyledItemDelegate::helpEvent(event, view, option, index);
  }
  const auto* model = qobject_cast<const ListModel*>(index.model());
  const bool has_more =
      model != nullptr &&
      (!model->IsWritten(index.row()) || sizeHint(option, index).width() > option.rect.width() ||
       model->ShownText(index.row(), index.column()) !=
           model->WholeText(index.row(), index.column()));
  if (has_more) return QStyledItemDelegate::helpEvent(event, view, option, index);
  QToolTip::hideText();
  return true;
}

}  // namespace tunemeadow
