// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/highlight_icon.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>

namespace tunemeadow {
namespace {

/// An area, such as the program's own icon: in one colour it would be nothing but a square. The
/// others are lines, which fill less than half.
bool IsArea(const QPixmap& pixmap) {
  const QImage image = pixmap.toImage();
  qint64 filled = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) filled += image.pixelColor(x, y).alpha() >= 128 ? 1 : 0;
  }
  return 2 * filled > qint64{image.width()} * image.height();
}

}  // namespace

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
    if (!IsArea(pixmap)) {
      QPainter painter(&pixmap);
      painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
      painter.fillRect(pixmap.rect(), color);
    }
    QPixmapCache::insert(key, pixmap);
  }
  QIcon icon(pixmap);
  icon.addPixmap(pixmap, QIcon::Selected);  // else the style would tint it once more
  return icon;
}

}  // namespace tunemeadow
