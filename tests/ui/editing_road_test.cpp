// SPDX-License-Identifier: GPL-3.0-or-later
// The road of an edit, in the real windows: import, one track and then many changed and saved, the
// end, the second start, and what an import into an empty catalogue finds in the files.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <filesystem>
#include <map>

#include "library/import.h"
#include "support/mp3_builder.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"
#include "support/window_driver.h"
#include "ui/panes/result_view.h"
#include "ui/shell/frmStart.h"

namespace tunemeadow {
namespace {

constexpr auto kYesButton = QMessageBox::Yes;
constexpr auto kOkButton = QMessageBox::Ok;

/// What a person would look at in a row.
using Shown = std::map<std::string, std::string>;  // title -> artist, album, track, mood, URL

class EditingRoad : public testing::Test {
 protected:
  EditingRoad() {
    for (const char* title : {"Ash", "Birch", "Cedar", "Elm"}) {
      music_.Write(std::string(title) + ".mp3",
                   Mp3File()
                       .Id3v2({{"TIT2", title}, {"TPE1", "Anna"}, {"TRCK", "3"}, {"TALB", title}})
                       .Frames(20)
                       .Id3v1({.title = title, .artist = "Anna", .track = 3}));
    }
  }

  static void MakeProgramFolder(const TempFolder& folder) {
    std::filesystem::copy_file(TM_BINARY_DIR "/data/mp3s.mdb", folder.Path("mp3s.mdb"));
    Session(folder.Path(), "tunemeadow")
        .ini.SaveStrings(kConfigSection, {{"firstrun", "1"},
                                          {"lblConfigWinamp", "/bin/true"},
                                          {"chkRepair", "0"},
                                          {"chkAutoComment", "0"}});
  }

  void Import(frmStart& window) {
    BoxAnswers answers{kOkButton, kOkButton};
    ImportDropped(window.Bench(), std::vector<std::string>{music_.Path()});
    Trigger(window, "mnuSuchen");
  }

  static Shown Rows(frmStart& window) {
    Shown shown;
    const ResultList& list = window.Bench().ListView1;
    for (std::size_t row = 0; row < list.RowCount(); ++row) {
      std::string text;
      for (const TrackField field : {TrackField::Artist, TrackField::album, TrackField::trackno,
                                     TrackField::Mood, TrackField::url}) {
        text += std::string(list.Cell(row, field)) + "|";
      }
      shown[std::string(list.Cell(row, TrackField::Songname))] = text;
    }
    return shown;
  }

  static void Click(frmStart& window, const std::string& title, Qt::KeyboardModifiers held = {}) {
    auto& list = Find<ResultView>(window, "ListView1");
    for (int row = 0; row < list.model()->rowCount(); ++row) {
      if (list.model()->index(row, 1).data().toString().toStdString() != title) continue;
      const QModelIndex index = list.model()->index(row, 1);
      list.scrollTo(index);
      QTest::mouseClick(list.viewport(), Qt::LeftButton, held, list.visualRect(index).center());
    }
  }

  static void Type(frmStart& window, const char* field, const char* text) {
    auto& line = Find<QLineEdit>(window, field);
    line.setFocus();
    line.selectAll();
    QTest::keyClicks(&line, text);
  }

  ScriptedWorld world_;
  TempFolder music_;
};

TEST_F(EditingRoad, WhatWasSavedIsThereAfterANewStartAndInTheFilesThemselves) {
  TempFolder program;
  MakeProgramFolder(program);
  Shown saved;
  {
    Session session(program.Path(), "tunemeadow");
    frmStart window(session, world_);
    ASSERT_TRUE(window.Form_Load());
    Import(window);
    Click(window, "Ash");
    Type(window, "txtTitelSave", "Aspen's");
    Type(window, "txtTracknumber", "07");
    Press(window, "cmdSpeichern");

    Click(window, "Birch");
    Click(window, "Cedar", Qt::ControlModifier);
    Click(window, "Elm", Qt::ControlModifier);
    Type(window, "txtInterpretSave", "Bea");
    Find<QCheckBox>(window, "chkInterpret").click();
    Press(window, "cmdSwitch_1");
    Type(window, "txtMoodSave", "calm");
    Find<QCheckBox>(window, "chkMood").click();
    BoxAnswers answers{kYesButton, kOkButton};
    Press(window, "cmdSpeichern");
    ASSERT_EQ(answers.seen.size(), 2U);
    EXPECT_EQ(answers.seen[0],
              "Mass-saving: Are you sure to update 3 items(s) with the Artist,Mood-Tag in the "
              "Database and in the ID3Tag?");
    EXPECT_EQ(answers.seen[1].rfind("Tunemeadow: 3 file(s) successfully saved.\n", 0), 0U);
    saved = Rows(window);
    window.close();
  }
  EXPECT_EQ(saved["Aspen's"], "Anna|Ash|7|||");
  EXPECT_EQ(saved["Birch"], "Bea|Birch|3|calm||");
  EXPECT_EQ(saved["Elm"], "Bea|Elm|3|calm||");
  {
    Session session(program.Path(), "tunemeadow");
    frmStart window(session, world_);
    ASSERT_TRUE(window.Form_Load());
    EXPECT_EQ(Rows(window), saved);
    window.close();
  }
  TempFolder empty;
  MakeProgramFolder(empty);
  Session session(empty.Path(), "tunemeadow");
  frmStart window(session, world_);
  ASSERT_TRUE(window.Form_Load());
  Import(window);
  Shown found = Rows(window);
  // An import makes two quotes of one, so that a text never ends a statement.
  EXPECT_EQ(found["Aspen''s"], saved["Aspen's"]);
  for (const char* title : {"Birch", "Cedar", "Elm"}) EXPECT_EQ(found[title], saved[title]);
  window.close();
}

}  // namespace
}  // namespace tunemeadow
