// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/picture_pane.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QComboBox>
#include <QImageWriter>
#include <QLabel>
#include <QLoggingCategory>
#include <QPainter>
#include <QPushButton>

#include "support/window_driver.h"
#include "ui/kit/picture_decoder.h"
#include "ui/kit/picture_view.h"
#include "ui/windows/editing/frmPicture.h"
#include "views/detail_editor.h"

namespace tunemeadow {
namespace {

constexpr QSize kRoom(400, 300);

/// A picture file: blue, its upper half red.
std::string PictureFile(const char* format, const QSize& size,
                        QImage::Format depth = QImage::Format_RGB32) {
  QImage image(size, depth);
  image.fill(Qt::blue);
  if (depth == QImage::Format_RGB32) {
    QPainter(&image).fillRect(0, 0, size.width(), size.height() / 2, Qt::red);
  }
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  EXPECT_TRUE(QImageWriter(&buffer, format).write(image)) << format;
  return bytes.toStdString();
}

/// A GIF of 2 by 1 pixels, as the format's description builds it: there is no writer for it.
std::string SmallGif() {
  constexpr unsigned char kBytes[] = {'G', 'I', 'F', '8', '9', 'a', 2,   0,    1,    0, 0x80, 0,
                                      0,   255, 0,   0,   0,   0,   255, 0x2C, 0,    0, 0,    0,
                                      2,   0,   1,   0,   0,   2,   2,   0x44, 0x0A, 0, 0x3B};
  return {reinterpret_cast<const char*>(kBytes), sizeof kBytes};
}

TEST(DecodePicture, KnowsFourFormatsByTheirContent) {
  for (const char* format : {"jpeg", "png", "bmp"}) {
    const QImage image = DecodePicture(PictureFile(format, {120, 80}), kRoom);
    ASSERT_EQ(image.size(), QSize(120, 80)) << format;
    EXPECT_GT(image.pixelColor(60, 10).red(), 200) << format;
    EXPECT_GT(image.pixelColor(60, 70).blue(), 200) << format;
  }
  EXPECT_EQ(DecodePicture(SmallGif(), kRoom).size(), QSize(2, 1));
}

TEST(DecodePicture, ALargePictureIsBroughtDownToTheRoom) {
  EXPECT_EQ(DecodePicture(PictureFile("jpeg", {2000, 1000}), kRoom).size(), QSize(400, 200));
  EXPECT_EQ(DecodePicture(PictureFile("png", {100, 3000}), kRoom).size(), QSize(10, 300));
  EXPECT_EQ(DecodePicture(PictureFile("png", {5000, 2}), kRoom).size(), QSize(400, 1));
}

TEST(DecodePicture, WhatIsNoPictureIsNone) {
  EXPECT_TRUE(DecodePicture("", kRoom).isNull());
  EXPECT_TRUE(DecodePicture("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>", kRoom)
                  .isNull());
  EXPECT_TRUE(DecodePicture("\xFF\xD8\xFF no jpeg at all", kRoom).isNull());
  EXPECT_TRUE(DecodePicture("\x89PNG\r\n\x1A\n", kRoom).isNull());
}

TEST(DecodePicture, EveryCutOfAPictureIsHarmless) {
  QLoggingCategory::setFilterRules("qt.gui.imageio*=false");  // a line for each cut
  for (const char* format : {"jpeg", "png", "bmp"}) {
    const std::string whole = PictureFile(format, {40, 30});
    for (std::size_t cut = 0; cut < whole.size(); cut += 1 + whole.size() / 200) {
      const QImage image = DecodePicture(std::string_view(whole).substr(0, cut), kRoom);
      EXPECT_TRUE(image.isNull() || image.size() == QSize(40, 30)) << format << cut;
    }
  }
}

TEST(DecodePicture, APackedBombIsNotUnpacked) {
  const std::string bomb = PictureFile("png", {8000, 7000}, QImage::Format_Mono);
  EXPECT_LT(bomb.size(), 100'000U);
  EXPECT_TRUE(DecodePicture(bomb, kRoom).isNull());

  std::string scans = PictureFile("jpeg", {1000, 1000});
  EXPECT_FALSE(DecodePicture(scans, kRoom).isNull());
  for (int i = 0; i < 600; ++i) scans += "\xFF\xDA";
  EXPECT_TRUE(DecodePicture(scans, kRoom).isNull());
}

class PicturePaneTest : public testing::Test {
 protected:
  void SetUp() override {
    pane_.resize(200, 200);
    pane_.show();
  }
  void Show(std::string bytes, const std::string& description = {}, std::uint8_t kind = 0) {
    DetailEditor editor;
    editor.picture.data = std::move(bytes);
    editor.picture.description = description;
    editor.picture.kind = kind;
    pane_.Show(editor);
  }
  [[nodiscard]] PictureView& Image() { return Find<PictureView>(pane_, "Image1"); }
  [[nodiscard]] std::string Text(const char* label) {
    return Find<QLabel>(pane_, label).text().toStdString();
  }
  [[nodiscard]] std::string Kind() {
    return Find<QComboBox>(pane_, "cboPicType").currentText().toStdString();
  }
  [[nodiscard]] bool IsEnlarged() {
    const auto* window = pane_.findChild<frmPicture*>();
    return window != nullptr && window->isVisible();
  }

  PicturePane pane_;
};

TEST_F(PicturePaneTest, TellsWhetherThereIsAPictureAndWhatItShows) {
  const std::string picture = PictureFile("jpeg", {100, 50});
  EXPECT_EQ(Text("lblPicText"), "no picture");
  EXPECT_EQ(Kind(), "No Picture");
  EXPECT_FALSE(Image().isEnabled());
  EXPECT_EQ(Image().toolTip(), "");

  Show(picture, "", 3);
  EXPECT_EQ(Text("lblPicText"), "no description");
  EXPECT_EQ(Kind(), "Cover(front)");
  EXPECT_EQ(Image().toolTip(), "Click to enlarge");

  Show(picture, "<i>caf\xE9</i>", 99);
  EXPECT_EQ(Text("lblPicText"), "<i>caf\u00E9</i>");
  EXPECT_EQ(Find<QLabel>(pane_, "lblPicText").textFormat(), Qt::PlainText);
  EXPECT_EQ(Kind(), "Other");

  Show(picture.substr(0, 100), "broken");
  EXPECT_EQ(Text("lblPicText"), "no picture");
  EXPECT_EQ(Kind(), "No Picture");
}

TEST_F(PicturePaneTest, TheButtonsOfferWhatCanBeDone) {
  auto& add = Find<QPushButton>(pane_, "cmdAddpic");
  auto& save = Find<QPushButton>(pane_, "cmdSavePic");
  struct Case {
    const char* location;
    bool enabled, save_all, picture;
    const char* caption;
    bool may_add, may_save;
  };
  for (const Case& row : {Case{"", false, false, false, "add", false, false},
                          Case{"/a.MP3", true, false, false, "add", true, false},
                          Case{"/a.mp3", true, false, true, "del", true, true},
                          Case{"/a.ogg", true, false, false, "add", false, false},
                          Case{"/a.mp3", true, true, true, "del", false, true}}) {
    DetailEditor editor;
    editor.enabled = row.enabled;
    editor.save_all = row.save_all;
    editor.texts[TrackField::location] = row.location;
    if (row.picture) editor.picture.data = PictureFile("jpeg", {20, 20});
    pane_.Show(editor);
    EXPECT_EQ(add.text(), row.caption);
    EXPECT_EQ(add.isEnabled(), row.may_add) << row.location;
    EXPECT_EQ(save.isEnabled(), row.may_save) << row.location;
  }
}

TEST_F(PicturePaneTest, ThePictureKeepsItsProportions) {
  Show(PictureFile("png", {300, 100}));
  QTest::qWait(1);
  const QRect place = Image().PictureRect();
  EXPECT_EQ(place.width(), Image().width());
  EXPECT_NEAR(place.height(), place.width() / 3.0, 1);
  const QImage painted = Image().grab().toImage();
  EXPECT_GT(painted.pixelColor(place.center().x(), place.top() + 2).red(), 200);
  EXPECT_GT(painted.pixelColor(place.center().x(), place.bottom() - 2).blue(), 200);
}

TEST_F(PicturePaneTest, MouseAndKeyboardEnlargeAndEscapeCloses) {
  Show(PictureFile("jpeg", {640, 480}));
  for (const int key : {0, static_cast<int>(Qt::Key_Return), static_cast<int>(Qt::Key_Space)}) {
    if (key == 0) {
      QTest::mouseClick(&Image(), Qt::LeftButton);
    } else {
      QTest::keyClick(&Image(), static_cast<Qt::Key>(key));
    }
    ASSERT_TRUE(IsEnlarged()) << key;
    EXPECT_EQ(pane_.findChild<frmPicture*>()->size(), QSize(640, 480));
    QTest::keyClick(pane_.findChild<frmPicture*>(), Qt::Key_Escape);
    EXPECT_FALSE(IsEnlarged());
  }
}

TEST_F(PicturePaneTest, TheEnlargedViewFitsTheScreenAndFollowsTheTrack) {
  Show(PictureFile("png", {4000, 3000}));
  pane_.Image1_Click();
  const auto* window = pane_.findChild<frmPicture*>();
  const QSize screen = pane_.screen()->availableGeometry().size();
  EXPECT_LE(window->width(), screen.width());
  EXPECT_LE(window->height(), screen.height());
  const auto& large = Find<PictureView>(*window, "imgPicture");
  Show(PictureFile("png", {10, 20}));
  EXPECT_TRUE(IsEnlarged());
  EXPECT_LT(large.PictureRect().width(), large.PictureRect().height());
  Show("");
  EXPECT_FALSE(IsEnlarged());
  pane_.Image1_Click();
  EXPECT_FALSE(IsEnlarged());
  Show(PictureFile("png", {10, 20}));
  pane_.Image1_Click();
  EXPECT_EQ(window->size(), QSize(240, 480)) << "a small picture is enlarged, too";
}

TEST_F(PicturePaneTest, TheEnlargedViewGoesWithThePane) {
  Show(PictureFile("png", {100, 100}));
  pane_.Image1_Click();
  pane_.hide();
  EXPECT_FALSE(IsEnlarged());
}

}  // namespace
}  // namespace tunemeadow
