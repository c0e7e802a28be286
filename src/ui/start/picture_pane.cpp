// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/start/picture_pane.h"

#include "ui/start/frmPicture.h"
#include "ui/start/picture_decoder.h"
#include "ui/support/qt_text.h"
#include "ui_picture_pane.h"
#include "views/detail_editor.h"
#include "views/picture_kinds.h"

namespace tunemeadow {
namespace {

/// The pane may be drawn larger, but hardly is; the enlarged view decodes for itself.
constexpr QSize kPaneRoom(800, 800);

void SetElided(QLabel& label, const QString& text) {
  label.setText(label.fontMetrics().elidedText(text, Qt::ElideRight, label.width()));
  label.setToolTip(label.text() == text
                       ? QString()
                       : QLatin1String("<qt>") + text.toHtmlEscaped() + QLatin1String("</qt>"));
}

}  // namespace

PicturePane::PicturePane(QWidget* parent) : QFrame(parent), ui_(new Ui::Picture1) {
  ui_->setupUi(this);
  ui_->lblPicType->setForegroundRole(QPalette::PlaceholderText);
  connect(ui_->Image1, &PictureView::clicked, this, &PicturePane::Image1_Click);
  Show(DetailEditor());
}

PicturePane::~PicturePane() = default;

void PicturePane::Show(const DetailEditor& editor) {
  const QImage picture = DecodePicture(editor.picture.data, kPaneRoom * devicePixelRatioF());
  bytes_ = picture.isNull() ? std::string() : editor.picture.data;
  text_ = picture.isNull() ? tr("no picture") : ToQt(PictureText(editor)).simplified();
  kind_ = picture.isNull() ? QString() : ToQt(PictureKindName(editor.picture.kind));
  ui_->Image1->SetPicture(picture);
  ui_->Image1->setToolTip(picture.isNull() ? QString() : tr("Click to enlarge"));
  ShowTexts();
  if (enlarged_ == nullptr || !enlarged_->isVisible()) return;
  if (picture.isNull()) {
    enlarged_->hide();
  } else {
    enlarged_->ShowPicture(bytes_);
  }
}

void PicturePane::ShowTexts() {
  SetElided(*ui_->lblPicText, text_);
  SetElided(*ui_->lblPicType, kind_);
}

void PicturePane::Image1_Click() {
  if (bytes_.empty()) return;
  if (enlarged_ == nullptr) enlarged_ = new frmPicture(this);
  enlarged_->ShowPicture(bytes_);
}

void PicturePane::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  layout()->activate();
  ShowTexts();
}

void PicturePane::hideEvent(QHideEvent* event) {
  QFrame::hideEvent(event);
  if (enlarged_ != nullptr && isHidden()) enlarged_->hide();
}

}  // namespace tunemeadow
