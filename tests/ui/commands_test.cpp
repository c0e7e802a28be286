// SPDX-License-Identifier: GPL-3.0-or-later
// Every command of the main window: while something else is at work, and over a store that refuses
// every statement.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QComboBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <map>
#include <set>

#include "support/main_window.h"
#include "ui/kit/combo_names.h"
#include "ui/shell/command_menus.h"
#include "ui/shell/gestures.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

/// A person who says yes to everything, but chooses no file.
class YesSayer {
 public:
  YesSayer() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Answer(); });
    timer_.start(1);
  }

  /// What has come since the last call: the text of each box, the name of each other window.
  Texts TakeSeen() { return std::exchange(seen_, {}); }

 private:
  void Answer() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible()) return;
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
      seen_.push_back(box->text().toStdString());
      QAbstractButton* yes = box->button(QMessageBox::Yes);
      QAbstractButton* ignore = box->button(QMessageBox::Ignore);
      (yes != nullptr ? yes : ignore != nullptr ? ignore : box->button(QMessageBox::Ok))->click();
      return;
    }
    seen_.push_back(dialog->metaObject()->className());
    if (auto* input = qobject_cast<QInputDialog*>(dialog)) input->setTextValue("Typed");
    qobject_cast<QFileDialog*>(dialog) != nullptr ? dialog->reject() : dialog->accept();
  }

  Texts seen_;
  QTimer timer_;
};

/// The main window on two tracks, of which one is in a playlist and one on an archived disc.
class Commands : public MainWindowTest {
 public:
  ~Commands() override { session_->busy = false; }

 protected:
  Commands() {
    WriteSongs({"Ash"});
    Fill(program_, {"insert into mp3sTabelle (uid,Songname,location) values (11,'Ash','" +
                        music_.Path("Ash.mp3") + "'),(12,'b','MP3-CD01/b.mp3')",
                    "insert into playlists (Playlist,UID) values ('Mix',11)",
                    "insert into cdarchives (CDArchive,UID) values ('Disc',12)"});
    Configure(program_, {{"lblConfigWinamp", "/opt/play"},
                         {"lblConfigCDROM", "/mnt"},
                         {"lblScan", music_.Path() + "/"}});
    Start();
    world_.log.clear();
  }

  /// Every command and gesture by its name, as one call.
  std::map<std::string, std::function<void()>> Calls() {
    CommandContext& context = window_->Commands();
    std::map<std::string, std::function<void()>> calls;
    for (const CommandRow* row : AllCommands())
      calls[row->name] = [row, &context] { tunemeadow::Run(*row, context); };
    const auto add = [&](const auto& gesture, auto argument) {
      calls[gesture.name] = [&gesture, &context, argument] {
        tunemeadow::Run(gesture, context, argument);
      };
    };
    add(kFilesDropped, std::vector{music_.Path("Ash.mp3")});
    add(kRowChosen, std::size_t{0});
    add(kHeaderClicked, 1);
    add(kHistoryChosen, std::size_t{1});
    add(kPanelChosen, 1);
    add(kNodeClicked, TreeSelection{NodeKind::kDatabase, "Database", ""});
    add(kTreeKindChosen, TreeKind::kArtist);
    add(kRowsDroppedOnNode, TreeSelection{NodeKind::kPlaylist, "", "Mix"});
    add(kRowsMoved, std::size_t{0});
    add(kPlaceChosen, std::size_t{0});
    return calls;
  }

  /// A selected track of the library, of the playlist or of the disc, with a tag of every kind.
  void SetTheScene(const std::string& command) {
    static const std::set<std::string> of_playlist = {
        "mnuDelete", "mnuPlaylistDelete",    "mnuPlaylistPlayAll", "mnuPlaylistUmbenennen",
        "vsOrder",   "ListView3_OLEDragDrop"};
    static const std::set<std::string> of_archive = {"mnuItem3CDArchivlöschen",
                                                     "mnuItem3GesamtesArchivabspielen"};
    music_.Write("Ash.mp3", Mp3File()
                                .Id3v2({{"TIT2", "Ash"}, {"APIC", PictureFrame("jpeg")}})
                                .Frames(20)
                                .Lyrics3({{"LYR", "la"}})
                                .Id3v1({.title = "Ash"}));
    CommandContext& context = window_->Commands();
    tunemeadow::Run(
        kNodeClicked, context,
        of_playlist.contains(command)  ? TreeSelection{NodeKind::kPlaylist, "Mix|1", "Mix"}
        : of_archive.contains(command) ? TreeSelection{NodeKind::kArchive, "CDArchive|Disc", "Disc"}
                                       : TreeSelection{NodeKind::kDatabase, "Database", ""});
    tunemeadow::Run(kRowChosen, context, 0);
    person_.TakeSeen();
  }

  Texts TakeRefusals() {
    const std::string error = "The database is not open.";
    Texts refusals;
    for (const std::string& text : person_.TakeSeen()) {
      if (!text.starts_with(error)) continue;
      const std::string statement = text.substr(std::min(text.size(), error.size() + 1));
      refusals.push_back(statement.substr(0, statement.find(' ')));
    }
    return refusals;
  }

  YesSayer person_;
};

TEST_F(Commands, NoneBeginsWhileSomethingIsAtWork) {
  const std::set<std::string> any_time = {
      "mnuExit",     "mnuHelpContents", "mnuReset",  "mnuHideShowSearchandDetails",
      "mnuAutoSize", "cmdHelpSave",     "cmdSwitch", "cmdHideShowTreeview"};
  Bench().ListView1.SelectOnly(0);
  Bench().details.uid = 0;
  session_->busy = true;
  const auto kind = Bench().tree.kind;
  const auto history = Bench().history.Entries().size();
  const std::int64_t writes = session_->connection.WriteCount();
  for (const auto& [name, call] : Calls()) {
    if (any_time.contains(name)) continue;
    call();
    EXPECT_THAT(person_.TakeSeen(), IsEmpty()) << name;
    EXPECT_THAT(world_.log, IsEmpty()) << name;
    EXPECT_EQ(session_->connection.WriteCount(), writes) << name;
    EXPECT_EQ(Bench().history.Entries().size(), history) << name;
    EXPECT_EQ(Bench().tree.kind, kind) << name;
    EXPECT_EQ(Bench().details.uid, 0) << name;
  }
  Calls()["mnuExit"]();
  EXPECT_TRUE(window_->isVisible());
  EXPECT_TRUE(session_->CancelRequested);
  EXPECT_TRUE(session_->busy);
}

TEST_F(Commands, ARefusedStatementIsToldWhereverSilenceIsNotLaidDown) {
  // The boxes on refused statements: the first word of the statement that they show, or none where
  // a box with the error's own text alone is laid down. All others ask nothing of the store, or go
  // on without its answer.
  const std::map<std::string, Texts> told = {{"ListView1_OLECompleteDrag", {"Update"}},
                                             {"ListView1_OLEDragDrop", {"insert", "SELECT"}},
                                             {"TreeView1_NodeClick", {"SELECT"}},
                                             {"TreeView1_OLEDragDrop", {"insert"}},
                                             {"cmdSpeichern", {"Update"}},
                                             {"mnuDelete", {""}},
                                             {"mnuExtrasDisk2CD", {"", "SELECT"}},
                                             {"mnuFileImport", {"insert", "SELECT"}},
                                             {"mnuItem3CDArchivlöschen", {"", "SELECT"}},
                                             {"mnuItem3GesamtesArchivabspielen", {"SELECT"}},
                                             {"mnuKillAllTags", {"Update", "Update", "Update"}},
                                             {"mnuKillID3v11Tag", {"Update"}},
                                             {"mnuKillID3v2xTag", {"Update"}},
                                             {"mnuKillLyrics3", {"Update"}},
                                             {"mnuPlaylistDelete", {""}},
                                             {"mnuPlaylistSave", {"insert"}},
                                             {"mnuPlaylistUmbenennen", {""}},
                                             {"mnuRemoveImagefromfile", {"Update"}},
                                             {"mnuSuche", {"SELECT"}},
                                             {"mnuSuchen", {"SELECT"}},
                                             {"mnuToolsRandomPlaylist", {"insert"}}};
  for (const auto& [name, call] : Calls()) {
    if (name == "mnuExit") continue;
    SetTheScene(name);
    session_->connection.Close();
    call();
    const auto expected = told.find(name);
    EXPECT_EQ(TakeRefusals(), expected == told.end() ? Texts{} : expected->second) << name;
    EXPECT_FALSE(session_->busy) << name;
    EXPECT_TRUE(window_->isEnabled()) << name;
    session_->connection.Open(session_->connection_string);
  }
}

TEST_F(Commands, TheKeyboardGoesRoundTheWindowAndSorts) {
  QApplication::setActiveWindow(window_.get());
  auto calls = Calls();
  calls["mnuGoToSearch"]();
  const auto focus = [] { return QApplication::focusWidget(); };
  const auto is_in = [&](const char* name) {
    const auto* part = window_->findChild<QWidget*>(name);
    return focus() != nullptr && (focus() == part || part->isAncestorOf(focus()));
  };
  EXPECT_TRUE(is_in("cboSongname"));
  SetTheScene("");
  for (const char* part : {"TreeView1", "ListView1", "Frame2", "Frame1", "TreeView1"}) {
    if (*part == 'T' && !is_in("Frame1")) calls["mnuGoToSearch"]();
    calls["mnuNextPart"]();
    EXPECT_TRUE(is_in(part)) << part;
  }
  calls["mnuHideShowSearchandDetails"]();
  for (const char* part : {"ListView1", "TreeView1", "ListView1"}) {
    calls["mnuNextPart"]();
    EXPECT_TRUE(is_in(part)) << part;
  }
  emit MenuOf(*window_, Menu::kView).aboutToShow();
  const auto columns = MenuOf(*window_, Menu::kSortBy).actions();
  ASSERT_EQ(columns.size(), 30);
  columns[1]->trigger();
  EXPECT_EQ(Bench().ListView1.SortColumn(), 1U);
  emit MenuOf(*window_, Menu::kView).aboutToShow();
  EXPECT_TRUE(MenuOf(*window_, Menu::kSortBy).actions()[1]->isChecked());
}

TEST_F(Commands, ThoseOfTheTreeStandInTheBarWhileTheirNodeIsSelected) {
  const auto enabled = [&](Menu menu, const char* name) {
    emit MenuOf(*window_, menu).aboutToShow();
    auto* action = window_->findChild<QAction*>(name);
    EXPECT_TRUE(MenuOf(*window_, menu).actions().contains(action)) << name;
    return action->isEnabled();
  };
  for (const char* scene : {"mnuSuchen", "mnuPlaylistDelete", "mnuItem3CDArchivlöschen"}) {
    SetTheScene(scene);
    const NodeKind node = Bench().tree.selected.kind;
    EXPECT_EQ(enabled(Menu::kPlaylists, "mnuPlaylistUmbenennen"), node == NodeKind::kPlaylist);
    EXPECT_EQ(enabled(Menu::kTools, "mnuItem3CDArchivlöschen"),
              node == NodeKind::kArchive || node == NodeKind::kArchiveFolder);
  }
}

TEST_F(Commands, AScreenReaderIsToldTheNameOfEachControlAndHowManyRowsThereAre) {
  for (QComboBox* combo : window_->findChildren<QComboBox*>()) {
    if (combo->isEditable()) {
      combo->setEditText("typed");
      EXPECT_NE(combo->lineEdit()->accessibleName(), "") << combo->objectName().toStdString();
    }
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(combo);
    EXPECT_NE(told->text(QAccessible::Name), "") << combo->objectName().toStdString();
    EXPECT_EQ(told->text(QAccessible::Name), NameForReader(*combo));
    EXPECT_EQ(told->text(QAccessible::Value), combo->currentText());
    ASSERT_EQ(told->childCount(), combo->isEditable() ? 2 : 1);
    EXPECT_EQ(told->indexOfChild(told->child(told->childCount() - 1)), told->childCount() - 1);
  }
  EXPECT_EQ(window_->findChild<QWidget*>("ListView1")->accessibleName(), "Tracks, 2");
  for (const char* name : {"Frame1", "Frame2", "StatusBar1"}) {
    EXPECT_NE(window_->findChild<QWidget*>(name)->accessibleName(), "") << name;
  }
  auto* title = window_->findChild<QLineEdit*>("txtTitelSave");
  for (const std::string& text : {std::string(90, '<'), std::string("short")}) {
    Bench().details.texts[TrackField::Songname] = text;
    Bench().Watcher().DetailsChanged();
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(title);
    EXPECT_FALSE(told->text(QAccessible::Description).contains("<qt>"));
  }
}

}  // namespace
}  // namespace tunemeadow
