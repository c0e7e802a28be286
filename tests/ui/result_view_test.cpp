// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/result_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>

#include "support/list_rows.h"
#include "support/scripted_world.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ResultViewTest : public testing::Test {
 protected:
  void SetUp() override {
    view_.resize(800, 400);
    view_.show();
    QObject::connect(&view_, &ResultView::ItemClicked,
                     [this](int row) { clicked_.push_back(row); });
  }
  void Fill(CellTable rows) {
    view_.Freeze();
    list_.Fill(std::move(rows));
    view_.Thaw();
  }
  [[nodiscard]] QPoint PlaceOf(int row, int column = 1) {
    return view_.visualRect(view_.model()->index(row, column)).center();
  }
  void Click(int row, Qt::KeyboardModifiers held = {}) {
    QTest::mouseClick(view_.viewport(), Qt::LeftButton, held, PlaceOf(row));
  }
  /// The menu comes between press and release; so that no other test finds the button down, here
  /// the release is not the view's.
  void PressRight(int row, Qt::KeyboardModifiers held = {}) {
    QTest::mousePress(view_.viewport(), Qt::RightButton, held, PlaceOf(row));
    QTest::mouseRelease(view_.header(), Qt::RightButton);
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers held = {}) { QTest::keyClick(&view_, key, held); }
  void DragIn(QMimeData& mime) {
    QDragEnterEvent event(QPoint(50, 50), Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton,
                          {});
    QApplication::sendEvent(view_.viewport(), &event);
    EXPECT_TRUE(event.isAccepted() && event.dropAction() == Qt::CopyAction);
  }
  void Drop(QMimeData& mime) {
    QDropEvent event(QPointF(50, 50), Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton, {});
    QApplication::sendEvent(view_.viewport(), &event);
    EXPECT_TRUE(!event.isAccepted() || event.dropAction() == Qt::CopyAction);
    QApplication::processEvents();
  }
  /// The texts of the column of the selected rows: sorted or not, they are the same tracks.
  [[nodiscard]] std::vector<std::string> SelectedUids() {
    std::vector<std::string> uids;
    for (const std::size_t row : list_.SelectedRows()) {
      uids.emplace_back(list_.Cell(row, TrackField::uid));
    }
    return uids;
  }

  ResultList list_;
  ScriptedWorld world_;
  ResultView view_{list_, "ListView1", world_};
  std::vector<int> clicked_;
};

TEST_F(ResultViewTest, TheMouseSelectsAsAPersonExpects) {
  Fill(NumberedRows(100));
  Click(2);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(2));
  Click(5, Qt::ShiftModifier);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(2, 3, 4, 5));
  Click(1, Qt::ShiftModifier);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(1, 2));
  Click(7, Qt::ControlModifier);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(1, 2, 7));
  Click(2, Qt::ControlModifier);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(1, 7));
  EXPECT_EQ(list_.FocusedRow(), 2U);
  Click(9, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
  Click(4);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(4));
  EXPECT_THAT(clicked_, ElementsAre(2, 5, 1, 7, 2, 9, 4));
  Click(6, Qt::ControlModifier);
  Click(6, Qt::ControlModifier);
  EXPECT_EQ(list_.FocusedRow(), 6U);
  EXPECT_THAT(clicked_, ElementsAre(2, 5, 1, 7, 2, 9, 4, 6, 4)) << "4 is what is selected";
}

TEST_F(ResultViewTest, APressOnASelectedRowKeepsTheOthersForADrag) {
  Fill(NumberedRows(100));
  view_.selectAll();
  QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, PlaceOf(3));
  EXPECT_EQ(list_.SelectedCount(), 100U);
  QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, PlaceOf(3));
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(3));
}

TEST_F(ResultViewTest, AKeyThatIsHeldTellsTheLastRowOnly) {
  Fill(NumberedRows(100));
  Click(0);
  clicked_.clear();
  for (int i = 0; i < 5; ++i) {
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, {}, {}, i > 0);
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Down, {}, {}, i < 4);
    QApplication::sendEvent(&view_, &down);
    QApplication::sendEvent(&view_, &up);
  }
  EXPECT_THAT(clicked_, ElementsAre(5));
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(5));
}

TEST_F(ResultViewTest, TheKeyboardSelectsAsAPersonExpects) {
  Fill(NumberedRows(100));
  Click(4);
  clicked_.clear();
  Key(Qt::Key_Down, Qt::ShiftModifier);
  Key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(4, 5, 6));
  Key(Qt::Key_Down, Qt::ControlModifier);
  Key(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(4, 5, 6));
  Key(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(4, 5, 6, 8));
  Key(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(4, 5, 6));
  EXPECT_EQ(list_.FocusedRow(), 8U);
  Key(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(list_.SelectedCount(), 100U);
  Key(Qt::Key_End);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(99));
  EXPECT_THAT(clicked_, ElementsAre(5, 6, 7, 8, 8, 8, 8, 99));
}

TEST_F(ResultViewTest, KeysOnTheCurrentRowTellItThoughNothingMoves) {
  Fill(NumberedRows(3));
  list_.SelectOnly(0);
  list_.SetFocusedRow(0);
  view_.ShowSelection();  // as a command selects it
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Space, Qt::Key_Return}) Key(key);
  list_.ClearSelection();
  view_.ShowSelection();
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End}) Key(key);
  EXPECT_THAT(clicked_, ElementsAre(0, 0, 0, 0, 2));
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(2));
}

TEST_F(ResultViewTest, AClickBesideTheRowsSelectsNothingAndKeepsTheFocus) {
  Fill(NumberedRows(3));
  view_.selectAll();
  list_.SetFocusedRow(1);
  view_.ShowSelection();
  QTest::mouseClick(view_.viewport(), Qt::LeftButton, {}, QPoint(100, 300));
  EXPECT_EQ(list_.SelectedCount(), 0U);
  EXPECT_EQ(list_.FocusedRow(), 1U);
  EXPECT_THAT(clicked_, ElementsAre()) << "nobody clicked a row";
}

TEST_F(ResultViewTest, AFrameDrawnFromBesideTheRowsSelectsThoseItTouches) {
  Fill(NumberedRows(4));
  Click(0);
  QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, QPoint(100, 300));
  for (const int row : {2, 1}) {
    const QPoint place = PlaceOf(row);
    QMouseEvent move(QEvent::MouseMove, place, view_.viewport()->mapToGlobal(place), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(view_.viewport(), &move);
  }
  QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, PlaceOf(1));
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(1, 2, 3));
  EXPECT_EQ(clicked_.size(), 2U);
}

TEST_F(ResultViewTest, KeysMoveThroughTheRowsAndLeaveTheColumnsInSight) {
  Fill(NumberedRows(100));
  Click(1);
  view_.horizontalScrollBar()->setValue(300);
  Key(Qt::Key_Down);
  EXPECT_EQ(view_.horizontalScrollBar()->value(), 300);
  ColumnLayout layout = StandardColumnLayout();
  layout[1].width = 0;  // the column that was clicked on
  view_.SetLayout(layout);
  Key(Qt::Key_End);
  EXPECT_TRUE(view_.viewport()->rect().contains(PlaceOf(99, 3)));
}

TEST_F(ResultViewTest, WhatAScreenReaderSelectsReachesTheList) {
  Fill(NumberedRows(10));
  view_.selectionModel()->select(view_.model()->index(3, 0),
                                 QItemSelectionModel::Select | QItemSelectionModel::Rows);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(3));
  list_.SetSelected(5, 6, true);
  view_.ShowSelection();
  EXPECT_EQ(view_.selectionModel()->selectedRows().size(), 3);
  view_.clearSelection();
  EXPECT_EQ(list_.SelectedCount(), 0U);
}

TEST_F(ResultViewTest, ASortTakesAScatteredSelectionAlong) {
  constexpr int kRows = 20'000;
  Fill(NumberedRows(kRows));
  view_.Sort(0);
  std::vector<std::string> wanted;
  for (int row = 0; row < kRows; row += 2) {
    list_.SetSelected(static_cast<std::size_t>(row), static_cast<std::size_t>(row), true);
    wanted.insert(wanted.begin(), std::to_string(row + 1));
  }
  view_.Sort(1);
  EXPECT_EQ(SelectedUids(), wanted);
  EXPECT_EQ(view_.header()->sortIndicatorSection(), 1);
  EXPECT_EQ(view_.header()->sortIndicatorOrder(), Qt::AscendingOrder);
  EXPECT_EQ(list_.Cell(0, TrackField::uid), "20000");

  // Rows 0, 2, ... are free, 1, 3, ... selected: far more runs than Qt's own book holds.
  view_.scrollToBottom();
  const QImage painted = view_.viewport()->grab().toImage();
  EXPECT_EQ(painted.pixelColor(2, PlaceOf(kRows - 1).y()),
            view_.palette().color(QPalette::Inactive, QPalette::Highlight));
  EXPECT_NE(painted.pixelColor(2, PlaceOf(kRows - 2).y()),
            painted.pixelColor(2, PlaceOf(kRows - 1).y()));
  Click(kRows - 1, Qt::ControlModifier);
  EXPECT_EQ(list_.SelectedCount(), kRows / 2 - 1U);
  Click(kRows - 2, Qt::ControlModifier);
  EXPECT_EQ(list_.SelectedCount(), kRows / 2 + 0U);
  Click(kRows - 4);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(kRows - 4));
}

TEST_F(ResultViewTest, ASortFollowsTheRowThatThePersonHasChosen) {
  Fill(NumberedRows(1000));
  list_.SelectOnly(0);
  list_.SetFocusedRow(0);
  view_.ShowSelection();
  view_.Sort(1);
  EXPECT_EQ(list_.FocusedRow(), 999U);
  EXPECT_EQ(view_.verticalScrollBar()->value(), 0) << "nobody had chosen that row";
  view_.verticalScrollBar()->setValue(0);
  Click(3);
  view_.Sort(1);
  EXPECT_EQ(list_.FocusedRow(), 996U);
  EXPECT_TRUE(view_.viewport()->rect().contains(PlaceOf(996)));
  view_.verticalScrollBar()->setValue(100);
  view_.Sort(1);
  EXPECT_EQ(view_.verticalScrollBar()->value(), 100) << "the chosen row was out of sight";
}

TEST_F(ResultViewTest, AHeaderClickAsksForASortAndShowsTheListsOwnOrder) {
  Fill(NumberedRows(10));
  std::vector<int> columns;
  QObject::connect(&view_, &ResultView::HeaderClicked,
                   [&](int column) { columns.push_back(column); });
  const QPoint place(view_.header()->sectionViewportPosition(1) + 20, 5);
  QTest::mouseClick(view_.header()->viewport(), Qt::LeftButton, {}, place);
  EXPECT_THAT(columns, ElementsAre(1));
  EXPECT_EQ(view_.header()->sortIndicatorSection(), -1) << "nobody has sorted";
}

TEST_F(ResultViewTest, ADoubleClickPlaysOnceAndDoesNotClickAgain) {
  Fill(NumberedRows(10));
  std::vector<int> played;
  QObject::connect(&view_, &ResultView::ItemDoubleClicked, [&](int row) { played.push_back(row); });
  Click(3);
  QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, PlaceOf(3));
  QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, PlaceOf(3));
  EXPECT_THAT(played, ElementsAre(3));
  EXPECT_THAT(clicked_, ElementsAre(3));
  QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, PlaceOf(4));
  QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, PlaceOf(4));
  EXPECT_THAT(played, ElementsAre(3)) << "the first click met another row";
  EXPECT_THAT(clicked_, ElementsAre(3, 4));
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(4));
}

TEST_F(ResultViewTest, EnterAndDeleteAreTold) {
  Fill(NumberedRows(10));
  int returns = 0;
  int deletes = 0;
  QObject::connect(&view_, &ResultView::ReturnPressed, [&] { ++returns; });
  QObject::connect(&view_, &ResultView::DeletePressed, [&] { ++deletes; });
  Key(Qt::Key_Return);
  Key(Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(returns, 2);
  Key(Qt::Key_Delete);
  Key(Qt::Key_Delete, Qt::ShiftModifier);
  EXPECT_EQ(deletes, 1) << "with Shift it is the command that deletes files";
}

TEST_F(ResultViewTest, TheContextMenuComesForTheRowUnderTheMouse) {
  Fill(NumberedRows(10));
  Click(1);
  clicked_.clear();
  std::vector<QPoint> asked;
  QObject::connect(&view_, &ResultView::ContextMenuRequested, [&](const QPoint& where) {
    EXPECT_THAT(clicked_, ElementsAre(4));
    asked.push_back(view_.viewport()->mapFromGlobal(where));
  });
  const auto menu = [&](QContextMenuEvent::Reason reason, const QPoint& place) {
    QContextMenuEvent event(reason, place, view_.viewport()->mapToGlobal(place));
    QApplication::sendEvent(view_.viewport(), &event);
  };
  PressRight(4);
  menu(QContextMenuEvent::Mouse, PlaceOf(4));
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(4));
  QTest::mouseRelease(view_.viewport(), Qt::RightButton, {}, PlaceOf(4));
  menu(QContextMenuEvent::Keyboard, QPoint(0, 0));
  ASSERT_EQ(asked.size(), 2U);
  EXPECT_EQ(asked[0], PlaceOf(4));
  EXPECT_EQ(view_.indexAt(asked[1]).row(), 4);

  Click(6, Qt::ShiftModifier);
  PressRight(5);
  PressRight(8, Qt::ShiftModifier);
  EXPECT_THAT(list_.SelectedRows(), ElementsAre(4, 5, 6));
}

TEST_F(ResultViewTest, ColumnsComeBackAsTheyWereSet) {
  ColumnLayout layout = StandardColumnLayout();
  layout[0].width = 0;
  layout[1].width = 1234;  // 82.3 pixels
  layout[5] = {100, 0};    // narrower than a column can be shown
  for (std::size_t i = 0; i < 5; ++i) layout[i].place = i + 1;
  view_.SetLayout(layout);
  Fill(NumberedRows(10));
  Fill(NumberedRows(5));
  EXPECT_EQ(view_.Layout(), layout);
  EXPECT_TRUE(view_.isColumnHidden(0));
  Click(2);
  Key(Qt::Key_Down);
  EXPECT_THAT(clicked_, ElementsAre(2, 3));

  int changes = 0;
  QObject::connect(&view_, &ResultView::ColumnsChanged, [&] { ++changes; });
  view_.header()->resizeSection(2, 200);
  view_.header()->moveSection(view_.header()->visualIndex(7), 0);
  EXPECT_EQ(changes, 2);
  EXPECT_EQ(view_.Layout()[2].width, 3000);
  EXPECT_EQ(view_.Layout()[7].place, 0U);
  EXPECT_EQ(view_.Layout()[5].place, 1U);
  view_.SetLayout(layout);
  EXPECT_EQ(changes, 2);
}

TEST_F(ResultViewTest, WithoutAColumnTheHeaderIsStillThereToAskForOne) {
  Fill(NumberedRows(10));
  Click(3);
  const int height = view_.header()->height();
  view_.SetLayout(ColumnLayout());
  QTest::qWait(1);
  EXPECT_EQ(view_.header()->height(), height);
  int asked = 0;
  QObject::connect(&view_, &ResultView::HeaderContextMenuRequested, [&] { ++asked; });
  QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(50, 5), QPoint(50, 5));
  QApplication::sendEvent(view_.header()->viewport(), &event);
  EXPECT_EQ(asked, 1);
  Key(Qt::Key_Down);
  view_.AutoSize();
  view_.Sort(3);
  QTest::qWait(1);
  view_.SetLayout(StandardColumnLayout());
  EXPECT_TRUE(view_.visualRect(view_.currentIndex()).isValid());
}

TEST_F(ResultViewTest, AutoSizeFindsTheLongTextAmongManyRowsAndStopsAtALimit) {
  CellTable rows = NumberedRows(50'000);
  rows.SetCell(33'333, IndexOf(TrackField::Songname),
               "the one title that is longer than all the others");
  rows.SetCell(44'444, IndexOf(TrackField::Artist), std::string(5000, 'W'));
  Fill(std::move(rows));
  view_.AutoSize();
  const QFontMetrics metrics(view_.font());
  const int longest = metrics.horizontalAdvance("the one title that is longer than all the others");
  EXPECT_GT(view_.columnWidth(1), longest);
  EXPECT_LT(view_.columnWidth(1), longest + 30);
  EXPECT_EQ(view_.columnWidth(2), 600);
  EXPECT_GE(view_.columnWidth(3), metrics.horizontalAdvance("Genre"));
}

TEST_F(ResultViewTest, OnlyACutTextGetsAToolTip) {
  Fill(ListRows(
      {{{TrackField::Songname, "short"}, {TrackField::Artist, std::string_view("<b>x\ny")}},
       {{TrackField::Songname, "a title that is far too long for a column of 240 pixels "}}}));
  const auto tip = [&](int row, int column) {
    QHelpEvent event(QEvent::ToolTip, PlaceOf(row, column),
                     view_.viewport()->mapToGlobal(PlaceOf(row, column)));
    QApplication::sendEvent(view_.viewport(), &event);
    return QToolTip::text().toStdString();
  };
  EXPECT_EQ(tip(0, 1), "");
  EXPECT_NE(tip(1, 1), "");
  EXPECT_EQ(tip(0, 2), "<qt>&lt;b&gt;x<br>y</qt>") << "a second line is cut off, too";
}

TEST_F(ResultViewTest, TheClipboardGetsWhatIsSeen) {
  Fill(ListRows({{{TrackField::uid, "1"},
                  {TrackField::Songname, "One\ttwo"},
                  {TrackField::Comment, "hidden"}},
                 {{TrackField::uid, "2"}, {TrackField::Songname, "no"}},
                 {{TrackField::uid, "3"}, {TrackField::Artist, "Anna\r\nBert"}}}));
  ColumnLayout layout{};
  layout[0] = {1500, 2};
  layout[1] = {1500, 0};
  layout[2] = {1500, 1};
  view_.SetLayout(layout);
  list_.SetSelected(0, 0, true);
  list_.SetSelected(2, 2, true);
  view_.ShowSelection();
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(world_.clipboard_text, "One two\t\t1\n\tAnna Bert\t3\n");
}

TEST_F(ResultViewTest, TheSelectedFilesLeaveWithTheBytesOfTheirNames) {
  Fill(ListRows({{{TrackField::location, "/music/caf\xE9 100%.mp3"}},
                 {{TrackField::location, "/music/other.mp3"}},
                 {{TrackField::location, "CD07\\archived.mp3"}}}));
  EXPECT_EQ(view_.DragData(), nullptr) << "nothing is selected";
  list_.SetSelected(0, 0, true);
  list_.SetSelected(2, 2, true);
  EXPECT_EQ(view_.DragData()->data("text/uri-list"), "file:///music/caf%E9%20100%25.mp3\r\n");
  view_.SetDragPath([](std::size_t row) { return "/previews/" + std::to_string(row); });
  EXPECT_EQ(view_.DragData()->data("text/uri-list"),
            "file:///previews/0\r\nfile:///previews/2\r\n");
  EXPECT_EQ(view_.model()->supportedDragActions(), Qt::CopyAction);
}

TEST_F(ResultViewTest, DroppedFilesArriveWithTheBytesOfTheirNames) {
  std::vector<std::vector<std::string>> dropped;
  int unsupported = 0;
  QObject::connect(&view_, &ResultView::FilesDropped,
                   [&](const std::vector<std::string>& paths) { dropped.push_back(paths); });
  QObject::connect(&view_, &ResultView::UnsupportedDrop, [&] { ++unsupported; });
  QMimeData files;
  files.setData("text/uri-list", "file:///m/%FF%FE%20a.mp3\r\nfile:///m/b%23.mp3\r\n");
  DragIn(files);
  Drop(files);
  QMimeData urls;
  urls.setUrls({QUrl::fromLocalFile("/m/\u00FC ?.mp3")});
  DragIn(urls);
  Drop(urls);
  EXPECT_THAT(dropped, ElementsAre(ElementsAre("/m/\xFF\xFE a.mp3", "/m/b#.mp3"),
                                   ElementsAre("/m/\u00FC ?.mp3")));
  QMimeData text;
  text.setText("just a text");
  DragIn(text);
  Drop(text);
  QMimeData web;
  web.setUrls({QUrl("https://music.example/a.mp3")});
  DragIn(web);
  Drop(web);
  EXPECT_EQ(unsupported, 2);

  DragIn(files);
  view_.setEnabled(false);  // as during a batch
  Drop(files);
  EXPECT_EQ(dropped.size(), 2U);
}

TEST_F(ResultViewTest, TheEmptyListSaysSoButNotWhileASearchRuns) {
  view_.SetHint([] { return "Nothing here."; });
  Fill(NumberedRows(5));
  QTest::qWait(1);
  QApplication::setOverrideCursor(Qt::WaitCursor);
  Fill(CellTable(kSelectedFields));
  QTest::qWait(1);
  const QImage empty = view_.viewport()->grab().toImage();
  QTest::qWait(700);
  EXPECT_EQ(view_.viewport()->grab().toImage(), empty);
  QApplication::restoreOverrideCursor();
  EXPECT_TRUE(QTest::qWaitFor([&] { return view_.viewport()->grab().toImage() != empty; }, 2000));
  Fill(NumberedRows(5));
  EXPECT_EQ(view_.indexAt(QPoint(5, 5)).row(), 0);
}

TEST_F(ResultViewTest, RowsThatGoWhileItIsFrozenDoNoHarm) {
  Fill(NumberedRows(1000));
  view_.scrollToBottom();
  Click(999);
  view_.Freeze();
  list_.Clear();
  QApplication::processEvents();
  Key(Qt::Key_Up);
  view_.viewport()->grab();
  list_.Fill(NumberedRows(3));
  view_.Thaw();
  EXPECT_EQ(view_.model()->rowCount(), 3);
  EXPECT_EQ(view_.verticalScrollBar()->value(), 0);
  EXPECT_FALSE(view_.currentIndex().isValid());
  Key(Qt::Key_Down);
  EXPECT_EQ(list_.SelectedCount(), 1U);
}

}  // namespace
}  // namespace tunemeadow
