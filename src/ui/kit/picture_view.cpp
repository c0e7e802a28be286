// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/picture_view.h"

#include <QIcon>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <algorithm>

namespace tunemeadow {
namespace {

constexpr int kStandardSide = 150;
constexpr int kSignSide = 48;
constexpr qreal kSignOpacity = 0.35;

}  // namespace

PictureView::PictureView(QWidget* parent) : QAbstractButton(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(kSignSide, kSignSide);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  SetPicture({});
}

void PictureView::SetPicture(const QImage& picture) {
  picture_ = picture;
  scaled_ = {};
  setEnabled(HasPicture());
  if (HasPicture()) {
    setCursor(Qt::PointingHandCursor);
  } else {
    unsetCursor();
  }
  update();
}

QRect PictureView::PictureRect() const {
  if (!HasPicture()) return {};
  QRect place(QPoint(0, 0),
              picture_.size().scaled(size(), Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
  place.moveCenter(rect().center());
  return place;
}

QSize PictureView::sizeHint() const { return {kStandardSide, kStandardSide}; }

void PictureView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (!HasPicture()) {
    const int side = std::min({kSignSide, width(), height()});
    QRect place(0, 0, side, side);
    place.moveCenter(rect().center());
    painter.setOpacity(kSignOpacity);
    QIcon::fromTheme("picture").paint(&painter, place);
    return;
  }
  const QRect place = PictureRect();
  const QSize pixels = place.size() * devicePixelRatioF();
  if (scaled_.size() != pixels) {
    scaled_ = QPixmap::fromImage(
        picture_.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
  painter.drawPixmap(place, scaled_);
  if (hasFocus()) {
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = place;
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
  }
}

void PictureView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    click();
  } else {
    QAbstractButton::keyPressEvent(event);
  }
}

void PictureView::changeEvent(QEvent* event) {
  QAbstractButton::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) update();
}

}  // namespace tunemeadow
