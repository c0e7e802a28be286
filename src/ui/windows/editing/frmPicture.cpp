// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/editing/frmPicture.h"

#include <QScreen>

#include "ui/kit/picture_decoder.h"
#include "ui_frmPicture.h"

namespace tunemeadow {
namespace {

constexpr qreal kPartOfScreen = 0.9;  ///< leaves room for the window's frame
constexpr QSize kSmallestWindow(200, 200);
constexpr int kEnlargedSide = 480;  ///< of a small picture

}  // namespace

frmPicture::frmPicture(QWidget* parent) : QDialog(parent), ui_(new Ui::frmPicture) {
  ui_->setupUi(this);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  connect(ui_->imgPicture, &PictureView::clicked, this, &frmPicture::hide);
}

frmPicture::~frmPicture() = default;

void frmPicture::ShowPicture(std::string_view bytes) {
  const QWidget* const beside = parentWidget() != nullptr ? parentWidget() : this;
  const QRect desk = beside->screen()->availableGeometry();
  const qreal ratio = beside->devicePixelRatioF();
  const QImage picture = DecodePicture(bytes, desk.size() * ratio);
  ui_->imgPicture->SetPicture(picture);
  if (picture.isNull()) {
    hide();
    return;
  }
  if (!isVisible()) {
    const QSize room = (QSizeF(desk.size()) * kPartOfScreen).toSize();
    QSize wanted = picture.size();
    const QSize least(kEnlargedSide, kEnlargedSide);
    if (wanted.boundedTo(least) == wanted) wanted.scale(least, Qt::KeepAspectRatio);
    if (wanted.width() > room.width() || wanted.height() > room.height()) {
      wanted.scale(room, Qt::KeepAspectRatio);
    }
    resize(wanted.expandedTo(kSmallestWindow).boundedTo(room));
    QRect place(QPoint(0, 0), size());
    place.moveCenter(desk.center());
    move(place.topLeft());
    show();
  }
  raise();
  activateWindow();
  ui_->imgPicture->setFocus();
}

}  // namespace tunemeadow
