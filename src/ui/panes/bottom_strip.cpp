// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/bottom_strip.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>

namespace tunemeadow {
namespace {

QLabel* TotalLabel(QWidget* parent, const char* name, const QString& accessible) {
  auto* label = new QLabel(parent);
  label->setObjectName(QLatin1String(name));
  label->setTextFormat(Qt::PlainText);
  label->setToolTip(accessible);
  return label;
}

}  // namespace

BottomStrip::BottomStrip(QWidget* parent)
    : QWidget(parent),
      tree_button_(new QToolButton(this)),
      play_button_(new QToolButton(this)),
      play_selection_button_(new QPushButton(QStringLiteral("Play selection"), this)),
      preview_box_(new QCheckBox(QStringLiteral("Try Preview"), this)),
      selection_box_(new QCheckBox(QStringLiteral("Track Selection"), this)),
      picture_box_(new QCheckBox(QStringLiteral("Show p&icture"), this)),
      time_(TotalLabel(this, "lblTotalTime", QStringLiteral("Total playtime of the list"))),
      size_(TotalLabel(this, "lblTotalSize", QStringLiteral("Total size of the list"))) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  tree_button_->setObjectName("cmdHideShowTreeview");
  tree_button_->setAccessibleName("Hide or show the tree");
  tree_button_->setFocusPolicy(Qt::StrongFocus);
  tree_button_->setShortcut(Qt::Key_F9);
  BuildPlayButtons();
  selection_box_->setObjectName("chkTrackSelection");
  selection_box_->setToolTip("A click on a track selects its place in the tree");
  picture_box_->setObjectName("chkPicShow");
  picture_box_->setToolTip(
      QStringLiteral("Shows the picture of the clicked track beside its details"));
  row->addWidget(tree_button_);
  row->addWidget(play_button_);
  row->addWidget(play_selection_button_);
  row->addWidget(preview_box_);
  row->addWidget(selection_box_);
  row->addWidget(picture_box_);
  row->addStretch(1);
  row->addWidget(time_);
  row->addSpacing(style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing) * 2);
  row->addWidget(size_);
  connect(selection_box_, &QCheckBox::toggled, this, &BottomStrip::TrackSelectionToggled);
  connect(picture_box_, &QCheckBox::toggled, this, &BottomStrip::PictureToggled);
  ShowTreeVisible(true);
}

void BottomStrip::BuildPlayButtons() {
  play_button_->setObjectName("cmdSpielen");
  play_button_->setIcon(QIcon::fromTheme("play"));
  play_button_->setAccessibleName("Play");
  play_button_->setToolTip("Plays the selected tracks (Ctrl+P)");
  play_button_->setFocusPolicy(Qt::StrongFocus);
  play_selection_button_->setObjectName("cmdPlaySelection");
  play_selection_button_->setToolTip(
      QStringLiteral("Plays the selected tracks and goes back to the list"));
  play_selection_button_->setAutoDefault(false);
  preview_box_->setObjectName("chkPlayPreview");
  preview_box_->setToolTip("Plays the preview of a track that has one");
  connect(preview_box_, &QCheckBox::toggled, this, &BottomStrip::TryPreviewToggled);
}

void BottomStrip::ShowTotals(const QString& time, const QString& size) {
  time_->setText(time);
  size_->setText(size);
}

void BottomStrip::ShowTreeVisible(bool visible) {
  tree_button_->setText(visible ? "<" : ">");
  tree_button_->setToolTip(visible ? "Hides the tree (F9)" : "Shows the tree (F9)");
}

void BottomStrip::SetTrackSelection(bool on) {
  const QSignalBlocker quiet(selection_box_);
  selection_box_->setChecked(on);
}

void BottomStrip::SetTryPreview(bool on) {
  const QSignalBlocker quiet(preview_box_);
  preview_box_->setChecked(on);
}

void BottomStrip::SetPictureShown(bool shown) {
  const QSignalBlocker quiet(picture_box_);
  picture_box_->setChecked(shown);
}

}  // namespace tunemeadow
