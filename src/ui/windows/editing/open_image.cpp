// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/editing/open_image.h"

#include <QFile>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <string_view>

#include "ui/kit/picture_decoder.h"
#include "ui/kit/picture_view.h"

namespace tunemeadow {
namespace {

constexpr qint64 kLargestFile = 64LL << 20;  // bytes that are read for a glance at a picture
constexpr qint64 kBytesOfKb = 1024;
constexpr int kPanelWidthInCharacters = 32;

QLabel* PanelLabel(QFrame& panel, const char* name) {
  auto* label = new QLabel(&panel);
  label->setObjectName(QLatin1String(name));
  label->setTextFormat(Qt::PlainText);
  panel.layout()->addWidget(label);
  return label;
}

/// Empty for whatever is not worth reading. A pipe or a device would never end.
QByteArray BytesOfFile(const QString& path) {
  const QFileInfo info(path);
  QFile file(path);
  if (!info.isFile() || info.size() > kLargestFile || !file.open(QIODevice::ReadOnly)) return {};
  return file.read(kLargestFile);
}

/// Rounded up: no file that holds something is of 0 Kb.
QString KbOf(qint64 bytes) { return QString::number((bytes + kBytesOfKb - 1) / kBytesOfKb); }

}  // namespace

ImagePanel::ImagePanel(QWidget* parent) : QFrame(parent) {
  setObjectName("fraImage");
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  picture_ = new PictureView(this);
  picture_->setObjectName("imgPreview");
  picture_->setAccessibleName("Chosen picture");
  picture_->setFocusPolicy(Qt::NoFocus);
  picture_->setAttribute(Qt::WA_TransparentForMouseEvents);  // there is nothing to press
  rows->addWidget(picture_, 1);
  width_ = PanelLabel(*this, "lblImageWidth");
  height_ = PanelLabel(*this, "lblImageHeight");
  length_ = PanelLabel(*this, "lblFilesize");
  setFixedWidth(fontMetrics().averageCharWidth() * kPanelWidthInCharacters);
  ShowFile({});
}

void ImagePanel::ShowFile(const QString& path) {
  const QByteArray bytes = BytesOfFile(path);
  const std::string_view content(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  const QImage picture = DecodePicture(content, QSize(width(), width()) * devicePixelRatioF());
  picture_->SetPicture(picture);
  if (picture.isNull()) {
    width_->setText("Image Width : N/A");
    height_->setText("Image Height : N/A");
    length_->setText("Filesize : N/A");
    return;
  }
  const QSize size = PictureSize(content);
  width_->setText(QStringLiteral("Image Width : %1 Pixels").arg(size.width()));
  height_->setText(QStringLiteral("Image Height : %1 Pixels").arg(size.height()));
  length_->setText(QStringLiteral("Filesize : %1 Kb").arg(KbOf(bytes.size())));
}

OpenImage::OpenImage(QWidget* parent, const QString& title) : QFileDialog(parent, title) {
  setOption(QFileDialog::DontUseNativeDialog);  // makes the layout that the panel goes into
  setFileMode(QFileDialog::ExistingFile);
  auto* panel = new ImagePanel(this);
  if (auto* grid = qobject_cast<QGridLayout*>(layout())) {
    grid->addWidget(panel, 0, grid->columnCount(), grid->rowCount(), 1);
  }
  // A chosen name and a typed one both come into this field; only a chosen one is told elsewhere.
  if (auto* name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
    connect(name, &QLineEdit::textChanged, panel, [this, panel](const QString& text) {
      panel->ShowFile(text.isEmpty() ? text : directory().absoluteFilePath(text));
    });
  }
  const QSize size = sizeHint();
  resize(size.width() + panel->width(), size.height());
}

}  // namespace tunemeadow
