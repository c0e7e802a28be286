// SPDX-License-Identifier: GPL-3.0-or-later
// Playlists and CD archives in the main window: menus, keys, the order bar, the pick lists.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>

#include "support/main_window.h"
#include "support/scripted_interaction.h"
#include "ui/panes/order_bar.h"
#include "ui/panes/tree_pane.h"
#include "ui/windows/playback/frmLaufwerke.h"
#include "ui/windows/playback/name_pickers.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;

constexpr auto kYesButton = QMessageBox::Yes;

/// The main window on four tracks; the playlist "Mix" holds three of them.
class PlaylistsWindow : public MainWindowTest {
 protected:
  PlaylistsWindow() {
    Fill(program_, {"insert into mp3sTabelle (uid,location) values "
                    "(11,'/m/11.mp3'),(12,'/m/12.mp3'),(13,'/m/13.mp3'),(14,'/m/14.mp3')",
                    "insert into playlists (Playlist,UID,[position]) select 'Mix', uid, uid from "
                    "mp3sTabelle where uid < 14"});
    Start();
    Trigger(*window_, "mnuSuchen");
  }

  OrderBar& Bar() { return Find<OrderBar>(*window_, "vsOrder"); }
  ResultView& Rows() { return List("ListView3"); }

  void OpenMix() {
    TreeView1_NodeClick(Bench(), {.kind = NodeKind::kPlaylist, .key = "Mix|1", .name = "Mix"});
  }

  /// Uids of the playlist in its stored order, "11 12 13".
  std::string Stored(const std::string& name = "Mix") {
    const CellTable rows =
        Catalogue()
            .Execute("select UID from playlists where Playlist='" + name + "' order by [position]")
            .GetRows();
    std::string uids;
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
      uids.append(uids.empty() ? "" : " ").append(rows.Cell(row, 0));
    }
    return uids;
  }
};

TEST_F(PlaylistsWindow, TheOrderBarStandsBesideThePlaylistAndMovesItsRow) {
  EXPECT_FALSE(Bar().isVisible());
  OpenMix();
  EXPECT_TRUE(Bar().isVisible());
  EXPECT_EQ(Bar().maximum(), 2);
  ClickRow(Rows(), 1);
  EXPECT_EQ(Bar().value(), 1);
  EXPECT_EQ(Stored(), "11 12 13") << "showing the place moves nothing";
  Bar().triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_EQ(Stored(), "11 13 12");
  EXPECT_EQ(Bench().ListView3.SelectedRows(), std::vector<std::size_t>{2});
  Bar().setValue(0);
  EXPECT_EQ(Stored(), "12 11 13");
  EXPECT_EQ(Rows().currentIndex().row(), 0);
  emit Rows().RowsMoved(3);
  EXPECT_EQ(Stored(), "11 13 12");
  EXPECT_EQ(Bar().value(), 2);
  Find<QLineEdit>(*window_, "txtFileSearch").setText("1.mp3");
  Trigger(*window_, "mnuSuchen");
  EXPECT_EQ(Bench().ListView3.RowCount(), 1U);
  EXPECT_FALSE(Bar().isEnabled()) << "a search in the list has no order of its own";
  Trigger(*window_, "mnuReset");
  TreeView1_NodeClick(Bench(), {.kind = NodeKind::kDatabase, .key = "Database"});
  EXPECT_FALSE(Bar().isVisible());
}

TEST_F(PlaylistsWindow, DelTakesRowsOutOfThePlaylistAlone) {
  QTest::keyClick(&List(), Qt::Key_Delete);
  OpenMix();
  ClickRow(Rows(), 0);
  ClickRow(Rows(), 1, Qt::ControlModifier);
  BoxAnswers answers{kYesButton};
  QTest::keyClick(&Rows(), Qt::Key_Delete);
  EXPECT_THAT(answers.seen,
              ElementsAre("Delete: Are you sure to delete 2 item(s) of your selected playlist?"));
  EXPECT_EQ(Stored(), "13");
  EXPECT_EQ(Catalogue().Execute("select uid from mp3sTabelle").GetRows().RowCount(), 4U);
}

TEST_F(PlaylistsWindow, TheMenusStandForTheListInViewAndItsSelection) {
  struct MenuState {
    const char* name;
    bool none, tracks, playlist;  ///< nothing selected; rows of ListView1; rows of ListView3
  };
  const std::vector<MenuState> states = {{"mnuPlaylistSave", false, true, true},
                                         {"mnuPlaylistAddItems", false, true, true},
                                         {"mnuToolsRandomPlaylist", false, true, true},
                                         {"mnuExporttoPlaylist", false, true, true},
                                         {"mnuExporttoplsPlaylist", false, true, true},
                                         {"mnuExtrasDisk2CD", false, true, false},
                                         {"mnuDelete", false, false, true}};
  const auto expect = [&](bool MenuState::*expected) {
    emit Find<QMenu>(*window_, "mnuPlaylists").aboutToShow();
    for (const MenuState& each : states) {
      EXPECT_EQ(Action(each.name).isEnabled(), each.*expected) << each.name;
    }
  };
  Bench().ListView1.ClearSelection();
  expect(&MenuState::none);
  EXPECT_EQ(Action("mnuDelete").text(), "&Delete from database (Del)");
  Bench().ListView1.SelectOnly(0);
  expect(&MenuState::tracks);
  Bench().current_view = "CDArchive";
  emit Find<QMenu>(*window_, "mnuTools").aboutToShow();
  EXPECT_FALSE(Action("mnuExtrasDisk2CD").isEnabled());
  OpenMix();
  ClickRow(Rows(), 0);
  expect(&MenuState::playlist);
  EXPECT_EQ(Action("mnuDelete").text(), "Delete from playlist");
}

TEST_F(PlaylistsWindow, TracksGoIntoAPlaylistThatIsPickedOrDroppedOn) {
  Bench().ListView1.ClearSelection();
  Bench().ListView1.SetSelected(3, 3, true);
  {
    WhenModal<frmShowPlaylists> pick([](frmShowPlaylists& window) {
      EXPECT_TRUE(Find<QPushButton>(window, "cmdOK").isEnabled()) << "the first one is chosen";
      Press(window, "cmdCancel");
    });
    Action("mnuPlaylistAddItems").trigger();
  }
  EXPECT_EQ(Stored(), "11 12 13");
  {
    WhenModal<frmShowPlaylists> pick([](frmShowPlaylists& window) {
      Find<QListWidget>(window, "List1").setCurrentRow(0);
      Press(window, "cmdOK");
    });
    Action("mnuPlaylistAddItems").trigger();
  }
  EXPECT_EQ(Stored(), "14 11 12 13");
  auto& tree = Find<TreePane>(*window_, "picTree");
  emit tree.RowsDropped(NodeKind::kPlaylist, "Mix");
  EXPECT_EQ(Stored(), "14 14 11 12 13");
  WhenModal<QInputDialog> name([](QInputDialog& box) {
    EXPECT_EQ(box.textValue(), "Playlist 1");
    box.setTextValue("New");
    box.accept();
  });
  emit tree.RowsDropped(NodeKind::kPlaylists, "");
  EXPECT_EQ(Stored("New"), "14");
}

TEST_F(PlaylistsWindow, AnExistingFileIsAskedAboutOnce) {
  Catalogue().Execute("update mp3sTabelle set location='" + program_.Write("11.mp3", "x") +
                      "' where uid=11");
  Trigger(*window_, "mnuSuchen");
  Bench().ListView1.SelectOnly(*Bench().ListView1.RowOfUid(11));
  program_.Write("list.m3u", "old");
  WhenModal<QFileDialog> place([](QFileDialog& dialog) {
    auto& name = Find<QLineEdit>(dialog, "fileNameEdit");
    EXPECT_EQ(name.text(), "*.m3u");
    name.selectAll();
    QTest::keyClicks(&name, "list");
    QTest::keyClick(&name, Qt::Key_Return);
  });
  BoxAnswers answers{kYesButton};
  Action("mnuExporttoPlaylist").trigger();
  EXPECT_THAT(answers.seen, ElementsAre("File exists: Overwrite file?"));
  EXPECT_EQ(program_.Read("list.m3u"), "#EXTM3U\r\n" + program_.Path("11.mp3") + "\r\n");
}

TEST_F(PlaylistsWindow, ANodesMenuRenamesAndDeletesItsPlaylist) {
  Bench().tree.selected = {.kind = NodeKind::kPlaylist, .key = "Mix|1", .name = "Mix"};
  {
    WhenModal<QInputDialog> name([](QInputDialog& box) {
      EXPECT_EQ(box.windowTitle(), "Playliste name umbenennen");
      box.setTextValue("It's \"new\"");
      box.accept();
    });
    Action("mnuPlaylistUmbenennen").trigger();
  }
  EXPECT_THAT(Bench().tree.playlists, ElementsAre("It's \"new\""));
  BoxAnswers answers{kYesButton};
  Action("mnuPlaylistDelete").trigger();
  EXPECT_THAT(answers.seen,
              ElementsAre("Tunemeadow: Are you sure to delete playlist \"It's \"new\"\"?"));
  EXPECT_THAT(Bench().tree.playlists, ElementsAre());
}

TEST_F(PlaylistsWindow, TracksDroppedOnAnArchiveGoToItsDiscAndComeBackToAChosenDrive) {
  session_->preferences.lblConfigCDROM.clear();
  Bench().ListView1.ClearSelection();
  Bench().ListView1.SetSelected(0, 1, true);
  {
    WhenModal<QInputDialog> number([](QInputDialog& box) {
      EXPECT_EQ(box.windowTitle(), "Change 2 item(s)");
      EXPECT_EQ(box.textValue(), "MP3-CD07");
      box.accept();
    });
    emit Find<TreePane>(*window_, "picTree").RowsDropped(NodeKind::kArchive, "MP3-CD07");
  }
  EXPECT_EQ(Bench().ListView1.Cell(3, TrackField::location), "MP3-CD07/m/12.mp3");
  Bench().tree.selected = {
      .kind = NodeKind::kArchive, .key = "CDArchive|MP3-CD07", .name = "MP3-CD07"};
  BoxAnswers answers{kYesButton, QMessageBox::Ok};
  WhenModal<frmLaufwerke> drives([](frmLaufwerke& window) { Press(window, "cmdCancel"); });
  Action("mnuItem3CDArchivlöschen").trigger();
  EXPECT_THAT(Bench().tree.archives, ElementsAre("MP3-CD07")) << "no drive, nothing deleted";
}

TEST_F(PlaylistsWindow, OnAnArchiveOnlyRowsOfTheLibraryAreTaken) {
  Catalogue().Execute("insert into cdarchives (CDArchive,UID) values ('Disc',14)");
  updatetreeview(Bench());
  bool asked = false;
  QTimer refusal;
  QObject::connect(&refusal, &QTimer::timeout, [&asked] {
    QWidget* box = QApplication::activeModalWidget();
    if (box == nullptr) return;
    asked = true;
    box->close();
  });
  refusal.start(2);
  for (const TreeSelection& node : {TreeSelection{NodeKind::kArchive, "CDArchive|Disc", "Disc"},
                                    TreeSelection{NodeKind::kPlaylist, "Mix|1", "Mix"}}) {
    TreeView1_NodeClick(Bench(), node);
    ASSERT_EQ(Bench().ListInView().SelectedCount(), 1U);
    emit Find<TreePane>(*window_, "picTree").RowsDropped(NodeKind::kArchive, "Other");
    EXPECT_FALSE(asked) << node.name;
  }
}

TEST(PickLists, NamesComeBackAsTheyAre) {
  const std::vector<std::string> names = {"a & b", "<b>It's</b>", std::string(300, 'x')};
  frmShowPlaylists playlists(names);
  frmChooseCDArchive archives(names);
  Press(archives, "cmdOK");
  EXPECT_EQ(archives.result(), QDialog::Accepted) << "it closes without a choice too";
  EXPECT_EQ(archives.Chosen(), "");
  for (int row = 0; row < 3; ++row) {
    Find<QListWidget>(playlists, "List1").setCurrentRow(row);
    Press(playlists, "cmdOK");
    EXPECT_EQ(playlists.Chosen(), names[static_cast<std::size_t>(row)]);
    Find<QListWidget>(archives, "List1").setCurrentRow(row);
    Press(archives, "cmdOK");
    EXPECT_EQ(archives.Chosen(), names[static_cast<std::size_t>(row)]);
  }
}

TEST(PickLists, WithoutAnEntryThereIsNothingToConfirm) {
  frmShowPlaylists playlists({});
  EXPECT_FALSE(Find<QPushButton>(playlists, "cmdOK").isEnabled());
  EXPECT_EQ(playlists.Chosen(), "");
}

TEST(PickLists, ADriveIsStoredWithoutItsSeparator) {
  ScriptedInteraction person;
  const std::vector<Drive> drives = {{"/media/My \xFF Stick/", DriveType::kRemovable},
                                     {"/media/cdrom/", DriveType::kOptical}};
  frmLaufwerke window(drives, "/media/cdrom/", person);
  auto& list = Find<QListWidget>(window, "List1");
  EXPECT_EQ(list.item(1)->text(), "/media/cdrom   (CD-ROM)");
  EXPECT_EQ(window.Chosen(), "/media/cdrom") << "the present one is selected";
  list.setCurrentRow(0);
  EXPECT_EQ(window.Chosen(), "/media/My \xFF Stick");
  person.WillChoose(std::nullopt);
  Press(window, "cmdFolder");
  EXPECT_EQ(window.Chosen(), "/media/My \xFF Stick");
  person.WillChoose("/");
  Press(window, "cmdFolder");
  EXPECT_EQ(window.Chosen(), "/");
}

}  // namespace
}  // namespace tunemeadow
