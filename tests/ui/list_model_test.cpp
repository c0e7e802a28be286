// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/list_model.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QPixmap>
#include <QStyleOptionViewItem>

#include "support/list_rows.h"
#include "ui/kit/highlight_icon.h"

namespace tunemeadow {
namespace {

constexpr int kTitle = static_cast<int>(TrackField::Songname);
constexpr int kLocation = static_cast<int>(TrackField::location);

class ListModelTest : public testing::Test {
 protected:
  void Fill(CellTable rows) {
    list_.Fill(std::move(rows));
    model_.ShowRows();
  }
  [[nodiscard]] QVariant Data(int row, int column, int role = Qt::DisplayRole) const {
    return model_.data(model_.index(row, column), role);
  }

  ResultList list_;
  ListModel model_{list_, ListKind::kTracks};
};

TEST_F(ListModelTest, ACellIsShownOnOneLineAndNoLongerThanAnEyeReads) {
  const std::string accents = "a" + std::string(299, 'b') + "\xC3\xBC rest";
  std::string umlauts;
  for (int i = 0; i < 5000; ++i) umlauts += "\xC3\xBC";
  Fill(ListRows({{{TrackField::Songname, "one\r\ntwo\n\nthree\tfour"}},
                 {{TrackField::Songname, accents}},
                 {{TrackField::Songname, umlauts}},
                 {{TrackField::haspic, "0"}}}));
  EXPECT_EQ(Data(0, kTitle), "one two  three four");
  EXPECT_EQ(Data(0, kTitle, Qt::AccessibleTextRole), "one\r\ntwo\n\nthree\tfour");
  EXPECT_EQ(Data(1, kTitle).toString().size(), 300);
  EXPECT_EQ(Data(2, kTitle).toString(), QString(300, QChar(0xFC)));
  EXPECT_EQ(Data(2, kTitle, Qt::AccessibleTextRole).toString().size(), 5000);
  EXPECT_EQ(Data(3, kTitle), "");
  EXPECT_EQ(Data(3, static_cast<int>(TrackField::haspic)), "0");
}

TEST_F(ListModelTest, ANameThatIsNotUtf8IsShownWithSignsInThePlacesOfItsBytes) {
  Fill(ListRows({{{TrackField::location, "/m\xFCsic/caf\xE9.mp3"}}}));
  EXPECT_EQ(Data(0, kLocation), QString::fromUtf8("/m\uFFFDsic/caf\uFFFD.mp3"));
  EXPECT_EQ(Data(0, static_cast<int>(kFileColumn)), QString::fromUtf8("caf\uFFFD.mp3"));
}

TEST_F(ListModelTest, ARowIsDescribedByTitleArtistAndAlbum) {
  Fill(ListRows({{{TrackField::Songname, "Ash"}, {TrackField::Artist, "B\nC"}}, {}}));
  EXPECT_EQ(Data(0, kLocation, Qt::AccessibleDescriptionRole), "Ash, B C");
  EXPECT_EQ(Data(1, kLocation, Qt::AccessibleDescriptionRole), "");
}

TEST_F(ListModelTest, AToolTipShowsMarkupAsTheTextThatItIs) {
  Fill(ListRows({{{TrackField::Songname, "<b>Tom & Jerry</b>\nlive"}}}));
  EXPECT_EQ(Data(0, kTitle, Qt::ToolTipRole),
            "<qt>&lt;b&gt;Tom &amp; Jerry&lt;/b&gt;<br>live</qt>");
}

TEST_F(ListModelTest, NumbersStandAtTheRightWithTheirCaptions) {
  Fill(NumberedRows(1));
  for (int column = 0; column < model_.columnCount(); ++column) {
    const QString caption = model_.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    const bool number =
        QStringList{"UID", "Trackno.", "Playtime", "Filesize", "BPM"}.contains(caption);
    const auto cell = Data(0, column, Qt::TextAlignmentRole).value<Qt::Alignment>();
    const auto head =
        model_.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>();
    EXPECT_EQ(cell.testFlag(Qt::AlignRight), number) << caption.toStdString();
    EXPECT_EQ(head.testFlag(Qt::AlignRight), number) << caption.toStdString();
  }
}

TEST_F(ListModelTest, OneCaptionDiffersInThePlaylist) {
  const ListModel playlist(list_, ListKind::kPlaylist);
  const int column = static_cast<int>(TrackField::haspic);
  EXPECT_EQ(model_.headerData(column, Qt::Horizontal, Qt::DisplayRole), "has picture?");
  EXPECT_EQ(playlist.headerData(column, Qt::Horizontal, Qt::DisplayRole), "Haspic");
  EXPECT_EQ(playlist.headerData(0, Qt::Horizontal, Qt::DisplayRole), "UID");
}

TEST_F(ListModelTest, TheFirstCellShowsTheFileTypeWhateverItsCase) {
  Fill(ListRows({{{TrackField::location, "/a.mp3"}},
                 {{TrackField::location, "/A.MP3"}},
                 {{TrackField::location, "/a.ogg"}},
                 {{TrackField::location, ""}}}));
  const auto image = [&](int row) {
    return Data(row, 0, Qt::DecorationRole).value<QIcon>().pixmap(16).toImage();
  };
  EXPECT_EQ(image(0), QIcon::fromTheme("mp3o").pixmap(16).toImage());
  EXPECT_EQ(image(1), image(0));
  EXPECT_NE(image(2), image(0));
  EXPECT_FALSE(image(2).isNull());
  EXPECT_FALSE(image(3).isNull());
  EXPECT_FALSE(Data(0, kTitle, Qt::DecorationRole).isValid());
}

TEST_F(ListModelTest, ARowWhoseFileCouldNotBeWrittenDoesNotLookSaved) {
  Fill(NumberedRows(2));
  list_.SetFileWritten(list_.Uid(1), false);
  const auto look = [&](int row) {
    return std::pair(Data(row, kTitle, Qt::FontRole).value<QFont>().italic(),
                     Data(row, kTitle, Qt::ToolTipRole).toString().contains("not be written"));
  };
  EXPECT_EQ(look(0), std::pair(false, false));
  EXPECT_EQ(look(1), std::pair(true, true));
  EXPECT_EQ(Data(1, 0, Qt::DecorationRole).value<QIcon>().name(), "dialog-warning");
  Fill(NumberedRows(2));
  EXPECT_EQ(look(1), std::pair(true, true)) << "another search does not write the file";
  list_.SetFileWritten(list_.Uid(1), true);
  EXPECT_EQ(look(1), std::pair(false, false));
}

TEST_F(ListModelTest, RowsThatAreGoneReadAsEmptyUntilTheModelIsTold) {
  Fill(NumberedRows(3));
  const QModelIndex stale = model_.index(2, 0);
  list_.Clear();
  EXPECT_EQ(model_.data(stale, Qt::DisplayRole), "");
  EXPECT_FALSE(model_.data(stale, Qt::DecorationRole).value<QIcon>().isNull());
  model_.ShowRows();
  EXPECT_EQ(model_.rowCount(), 0);
}

TEST(IconOnHighlight, TintsLinesAndLeavesAnAreaItsColours) {
  for (const int width : {2, 16}) {
    QPixmap drawn(16, 16);
    drawn.fill(Qt::transparent);
    QPainter(&drawn).fillRect(0, 0, width, 16, Qt::red);
    QStyleOptionViewItem option;
    option.decorationSize = drawn.size();
    option.palette.setColor(QPalette::HighlightedText, Qt::white);
    option.icon = QIcon(drawn);
    const QImage shown = IconOnHighlight(option).pixmap(16, QIcon::Selected).toImage();
    EXPECT_EQ(shown.pixelColor(1, 8), QColor(width == 2 ? Qt::white : Qt::red));
  }
}

}  // namespace
}  // namespace tunemeadow
