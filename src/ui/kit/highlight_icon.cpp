// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/highlight_icon.h"

#include <QPainter>
#include <QPixmapCache>

namespace tunemeadow {

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

}  // namespace tunemeadow
