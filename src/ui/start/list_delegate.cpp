// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/start/list_delegate.h"

#include <QHelpEvent>
#include <QIcon>
#include <QPainter>
#include <QPixmapCache>
#include <QToolTip>
#include <algorithm>

#include "ui/start/list_model.h"

namespace tunemeadow {
namespace {

constexpr int kRoomAboveAndBelow = 3;  ///< device independent pixels

/// The icon in the colour of selected text: its own colours fade on the highlight.
QIcon IconOnHighlight(const QStyleOptionViewItem& option) {
  const bool active = option.state.testFlag(QStyle::State_Active);
  const QColor color = option.palette.color(active ? QPalette::Active : QPalette::Inactive,
                                            QPalette::HighlightedText);
  const qreal ratio = option.widget != nullptr ? option.widget->devicePixelRatioF() : 1.0;
  const QString key = QStringLiteral("tm_icon_%1_%2_%3_%4")
                          .arg(option.icon.cacheKey())
                          .arg(option.decorationSize.width())
                          .arg(ratio)
                          .arg(color.rgba());
  QPixmap pixmap;
  if (!QPixmapCache::find(key, &pixmap)) {
    pixmap = option.icon.pixmap(option.decorationSize, ratio);
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    painter.end();
    QPixmapCache::insert(key, pixmap);
  }
  QIcon icon(pixmap);
  icon.addPixmap(pixmap, QIcon::Selected);  // else the style would tint it once more
  return icon;
}

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
  const bool cut = model != nullptr && (sizeHint(option, index).width() > option.rect.width() ||
                                        model->ShownText(index.row(), index.column()) !=
                                            model->WholeText(index.row(), index.column()));
  if (cut) return QStyledItemDelegate::helpEvent(event, view, option, index);
  QToolTip::hideText();
  return true;
}

}  // namespace tunemeadow
