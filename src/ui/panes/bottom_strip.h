// SPDX-License-Identifier: GPL-3.0-or-later
// The strip under the list: what stays usable when search and details are hidden. Its buttons are
// connected by whoever has the commands.
#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QPushButton;
class QToolButton;

namespace tunemeadow {

class BottomStrip : public QWidget {
  Q_OBJECT

 public:
  explicit BottomStrip(QWidget* parent = nullptr);

  /// lblTotalTime and lblTotalSize.
  void ShowTotals(const QString& time, const QString& size);

  /// Caption and icon of cmdHideShowTreeview.
  void ShowTreeVisible(bool visible);
  void SetTryPreview(bool on);       ///< chkPlayPreview, without the signal
  void SetTrackSelection(bool on);   ///< chkTrackSelection, without the signal
  void SetPictureShown(bool shown);  ///< chkPicShow, without the signal

 signals:
  void TryPreviewToggled(bool on);
  void TrackSelectionToggled(bool on);
  void PictureToggled(bool shown);

 private:
  void BuildPlayButtons();

  QToolButton* tree_button_;
  QToolButton* play_button_;
  QPushButton* play_selection_button_;
  QCheckBox* preview_box_;
  QCheckBox* selection_box_;
  QCheckBox* picture_box_;
  QLabel* time_;
  QLabel* size_;
};

}  // namespace tunemeadow
