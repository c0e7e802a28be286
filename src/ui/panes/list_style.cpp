// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/list_style.h"

#include <QStyleOption>

namespace tunemeadow {

int ListStyle::AddedMargin() const {
  return kTextMargin - QProxyStyle::pixelMetric(PM_HeaderMargin);
}

int ListStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const {
  if (metric == PM_FocusFrameHMargin) return kTextMargin - 1;  // views add one pixel to it
  if (metric == PM_HeaderMargin) return kTextMargin;
  return QProxyStyle::pixelMetric(metric, option, widget);
}

// The style applies the header's margin at all four sides; above and below it is taken back.

QSize ListStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
  QSize room = QProxyStyle::sizeFromContents(type, option, size, widget);
  if (type == CT_HeaderSection) room.rheight() -= 2 * AddedMargin();
  return room;
}

void ListStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
  if (element != CE_HeaderLabel || header == nullptr) {
    QProxyStyle::drawControl(element, option, painter, widget);
    return;
  }
  QStyleOptionHeader label = *header;
  label.rect.adjust(0, -AddedMargin(), 0, AddedMargin());
  QProxyStyle::drawControl(element, &label, painter, widget);
}

void ListStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
  const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
  if (element != PE_IndicatorHeaderArrow || header == nullptr) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  QStyleOptionHeader arrow = *header;
  const int side = pixelMetric(PM_HeaderMarkSize, option, widget);
  arrow.rect.setSize(QSize(side, side));
  QProxyStyle::drawPrimitive(element, &arrow, painter, widget);
}

}  // namespace tunemeadow
