// SPDX-License-Identifier: GPL-3.0-or-later
// The detail panels as a person meets them: load, type, tick, leave a field.
#include "ui/panes/detail_panels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <set>

#include "support/scripted_interaction.h"
#include "support/window_driver.h"
#include "ui/windows/editing/frmEditor.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;

DetailEditor LoadedEditor() {
  DetailEditor editor;
  editor.uid = 7;
  editor.texts[TrackField::Songname] = "Blue";
  editor.texts[TrackField::Artist] = "Anna";
  editor.texts[TrackField::album] = "Sky";
  editor.texts[TrackField::genrereal] = "rock";
  editor.texts[TrackField::year] = "199x";
  editor.texts[TrackField::trackno] = "3/12";
  editor.texts[TrackField::location] = "/music/a.mp3";
  editor.texts[TrackField::Comment] = "one\r\ntwo\u00A0three";
  editor.texts[TrackField::Situation] = "Party";
  editor.texts[TrackField::Lyrics] = "la";
  for (std::size_t i = 0; i < kExtraFields; ++i) {
    editor.texts[ExtraField(i)] = std::string(1, "CREOU"[i]);
  }
  editor.enabled = true;
  editor.comment_enabled = true;
  return editor;
}

/// The panels in a window of their own, with another control that can take the focus.
class DetailPanelsTest : public testing::Test {
 protected:
  DetailPanelsTest() {
    auto* rows = new QVBoxLayout(&window_);
    panels_ = new DetailPanels(editor_, person_);
    rows->addWidget(panels_);
    rows->addWidget(elsewhere_ = new QLineEdit);
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  void Load(const DetailEditor& record) {
    editor_ = record;
    panels_->Show();
  }
  QLineEdit& Line(const char* name) { return Find<QLineEdit>(window_, name); }
  void Type(const char* name, const char* text) {
    QLineEdit& line = Line(name);
    line.setFocus();
    line.selectAll();
    QTest::keyClicks(&line, text);
  }
  /// What the queue holds, the checks of a left field among it, is worked off.
  static void Settle() { QTest::qWait(5); }
  std::string DisabledFields() {
    std::string names;
    for (const char* name :
         {"txtTitelSave", "txtInterpretSave", "txtAlbumSave", "cboGenre1", "txtYearSave",
          "txtTracknumber", "txtBPMSave", "txtQualitaetSave", "txtPlaytime", "txtLocationSave",
          "txtCommentSave", "txtSituationSave", "txtPreferenceSave", "txtTempoSave", "txtMoodSave",
          "txtBiosSave", "txtLyricsSave", "txtSave3_0", "txtSave3_4"}) {
      if (!Find<QWidget>(window_, name).isEnabled()) names += std::string(name) + " ";
    }
    return names;
  }

  ScriptedInteraction person_;
  DetailEditor editor_;
  QWidget window_;
  DetailPanels* panels_ = nullptr;
  QLineEdit* elsewhere_ = nullptr;
};

TEST_F(DetailPanelsTest, ALoadedRecordIsShownAndCountsAsUnchanged) {
  EXPECT_FALSE(Line("txtTitelSave").isEnabled()) << "nothing is loaded";
  Load(LoadedEditor());
  EXPECT_EQ(DisabledFields(), "");
  EXPECT_EQ(Line("txtTitelSave").text(), "Blue");
  EXPECT_EQ(Find<QComboBox>(window_, "cboGenre1").currentText(), "rock");
  EXPECT_EQ(Find<QPlainTextEdit>(window_, "txtLyricsSave").toPlainText(), "la");
  EXPECT_EQ(Line("txtSave3_4").text(), "U");
  EXPECT_TRUE(Line("txtLocationSave").isReadOnly());
  EXPECT_TRUE(Line("lblFilesize").isReadOnly());
  EXPECT_FALSE(editor_.DetailsChanged || editor_.DetailsKeyed);
  EXPECT_TRUE(panels_->FieldsStand()) << "what was imported may stand";
}

TEST_F(DetailPanelsTest, BeforeTheFirstRecordTheCommentOnlyLooksOpen) {
  panels_->EnableComment(true);
  auto& comment = Find<QPlainTextEdit>(window_, "txtCommentSave");
  comment.setFocus();
  QTest::keyClicks(&comment, "lost");
  EXPECT_TRUE(comment.isEnabled());
  EXPECT_EQ(comment.toPlainText(), "");
  EXPECT_FALSE(editor_.DetailsChanged || editor_.DetailsKeyed);
  Load(LoadedEditor());
  QTest::keyClicks(&comment, "!");
  EXPECT_TRUE(editor_.DetailsChanged && editor_.DetailsKeyed);
}

TEST_F(DetailPanelsTest, TypingGoesIntoTheEditorAndSetsTheFlags) {
  struct Case {
    const char* field;
    int panel;
    TrackField edited;
  };
  for (const Case& row :
       {Case{"txtTitelSave", 0, TrackField::Songname}, Case{"txtAlbumSave", 0, TrackField::album},
        Case{"txtSituationSave", 1, TrackField::Situation},
        Case{"txtMoodSave", 1, TrackField::Mood}}) {
    SCOPED_TRACE(row.field);
    Load(LoadedEditor());
    panels_->setCurrentIndex(row.panel);
    Type(row.field, "new");
    EXPECT_EQ(editor_.texts[row.edited], "new");
    EXPECT_TRUE(editor_.DetailsChanged);
  }
  Load(LoadedEditor());
  panels_->setCurrentIndex(2);
  Type("txtSave3_3", "new");
  std::string extra;
  for (std::size_t i = 0; i < kExtraFields; ++i) extra += editor_.texts[ExtraField(i)];
  EXPECT_EQ(extra, "CREnewU");
  EXPECT_TRUE(editor_.DetailsKeyed);
}

TEST_F(DetailPanelsTest, ALongTextKeepsItsLineEndsAndNoBreakSpaces) {
  Load(LoadedEditor());
  auto& comment = Find<QPlainTextEdit>(window_, "txtCommentSave");
  comment.setFocus();
  comment.moveCursor(QTextCursor::End);
  QTest::keyClicks(&comment, "!");
  EXPECT_EQ(editor_.texts[TrackField::Comment], "one\r\ntwo\u00A0three!");
}

TEST_F(DetailPanelsTest, AGenreKeepsTheCaseInWhichItWasTyped) {
  Load(LoadedEditor());
  panels_->SetGenres({"Tuvan"});
  auto& genre = Find<QComboBox>(window_, "cboGenre1");
  EXPECT_EQ(genre.currentText(), "rock");
  EXPECT_FALSE(editor_.DetailsChanged);
  genre.setFocus();
  for (const char* typed : {"jazz", "BLUES", "tuvan"}) {
    genre.lineEdit()->selectAll();
    QTest::keyClicks(&genre, typed);
    QTest::keyClick(&genre, Qt::Key_Return);
    elsewhere_->setFocus();
    EXPECT_EQ(genre.currentText(), typed);
    EXPECT_EQ(editor_.texts[TrackField::genrereal], typed);
    genre.setFocus();
  }
  EXPECT_TRUE(editor_.DetailsChanged);
  genre.setCurrentText("Jazz");
  QTest::keyClick(&genre, Qt::Key_Down);
  EXPECT_EQ(genre.currentText().toStdString(), editor_.texts[TrackField::genrereal]);
}

TEST_F(DetailPanelsTest, ALeftFieldIsCheckedAndTheFocusComesBack) {
  struct Case {
    const char* field;
    const char* text;
    const char* box;  ///< none: the text may stand
  };
  Load(LoadedEditor());
  for (const Case& row :
       {Case{"txtTracknumber", "abc", "Track-number is not a number!"},
        Case{"txtTracknumber", "256", "Track-number must be less than 256!"},
        Case{"txtTracknumber", "07", nullptr}, Case{"txtYearSave", "?", "Year is not a number!"},
        Case{"txtYearSave", "30000", nullptr}}) {
    SCOPED_TRACE(row.text);
    person_.boxes.clear();
    if (row.box != nullptr) person_.WillAnswer(Answer::kOk);
    Type(row.field, row.text);
    elsewhere_->setFocus();
    Settle();
    EXPECT_EQ(person_.boxes.size(), row.box == nullptr ? 0u : 1u);
    if (row.box != nullptr && !person_.boxes.empty()) {
      EXPECT_EQ(person_.boxes.front().text, row.box);
    }
    EXPECT_EQ(Line(row.field).hasFocus(), row.box != nullptr);
  }
}

TEST_F(DetailPanelsTest, OnlyWhatThePersonChangedIsChecked) {
  Load(LoadedEditor());
  for (const char* field : {"txtTracknumber", "txtYearSave"}) Line(field).setFocus();
  elsewhere_->setFocus();
  Settle();
  Type("txtTracknumber", "abc");
  Load(LoadedEditor());  // the next record
  elsewhere_->setFocus();
  Settle();
  EXPECT_TRUE(person_.boxes.empty());
  // Two wrong fields: one box, not a storm of them.
  person_.WillAnswer(Answer::kOk);
  Line("txtYearSave").setText("?");
  Type("txtTracknumber", "abc");
  Line("txtYearSave").setFocus();
  Settle();
  EXPECT_EQ(person_.boxes.size(), 1u);
  EXPECT_TRUE(Line("txtTracknumber").hasFocus());
  // Another window takes nobody to task.
  QWidget other;
  other.show();
  other.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
  Settle();
  EXPECT_EQ(person_.boxes.size(), 1u);
}

TEST_F(DetailPanelsTest, SeveralTracksHaveBoxesForTheFieldsThatAreWritten) {
  DetailEditor record = LoadedEditor();
  Load(record);
  EXPECT_FALSE(Find<QCheckBox>(window_, "chkAlbum").isVisible());
  record.save_all = true;
  record.chosen[IndexOf(TrackField::year)] = true;
  record.many.differs[IndexOf(TrackField::album)] = true;
  Load(record);
  const auto& album = Find<QCheckBox>(window_, "chkAlbum");
  EXPECT_EQ(album.text(), QString(QChar(0x2260)));
  EXPECT_TRUE(album.accessibleName().endsWith("(their values differ)"));
  EXPECT_EQ(Find<QCheckBox>(window_, "chkYear").text(), "");
  EXPECT_EQ(DisabledFields(),
            "txtTitelSave txtTracknumber txtBPMSave txtQualitaetSave txtPlaytime txtCommentSave "
            "txtBiosSave txtLyricsSave ");
  EXPECT_FALSE(Find<QLabel>(window_, "lblTitelSave").isEnabled());
  EXPECT_TRUE(Find<QLabel>(window_, "lblAlbumSave").isEnabled());
  EXPECT_TRUE(Find<QCheckBox>(window_, "chkAlbum").isVisible());
  EXPECT_TRUE(Find<QCheckBox>(window_, "chkYear").isChecked());
  panels_->FocusFirst();
  EXPECT_TRUE(Line("txtInterpretSave").hasFocus());
  Press(window_, "chkAlbum");
  Type("txtAlbumSave", "All");
  EXPECT_EQ(editor_.texts[TrackField::album], "All");
  EXPECT_FALSE(editor_.DetailsChanged || editor_.DetailsKeyed) << "no change of the former record";
  panels_->setCurrentIndex(2);
  Type("txtSave3_4", "http://all");  // an edited field is ticked
  FieldMarks chosen{};
  for (const TrackField field : {TrackField::album, TrackField::year, TrackField::url}) {
    chosen[IndexOf(field)] = true;
  }
  EXPECT_EQ(editor_.chosen, chosen);
  chosen[IndexOf(TrackField::year)] = false;
  EXPECT_EQ(editor_.many.typed, chosen);
}

TEST_F(DetailPanelsTest, EachBoxChoosesItsOwnField) {
  DetailEditor record = LoadedEditor();
  record.save_all = true;
  for (const auto& [name, field] : {std::pair("chkAlbum", TrackField::album),
                                    {"chkGenre", TrackField::genrereal},
                                    {"chkInterpret", TrackField::Artist},
                                    {"chkYear", TrackField::year},
                                    {"chkSituation", TrackField::Situation},
                                    {"chkTempo", TrackField::tempo},
                                    {"chkPreference", TrackField::preference},
                                    {"chkMood", TrackField::Mood}}) {
    Load(record);
    Find<QCheckBox>(window_, name).click();
    std::array<bool, kTrackFields> chosen{};
    chosen[IndexOf(field)] = true;
    EXPECT_EQ(editor_.chosen, chosen) << name;
  }
}

TEST_F(DetailPanelsTest, TheCommentIsForReadingOnlyWithAutoComment) {
  DetailEditor record = LoadedEditor();
  record.comment_enabled = false;
  Load(record);
  EXPECT_EQ(DisabledFields(), "txtCommentSave ");
  WhenModal<frmEditor> shown([](frmEditor& editor) {
    EXPECT_TRUE(Find<QPlainTextEdit>(editor, "txtEditor").isReadOnly());
    Press(editor, "cmdCancel");
  });
  Press(window_, "cmdBigger_txtCommentSave");
}

TEST_F(DetailPanelsTest, TheLargerWindowChangesTheTextAsAPersonDoes) {
  Load(LoadedEditor());
  panels_->setCurrentIndex(1);
  for (const char* button : {"cmdCancel", "cmdOK"}) {
    WhenModal<frmEditor> shown([button](frmEditor& editor) {
      EXPECT_EQ(editor.windowTitle(), "Lyrics");
      Find<QPlainTextEdit>(editor, "txtEditor").setPlainText("la\u00A0li");
      Press(editor, button);
    });
    EXPECT_FALSE(editor_.DetailsChanged);
    Press(window_, "cmdBigger_txtLyricsSave");
  }
  EXPECT_EQ(editor_.texts[TrackField::Lyrics], "la\u00A0li");
  EXPECT_TRUE(editor_.DetailsChanged && editor_.DetailsKeyed);
}

}  // namespace
}  // namespace tunemeadow
