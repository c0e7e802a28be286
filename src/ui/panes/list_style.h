// SPDX-License-Identifier: GPL-3.0-or-later
// The program's style with more room beside the texts of a list: its columns stand close, and a
// number at the right of one would touch the text at the left of the next.
#pragma once

#include <QProxyStyle>

namespace tunemeadow {

/// For a list and its header, so that captions and cells stand in line. The header keeps its
/// height.
class ListStyle : public QProxyStyle {
 public:
  static constexpr int kTextMargin = 6;  ///< from a cell's edge to its text, at either side

  /// Over Fusion, by name: without one a proxy takes the desktop's style, not the program's.
  ListStyle() : QProxyStyle(QStringLiteral("fusion")) {}

  [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                                const QWidget* widget = nullptr) const override;
  [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option,
                                       const QSize& size, const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;

 private:
  [[nodiscard]] int AddedMargin() const;
};

}  // namespace tunemeadow
