// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/picture_pane.h"

#include <QAbstractItemView>

#include "core/paths.h"
#include "editing/picture_panel.h"
#include "ui/kit/picture_decoder.h"
#include "ui/kit/qt_text.h"
#include "ui/kit/tool_tips.h"
#include "ui/windows/editing/frmPicture.h"
#include "ui_picture_pane.h"
#include "views/detail_editor.h"
#include "views/picture_kinds.h"

namespace tunemeadow {
namespace {

/// The pane may be drawn larger, but hardly is; the enlarged view decodes for itself.
constexpr QSize kPaneRoom(800, 800);

void SetElided(QLabel& label, const QString& text) {
  label.setText(label.fontMetrics().elidedText(text, Qt::ElideRight, label.width()));
  SetLiteralToolTip(label, label.text() == text ? QString() : text);
}

}  // namespace

PicturePane::PicturePane(QWidget* parent) : QFrame(parent), ui_(new Ui::Picture1) {
  ui_->setupUi(this);
  FillKinds();
  connect(ui_->Image1, &PictureView::clicked, this, &PicturePane::Image1_Click);
  Show(DetailEditor());
}

PicturePane::~PicturePane() = default;

void PicturePane::FillKinds() {
  for (const std::string_view kind : kPictureKinds) ui_->cboPicType->addItem(ToQt(kind));
  // The pane is narrower than the names; their list need not be.
  ui_->cboPicType->view()->setTextElideMode(Qt::ElideNone);
  ui_->cboPicType->view()->setMinimumWidth(ui_->cboPicType->view()->sizeHintForColumn(0) +
                                           ui_->cboPicType->fontMetrics().height() * 2);
}

void PicturePane::EnableButtons(const DetailEditor& editor) {
  const bool one_track = editor.enabled && !editor.save_all;
  ui_->cmdAddpic->setEnabled(one_track && HasExtension(editor.texts[TrackField::location], "mp3"));
  ui_->cmdSavePic->setEnabled(!editor.picture.data.empty());
}

void PicturePane::ShowCaption(const DetailEditor& editor) {
  ui_->cmdAddpic->setText(ToQt(AddPictureCaption(editor)));
  const QString action = editor.picture.data.empty()
                             ? QStringLiteral("Adds a JPEG picture to the file")
                             : QStringLiteral("Deletes the picture from the file");
  ui_->cmdAddpic->setToolTip(action);
  ui_->cmdAddpic->setAccessibleName(action);
}

void PicturePane::Show(const DetailEditor& editor) {
  const QImage picture = DecodePicture(editor.picture.data, kPaneRoom * devicePixelRatioF());
  bytes_ = picture.isNull() ? std::string() : editor.picture.data;
  text_ = picture.isNull() ? QStringLiteral("no picture") : ToQt(PictureText(editor)).simplified();
  ui_->cboPicType->setCurrentText(
      ToQt(picture.isNull() ? kPictureKinds.back() : PictureKindName(editor.picture.kind)));
  ui_->Image1->SetPicture(picture);
  ui_->Image1->setToolTip(picture.isNull() ? QString() : QStringLiteral("Click to enlarge"));
  ShowTexts();
  ShowCaption(editor);
  EnableButtons(editor);
  if (enlarged_ == nullptr || !enlarged_->isVisible()) return;
  if (picture.isNull()) {
    enlarged_->hide();
  } else {
    enlarged_->ShowPicture(bytes_);
  }
}

void PicturePane::ShowTexts() { SetElided(*ui_->lblPicText, text_); }

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
