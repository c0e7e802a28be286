// SPDX-License-Identifier: GPL-3.0-or-later
// The tree in the main window, and the treeview filter beside it, while a person clicks about.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>

#include "support/list_rows.h"
#include "support/main_window.h"
#include "ui/panes/tree_pane.h"
#include "ui/windows/library/frmPreferences.h"
#include "ui/windows/library/frmTreeviewFilter.h"

namespace tunemeadow {
namespace {

/// The main window on four tracks, one of them in a playlist and one on an archived disc.
class TreeWindow : public MainWindowTest {
 protected:
  TreeWindow() {
    Fill(program_, {"insert into mp3sTabelle (uid,Artist,location) values "
                    "(11,'Anna','/m/Rock/a.mp3'),(12,'Anna','/m/Rock/b.mp3'),"
                    "(13,'Berta','/m/Pop/c.mp3'),(14,'Carla','MP3-CD01/d.mp3')",
                    "insert into playlists (Playlist,UID) values ('Mix',13)",
                    "insert into cdarchives (CDArchive,UID) values ('Disc',14)"});
    Start();
  }

  LibraryTree& View() { return Find<LibraryTree>(*window_, "TreeView1"); }

  /// The node of that text below `above`, or below anything that is expanded.
  static QModelIndex NodeOf(const QTreeView& view, const QString& text) {
    for (QModelIndex index = view.model()->index(0, 0); index.isValid();
         index = view.indexBelow(index)) {
      if (index.data().toString() == text) return index;
    }
    ADD_FAILURE() << "no node in sight reads " << text.toStdString();
    return {};
  }
  using MainWindowTest::Click;
  static void Click(QTreeView& view, const QString& text) {
    const QModelIndex index = NodeOf(view, text);
    view.scrollTo(index);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
  }
  QString Current() { return View().currentIndex().data().toString(); }

  /// Uids of the list in view, in its order.
  std::vector<std::int64_t> Uids() { return UidsOf(Bench().ListInView()); }
};

using testing::ElementsAre;

TEST_F(TreeWindow, ClicksAndEnterSearchAndTheTreeStaysAsItWas) {
  View().expand(NodeOf(View(), "/m"));
  Click(View(), "Rock");
  EXPECT_THAT(Uids(), ElementsAre(11, 12));
  EXPECT_EQ(Find<QLineEdit>(*window_, "txtLocation").text(), "/m/Rock/");
  NodeOf(View(), "Database [2/4 Files]");
  Catalogue().Execute("update mp3sTabelle set BPM='1' where uid=11");
  Trigger(*window_, "mnuSuchen");
  EXPECT_TRUE(View().isExpanded(NodeOf(View(), "/m"))) << "the nodes were read anew";
  EXPECT_EQ(Current(), "Rock");

  View().collapse(NodeOf(View(), "Database [2/4 Files]"));
  View().expand(NodeOf(View(), "Playlists [1]"));
  Click(View(), "Mix [1 Files]");
  EXPECT_THAT(Uids(), ElementsAre(13));
  EXPECT_TRUE(List("ListView3").isVisible());
  EXPECT_FALSE(Find<QComboBox>(*window_, "cboPlaylists").isVisible());

  View().setCurrentIndex(NodeOf(View(), "Database [2/4 Files]"));
  EXPECT_THAT(Uids(), ElementsAre(13)) << "moving about searches nothing";
  QTest::keyClick(&View(), Qt::Key_Return);
  EXPECT_THAT(Uids(), ElementsAre(13, 11, 12, 14));
  EXPECT_TRUE(Find<QComboBox>(*window_, "cboPlaylists").isVisible());
}

TEST_F(TreeWindow, WhatIsTypedLeavesAnArchiveAndEnterSearchesInItsFieldToo) {
  auto& archives = Find<QComboBox>(*window_, "cboCDArchive");
  View().expand(NodeOf(View(), "CDArchive [1]"));
  Click(View(), "Disc");
  EXPECT_THAT(Uids(), ElementsAre(14));
  EXPECT_FALSE(archives.isVisible());
  Type("txtLocation", "Rock");
  QTest::keyClick(&Find<QLineEdit>(*window_, "txtLocation"), Qt::Key_Return);
  EXPECT_THAT(Uids(), ElementsAre(11, 12));
  EXPECT_TRUE(archives.isVisible());
  EXPECT_EQ(archives.currentText(), "");
  EXPECT_EQ(Current(), "Database [2/4 Files]");

  Trigger(*window_, "mnuReset");
  archives.setCurrentText("Disc");
  QTest::keyClick(&archives, Qt::Key_Return);
  EXPECT_THAT(Uids(), ElementsAre(14));
}

TEST_F(TreeWindow, EscapeLeadsFromAPlaylistToTheLibrary) {
  const auto enabled = [this](const char* entry) {
    emit Find<QMenu>(*window_, "mnuView").aboutToShow();
    return Action(entry).isEnabled();
  };
  View().expand(NodeOf(View(), "Playlists [1]"));
  Click(View(), "Mix [1 Files]");
  EXPECT_FALSE(enabled("mnuViewFields")) << "its columns are fixed";
  EXPECT_TRUE(enabled("mnuShowLibrary"));
  Activate();
  List("ListView3").setFocus();
  QTest::keyClick(&List("ListView3"), Qt::Key_Escape);
  EXPECT_EQ(Uids().size(), 4U);
  EXPECT_EQ(Current(), "Database [4 Files]");
  EXPECT_TRUE(List().hasFocus());
  EXPECT_TRUE(enabled("mnuViewFields"));
  EXPECT_FALSE(enabled("mnuShowLibrary"));
}

TEST_F(TreeWindow, TheKindAndTheTrackSelectionAreKeptForTheNextStart) {
  auto* selector = &Find<QComboBox>(*window_, "cboTreeSelector");
  EXPECT_EQ(selector->currentText(), "Location");
  selector->setCurrentIndex(1);
  Click(View(), "Berta");
  EXPECT_THAT(Uids(), ElementsAre(13));
  Find<QCheckBox>(*window_, "chkTrackSelection").setChecked(false);
  Start();
  EXPECT_EQ(Find<QComboBox>(*window_, "cboTreeSelector").currentText(), "Artist");
  EXPECT_FALSE(Find<QCheckBox>(*window_, "chkTrackSelection").isChecked());
  NodeOf(View(), "Carla");
}

TEST_F(TreeWindow, AClickedTrackSelectsItsFolderAndTheButtonFindsItAgain) {
  auto& seek = Find<QToolButton>(*window_, "cmdSeekto");
  EXPECT_TRUE(seek.isEnabled()) << "the first row is in the details";
  ClickRow(List(), 2);
  EXPECT_EQ(Current(), "Rock");
  View().setCurrentIndex(View().model()->index(0, 0));
  ASSERT_TRUE(seek.isEnabled());
  seek.click();
  EXPECT_EQ(Current(), "Rock");
}

TEST_F(TreeWindow, AnotherTagOfArchivesRegroupsTheLocations) {
  const auto locations = [this] {
    return View().model()->rowCount(NodeOf(View(), "Database [4 Files]"));
  };
  EXPECT_EQ(locations(), 1);
  session_->preferences.txtCDTag = "Disc";
  emit Find<frmPreferences>(*window_, "frmPreferences").PreferencesChanged();
  EXPECT_EQ(locations(), 2) << "/m, and what is archived no more";
}

TEST_F(TreeWindow, WhatDoesNotComeFromAListIsNotTaken) {
  bool dropped = false;
  QObject::connect(&Find<TreePane>(*window_, "picTree"), &TreePane::RowsDropped,
                   [&] { dropped = true; });
  View().expand(NodeOf(View(), "Playlists [1]"));
  const QPointF place = View().visualRect(NodeOf(View(), "Mix [1 Files]")).center();
  QMimeData mime;
  mime.setData("text/uri-list", "file:///m/a.mp3\r\n");
  QDropEvent event(place, Qt::CopyAction, &mime, Qt::LeftButton, {});
  QApplication::sendEvent(View().viewport(), &event);
  QApplication::processEvents();
  EXPECT_FALSE(event.isAccepted());
  EXPECT_FALSE(dropped);
}

TEST_F(TreeWindow, ARightClickSelectsItsNodeAndOpensTheMenuOfItsKind) {
  const QModelIndex node = NodeOf(View(), "Database [4 Files]");
  const QPoint place = View().visualRect(node).center();
  QContextMenuEvent event(QContextMenuEvent::Mouse, place, View().viewport()->mapToGlobal(place));
  QApplication::sendEvent(View().viewport(), &event);
  auto& menu = Find<QMenu>(*window_, "mnuItem2");
  ASSERT_TRUE(menu.isVisible());
  EXPECT_EQ(menu.actions().first()->objectName(), "mnuExtrasTreeviewSearch");
  EXPECT_EQ(Bench().tree.selected.key, "Database");
  menu.close();
}

TEST_F(TreeWindow, TheFilterReadsAListOnItsClickAndSearches) {
  Trigger(*window_, "mnuExtrasTreeviewSearch");
  auto* filter = ShownWindow<frmTreeviewFilter>();
  ASSERT_NE(filter, nullptr);
  auto& view = Find<LibraryTree>(*filter, "TreeView1");
  Catalogue().Execute("update mp3sTabelle set album='Blue' where uid=11");
  Click(view, "Artist");
  Click(view, "Anna");
  EXPECT_THAT(Uids(), ElementsAre(11, 12));
  view.expand(NodeOf(view, "Anna"));
  Click(view, "Blue");
  EXPECT_THAT(Uids(), ElementsAre(11));
  EXPECT_EQ(Find<QPushButton>(*filter, "cmdClose").text(), "&Close");
  Press(*filter, "cmdClose");
  EXPECT_FALSE(filter->isVisible());
}

TEST_F(TreeWindow, ClosingTheFilterInALoadOnlyStopsIt) {
  Trigger(*window_, "mnuExtrasTreeviewSearch");
  auto* filter = ShownWindow<frmTreeviewFilter>();
  ASSERT_NE(filter, nullptr);
  auto& view = Find<LibraryTree>(*filter, "TreeView1");
  QString caption;
  QTimer::singleShot(0, filter, [&] {
    caption = Find<QPushButton>(*filter, "cmdClose").text();
    EXPECT_TRUE(Find<QProgressBar>(*filter, "ProgressBar1").isVisible());
    filter->close();
    window_->close();
  });
  Click(view, "Location");
  EXPECT_EQ(caption, "&Cancel");
  EXPECT_TRUE(filter->isVisible());
  EXPECT_TRUE(window_->isVisible());
  EXPECT_FALSE(Find<QProgressBar>(*filter, "ProgressBar1").isVisible());
  Click(view, "Location");
  NodeOf(view, "/m");
  NodeOf(view, "MP3-CD01");
  QTest::keyClick(&view, Qt::Key_Escape);
  EXPECT_FALSE(filter->isVisible());
}

}  // namespace
}  // namespace tunemeadow
