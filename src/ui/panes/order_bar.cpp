// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/order_bar.h"

#include <QSignalBlocker>

namespace tunemeadow {

OrderBar::OrderBar(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {
  setObjectName("vsOrder");
  setAccessibleName("Place of the selected track");
  setToolTip("Moves the selected track up or down in the playlist");
  setFocusPolicy(Qt::StrongFocus);
  setSingleStep(1);
  setPageStep(1);
  setTracking(false);  // each place on the way would be stored
  connect(this, &QScrollBar::valueChanged, this, &OrderBar::PlaceWanted);
  ShowPlace(0, std::nullopt);
}

void OrderBar::ShowPlace(std::size_t rows, std::optional<std::size_t> place) {
  const QSignalBlocker quiet(this);
  setRange(0, rows > 1 ? static_cast<int>(rows) - 1 : 0);
  setValue(static_cast<int>(place.value_or(0)));
  setEnabled(rows > 1 && place.has_value());
}

}  // namespace tunemeadow
