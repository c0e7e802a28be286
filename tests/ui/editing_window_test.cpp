// SPDX-License-Identifier: GPL-3.0-or-later
// The main window while a person edits: the save button, the question for changes, the menus.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <functional>

#include "audio/id3v2_reader.h"
#include "support/main_window.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;

constexpr auto kYes = QMessageBox::Yes;
constexpr auto kNo = QMessageBox::No;
constexpr auto kOkay = QMessageBox::Ok;

/// The main window on three tracks, the first of which is in the details.
class EditingWindow : public MainWindowTest {
 protected:
  EditingWindow() {
    Configure(program_, {{"chkAutoComment", "0"}});
    WriteSongs({"Ash", "Birch", "Cedar"});
    Start();
    ImportMusic();
    EXPECT_EQ(Bench().ListView1.RowCount(), 3U);
    Activate();
  }

  QPushButton& Save() { return Find<QPushButton>(*window_, "cmdSpeichern"); }
  /// Title and artist as the file has them.
  std::string Tags(const char* name) {
    Mp3Info info;
    (void)ReadID3v2Tag(music_.Path(name), ID3v2Versions::kAny, info);
    return info.Title + "/" + info.Artist;
  }
  std::string Cell(const char* title, TrackField field) {
    for (std::size_t row = 0; row < Bench().ListView1.RowCount(); ++row) {
      if (Bench().ListView1.Cell(row, TrackField::Songname) == title) {
        return std::string(Bench().ListView1.Cell(row, field));
      }
    }
    return "no row " + std::string(title);
  }
};

TEST_F(EditingWindow, SavingOneTrackWritesFileAndListAndLeavesTheFocusThere) {
  EXPECT_EQ(Bench().details.uid, Bench().ListView1.Uid(Bench().ListView1.SelectedRows().at(0)));
  EXPECT_TRUE(Save().isEnabled());
  Click("Ash");
  EXPECT_EQ(Save().text(), "&Save");
  Type("txtTitelSave", "Aspen");
  Press(*window_, "cmdSpeichern");
  EXPECT_EQ(Tags("Ash.mp3"), "Aspen/Anna");
  EXPECT_EQ(Cell("Aspen", TrackField::Artist), "Anna");
  EXPECT_TRUE(List().hasFocus());
  for (const char* name : {"lblTitelSave", "lblYearSave", "lblCommentSave"}) {
    EXPECT_TRUE(Find<QLabel>(*window_, name).isEnabled()) << name << " is black again";
  }
  auto& comment = Find<QPlainTextEdit>(*window_, "txtCommentSave");
  EXPECT_EQ(comment.palette().color(QPalette::Base), window_->palette().color(QPalette::Base));
  Type("txtInterpretSave", "Bea");
  QTest::keySequence(window_.get(), QKeySequence(Qt::CTRL | Qt::Key_S));
  EXPECT_EQ(Tags("Ash.mp3"), "Aspen/Bea");
  const auto& status = Find<QLabel>(*window_, "StatusPanel1");
  EXPECT_EQ(status.text(), "Saved: Aspen.");
  EXPECT_EQ(status.palette().color(QPalette::Disabled, QPalette::WindowText),
            status.palette().color(QPalette::Active, QPalette::WindowText));
}

TEST_F(EditingWindow, AChangedTrackIsNotLeftWithoutAQuestion) {
  Click("Ash");
  Type("txtTitelSave", "Aspen");
  {
    BoxAnswers answers{kYes};
    Click("Birch");
    EXPECT_THAT(answers.seen, ElementsAre("Save: Save your changes?"));
  }
  EXPECT_EQ(Tags("Ash.mp3"), "Aspen/Anna");
  EXPECT_EQ(Shown("txtTitelSave"), "Birch");
  Type("txtTitelSave", "Beech");
  {
    BoxAnswers answers{kNo};
    Click("Cedar", Qt::ControlModifier);
    EXPECT_EQ(answers.seen.size(), 1U) << "many tracks begin with none of one";
    EXPECT_EQ(Bench().details.texts[TrackField::Songname], "Birch");
  }
  Click("Cedar");
  EXPECT_EQ(Tags("Birch.mp3"), "Birch/Anna");
  Type("txtTitelSave", "Cypress");
  BoxAnswers answers{kYes};
  window_->close();
  EXPECT_EQ(Tags("Cedar.mp3"), "Cypress/Anna");
}

TEST_F(EditingWindow, AFieldThatMayNotStandKeepsItsTrackAndItsPanel) {
  Click("Ash");
  BoxAnswers answers{kOkay, kOkay, kOkay, kOkay};
  Type("txtYearSave", "soon");
  Click("Birch");
  EXPECT_EQ(Shown("txtTitelSave"), "Ash");
  EXPECT_THAT(Bench().ListView1.SelectedRows(),
              ElementsAre(*Bench().ListView1.RowOfUid(Bench().details.uid)));
  EXPECT_EQ(window_->focusWidget(), &Find<QLineEdit>(*window_, "txtYearSave"));
  Press(*window_, "cmdSwitch_1");
  EXPECT_TRUE(Find<QLineEdit>(*window_, "txtYearSave").isVisible());
  Press(*window_, "cmdSpeichern");
  EXPECT_THAT(answers.seen, testing::Each("Tunemeadow: Year is not a number!"));
  Type("txtYearSave", "1999");
  Press(*window_, "cmdSpeichern");
  EXPECT_EQ(Cell("Ash", TrackField::year), "1999");
  Bench().Watcher().ListCleared();
  Bench().ListView1.RemoveRows({*Bench().ListView1.RowOfUid(Bench().details.uid)});
  Bench().Watcher().ListFilled();
  Type("txtYearSave", "later");
  const std::size_t boxes = answers.seen.size();
  Click("Birch");
  EXPECT_EQ(answers.seen.size(), boxes + 1) << "the box of the field and nothing else";
  EXPECT_EQ(Shown("txtTitelSave") + Shown("txtYearSave"), "Ashlater");
  EXPECT_EQ(Bench().ListView1.SelectedCount(), 0U);
}

TEST_F(EditingWindow, ManyTracksTakeTheTickedFieldsOnly) {
  Click("Ash");
  Click("Cedar", Qt::ShiftModifier);
  EXPECT_EQ(Save().text(), "&Save all");
  EXPECT_FALSE(Find<QWidget>(*window_, "cmdItemBlaetter_0").isEnabled());
  Type("txtInterpretSave", "All");
  Press(*window_, "chkInterpret");
  Type("txtAlbumSave", "Trees");
  BoxAnswers answers{kYes, kOkay};
  Press(*window_, "cmdSpeichern");
  EXPECT_THAT(answers.seen[0], testing::StartsWith("Mass-saving: Are you sure to update 3 items(s) "
                                                   "with the Album-Tag"));
  EXPECT_EQ(Cell("Birch", TrackField::album), "Trees");
  EXPECT_EQ(Tags("Birch.mp3"), "Birch/Anna");
  EXPECT_EQ(Save().text(), "&Save all") << "they are still selected";
  EXPECT_FALSE(Find<QCheckBox>(*window_, "chkAlbum").isChecked());
  Click("Birch");
  EXPECT_EQ(Save().text(), "&Save");
}

TEST_F(EditingWindow, TextsForManyAreAskedForBeforeTheirRowsGo) {
  const std::vector<std::pair<const char*, std::function<void()>>> ways = {
      {"another row", [this] { Click("Birch"); }},
      {"another selection", [this] { Click("Birch", Qt::ControlModifier); }},
      {"F5", [this] { Action("mnuSuchen").trigger(); }},
      {"a node",
       [this] {
         TreeView1_NodeClick(Bench(), {NodeKind::kDatabase, "Database", ""});
       }},
      {"beside the rows",
       [this] { QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, QPoint(50, 200)); }},
      {"the end", [this] { window_->close(); }}};
  for (const auto& [way, leave] : ways) {
    for (const auto answer : {kNo, kYes}) {
      SCOPED_TRACE(way);
      Click("Ash");
      Click("Cedar", Qt::ControlModifier);
      Type("txtAlbumSave", way);
      BoxAnswers answers{answer};
      if (answer == kYes) session_->success_messages = false;
      leave();
      EXPECT_THAT(answers.seen, ElementsAre("Save: Save your changes?"));
      EXPECT_EQ(Cell("Ash", TrackField::album) == way, answer == kYes);
      EXPECT_NE(Cell("Birch", TrackField::album), way) << "selected only when it was asked";
      if (way != std::string("the end")) continue;
      EXPECT_FALSE(window_->isVisible());
      Start();
    }
  }
}

TEST_F(EditingWindow, TextsForManyThatCannotBeSavedKeepTheirRows) {
  Click("Ash");
  Click("Cedar", Qt::ControlModifier);
  Type("txtYearSave", "soon");
  const std::string year = "Tunemeadow: Year is not a number!";
  BoxAnswers answers{kOkay, kYes, kOkay};
  Click("Birch");
  EXPECT_THAT(answers.seen, ElementsAre(year));
  EXPECT_EQ(Bench().ListView1.SelectedCount(), 2U);
  Action("mnuSuchen").trigger();
  EXPECT_THAT(answers.seen, ElementsAre(year, "Save: Save your changes?", year));
  EXPECT_EQ(Bench().ListView1.SelectedCount(), 2U);
  EXPECT_EQ(Save().text() + Shown("txtYearSave").c_str(), "&Save allsoon");
  Bench().details.many = {};
}

TEST_F(EditingWindow, APlaylistInViewOffersNoSaveForMany) {
  Bench().details.save_all = true;
  Bench().playlist_in_view = true;
  Bench().Watcher().DetailsChanged();
  EXPECT_FALSE(Save().isEnabled());
  Bench().playlist_in_view = false;
  Bench().Watcher().DetailsChanged();
  EXPECT_TRUE(Save().isEnabled());
}

TEST_F(EditingWindow, TheTagMenusWorkOnTheSelection) {
  const auto& menu = Find<QMenu>(*window_, "mnuRemoveTags");
  Bench().ListView1.ClearSelection();
  emit Find<QMenu>(*window_, "mnuEdit").aboutToShow();
  EXPECT_FALSE(menu.menuAction()->isEnabled());
  Click("Birch");
  emit Find<QMenu>(*window_, "mnuEdit").aboutToShow();
  EXPECT_TRUE(menu.menuAction()->isEnabled());
  BoxAnswers answers{kYes, kOkay};
  Action("mnuKillID3v2xTag").trigger();
  EXPECT_EQ(Tags("Birch.mp3"), "/");
  EXPECT_EQ(Tags("Ash.mp3"), "Ash/Anna");
  EXPECT_EQ(Cell("Birch", TrackField::hasid3v2), "0");
}

TEST_F(EditingWindow, TheScramblerPutsItsCodeOnTheClipboard) {
  WhenModal<QInputDialog> name([](QInputDialog& dialog) {
    EXPECT_EQ(dialog.labelText(), "Enter Name");
    dialog.setTextValue("abz.mp3");
    dialog.accept();
  });
  BoxAnswers answers{kOkay};
  Action("mnuAudiogalaxy").trigger();
  EXPECT_EQ(world_.clipboard_text, "122");
}

}  // namespace
}  // namespace tunemeadow
