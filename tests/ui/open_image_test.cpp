// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/editing/open_image.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QImage>
#include <QLabel>
#include <QLineEdit>

#include "support/temp_folder.h"
#include "support/window_driver.h"
#include "ui/kit/picture_view.h"
#include "ui/shell/window_interaction.h"

namespace tunemeadow {
namespace {

constexpr char kNothing[] = "Image Width : N/A|Image Height : N/A|Filesize : N/A";

class OpenImageTest : public testing::Test {
 protected:
  OpenImageTest() {
    QImage image(320, 200, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    EXPECT_TRUE(image.save(PathOf("cover.jpg"), "jpeg"));
    folder_.Write("empty.jpg", "");
    folder_.Write("words.jpg", "no picture at all");
  }
  QString PathOf(const char* name) { return QString::fromStdString(folder_.Path(name)); }
  static std::string Lines(const QWidget& window) {
    std::string lines;
    for (const char* name : {"lblImageWidth", "lblImageHeight", "lblFilesize"}) {
      lines += (lines.empty() ? "" : "|") + Find<QLabel>(window, name).text().toStdString();
    }
    return lines;
  }

  TempFolder folder_;
};

TEST_F(OpenImageTest, ThePanelTellsThePictureAndItsSize) {
  ImagePanel panel;
  EXPECT_EQ(Lines(panel), kNothing);
  panel.ShowFile(PathOf("cover.jpg"));
  EXPECT_THAT(Lines(panel), testing::MatchesRegex("Image Width : 320 Pixels\\|Image Height : 200 "
                                                  "Pixels\\|Filesize : [1-9] Kb"));
  EXPECT_TRUE(Find<PictureView>(panel, "imgPreview").HasPicture());
  // The file's content counts, not its name.
  ASSERT_TRUE(QImage(PathOf("cover.jpg")).save(PathOf("png.jpg"), "png"));
  panel.ShowFile(PathOf("png.jpg"));
  EXPECT_THAT(Lines(panel), testing::StartsWith("Image Width : 320 Pixels"));
}

TEST_F(OpenImageTest, WhatIsNoPictureIsNotShown) {
  folder_.Write("folder/x", "");
  ASSERT_EQ(mkfifo(folder_.Path("pipe.jpg").c_str(), 0600), 0);
  ImagePanel panel;
  for (const char* name : {"empty.jpg", "words.jpg", "folder", "missing.jpg", "pipe.jpg"}) {
    panel.ShowFile(PathOf("cover.jpg"));
    panel.ShowFile(PathOf(name));
    EXPECT_EQ(Lines(panel), kNothing) << name;
    EXPECT_FALSE(Find<PictureView>(panel, "imgPreview").HasPicture()) << name;
  }
}

TEST_F(OpenImageTest, ThePanelFollowsTheChoiceInTheDialog) {
  Session session(folder_.Path(), "Tunemeadow");
  WindowInteraction interaction(session);
  WhenModal<OpenImage> person([this](OpenImage& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Add Image");
    EXPECT_EQ(dialog.nameFilters().front(), "JPEG Images (*.jpg)");
    EXPECT_EQ(Lines(dialog), kNothing);
    dialog.selectFile(PathOf("cover.jpg"));
    EXPECT_THAT(Lines(dialog), testing::StartsWith("Image Width : 320 Pixels"));
    Find<QLineEdit>(dialog, "fileNameEdit").setText("words.jpg");
    EXPECT_EQ(Lines(dialog), kNothing);
    Find<QLineEdit>(dialog, "fileNameEdit").setText("cover.jpg");
    EXPECT_THAT(Lines(dialog), testing::StartsWith("Image Width : 320 Pixels"));
    static_cast<QDialog&>(dialog).accept();
  });
  const auto chosen = interaction.ChooseFile({.title = "Add Image",
                                              .filter = "JPEG Images (*.jpg)",
                                              .start = folder_.Path() + "/",
                                              .images = true});
  EXPECT_EQ(chosen, folder_.Path("cover.jpg"));
}

}  // namespace
}  // namespace tunemeadow
