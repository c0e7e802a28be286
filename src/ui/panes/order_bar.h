// SPDX-License-Identifier: GPL-3.0-or-later
// vsOrder: the scroll bar beside the list of a playlist. Its handle stands where the selected row
// stands; whoever moves it moves the row.
#pragma once

#include <QScrollBar>
#include <cstddef>
#include <optional>

namespace tunemeadow {

class OrderBar : public QScrollBar {
  Q_OBJECT

 public:
  explicit OrderBar(QWidget* parent = nullptr);

  /// Shows the place (from 0) of the row that can be moved, among `rows`. Without one, or with no
  /// other row, the bar is disabled. Nothing is emitted.
  void ShowPlace(std::size_t rows, std::optional<std::size_t> place);

 signals:
  /// The person wants the row at that place. The bar stands there until ShowPlace.
  void PlaceWanted(int place);
};

}  // namespace tunemeadow
