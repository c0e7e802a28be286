// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/order_bar.h"

#include <QProxyStyle>
#include <QSignalBlocker>
#include <QStyleOptionButton>
#include <QStyleOptionSlider>
#include <QStylePainter>
#include <algorithm>

namespace tunemeadow {
namespace {

constexpr int kWidth = 24;   ///< device independent pixels, as all that follow
constexpr int kHandle = 30;  ///< height of the handle, whatever the number of rows
constexpr int kIcon = 16;
constexpr int kGroove = 2;

/// A wide bar with a handle of one height.
class OrderStyle : public QProxyStyle {
 public:
  OrderStyle() : QProxyStyle(QStringLiteral("fusion")) {}

  [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                const QWidget* widget) const override {
    return metric == PM_ScrollBarExtent ? kWidth : QProxyStyle::pixelMetric(metric, option, widget);
  }

  [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                     SubControl part, const QWidget* widget) const override {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || bar == nullptr) {
      return QProxyStyle::subControlRect(control, option, part, widget);
    }
    const QRect groove = QProxyStyle::subControlRect(control, option, SC_ScrollBarGroove, widget);
    QRect handle = groove;
    handle.setHeight(std::min(kHandle, groove.height()));
    handle.translate(0, sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                                groove.height() - handle.height()));
    switch (part) {
      case SC_ScrollBarSlider:
        return handle;
      case SC_ScrollBarSubPage:
        return {groove.topLeft(), handle.topRight()};
      case SC_ScrollBarAddPage:
        return {handle.bottomLeft(), groove.bottomRight()};
      default:
        return QProxyStyle::subControlRect(control, option, part, widget);
    }
  }
};

}  // namespace

OrderBar::OrderBar(QWidget* parent)
    : QScrollBar(Qt::Vertical, parent), icon_(QIcon::fromTheme(QStringLiteral("order"))) {
  setObjectName("vsOrder");
  setAccessibleName("Place of the selected track");
  setFocusPolicy(Qt::StrongFocus);
  setSingleStep(1);
  setPageStep(1);
  setTracking(false);  // each place on the way would be stored
  auto* const order_style = new OrderStyle;
  order_style->setParent(this);
  setStyle(order_style);
  connect(this, &QScrollBar::valueChanged, this, &OrderBar::PlaceWanted);
  ShowPlace(0, std::nullopt);
}

void OrderBar::ShowPlace(std::size_t rows, std::optional<std::size_t> place) {
  const QSignalBlocker quiet(this);
  setRange(0, rows > 1 ? static_cast<int>(rows) - 1 : 0);
  setValue(static_cast<int>(place.value_or(0)));
  setEnabled(rows > 1 && place.has_value());
  setToolTip(isEnabled()
                 ? "Moves the selected track up or down in the playlist: drag the handle, or "
                   "click an arrow"
                 : "Moves a track up or down in the playlist: show the whole playlist and "
                   "select the track first");
}

void OrderBar::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionSlider bar;
  initStyleOption(&bar);
  const QRect handle =
      style()->subControlRect(QStyle::CC_ScrollBar, &bar, QStyle::SC_ScrollBarSlider, this);
  bar.subControls = QStyle::SC_ScrollBarSubLine | QStyle::SC_ScrollBarAddLine;
  painter.drawComplexControl(QStyle::CC_ScrollBar, bar);
  QRect groove =
      style()->subControlRect(QStyle::CC_ScrollBar, &bar, QStyle::SC_ScrollBarGroove, this);
  groove.setLeft(groove.center().x() - kGroove / 2);
  groove.setWidth(kGroove);
  painter.fillRect(groove, palette().color(QPalette::Mid));

  QStyleOptionButton button;
  button.initFrom(this);
  button.rect = handle;
  button.state.setFlag(isSliderDown() ? QStyle::State_Sunken : QStyle::State_Raised);
  painter.drawControl(QStyle::CE_PushButtonBevel, button);
  QRect icon(0, 0, kIcon, kIcon);
  icon.moveCenter(handle.center());
  icon_.paint(&painter, icon, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
}

}  // namespace tunemeadow
