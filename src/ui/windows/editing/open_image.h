// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog in which a picture file is chosen, with a panel that shows the picture.
#pragma once

#include <QFileDialog>
#include <QFrame>

class QLabel;

namespace tunemeadow {

class PictureView;

/// A picture file, its size in pixels and its length.
class ImagePanel : public QFrame {
  Q_OBJECT

 public:
  explicit ImagePanel(QWidget* parent = nullptr);

  /// Shows the JPEG, PNG, GIF or BMP file at `path`. For any other, for a folder and for a file
  /// that cannot be read or is larger than a picture may be, there is no picture and each line ends
  /// with "N/A".
  void ShowFile(const QString& path);

 private:
  PictureView* picture_;
  QLabel* width_;
  QLabel* height_;
  QLabel* length_;
};

/// The program's own file dialog, whatever the desktop has: that of the desktop has no room for the
/// panel.
class OpenImage : public QFileDialog {
  Q_OBJECT

 public:
  OpenImage(QWidget* parent, const QString& title);
};

}  // namespace tunemeadow
