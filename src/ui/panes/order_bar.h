// SPDX-License-Identifier: GPL-3.0-or-later
// vsOrder: the bar beside the list of a playlist that moves the selected track. It is told from a
// scroll bar by its width and by its handle, a button with two arrows, which stands where the
// selected row stands. Whoever moves the handle moves the row.
#pragma once

#include <QIcon>
#include <QScrollBar>
#include <cstddef>
#include <optional>

namespace tunemeadow {

class OrderBar : public QScrollBar {
  Q_OBJECT

 public:
  explicit OrderBar(QWidget* parent = nullptr);

  /// Shows the place (from 0) of the row that can be moved, among `rows`. Without one, or with no
  /// other row, the bar is disabled, and its tool tip says what it waits for. Nothing is emitted.
  void ShowPlace(std::size_t rows, std::optional<std::size_t> place);

 signals:
  /// The person wants the row at that place. The bar stands there until ShowPlace.
  void PlaceWanted(int place);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QIcon icon_;  ///< of the handle
};

}  // namespace tunemeadow
