// SPDX-License-Identifier: GPL-3.0-or-later
// The road of an edit, in the real windows: import, one track and then many changed and saved, the
// end, the second start, and what an import into an empty catalogue finds in the files.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <map>

#include "support/main_window.h"

namespace tunemeadow {
namespace {

/// What a person would look at in a row.
using ShownRows = std::map<std::string, std::string>;  // title -> artist, album, track, mood, URL

class EditingRoad : public MainWindowTest {
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

  void StartIn(const TempFolder& folder) {
    Configure(folder, {{"chkAutoComment", "0"}});
    Start(folder);
  }

  ShownRows Rows() {
    ShownRows shown;
    const ResultList& list = Bench().ListView1;
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
};

TEST_F(EditingRoad, WhatWasSavedIsThereAfterANewStartAndInTheFilesThemselves) {
  ShownRows saved;
  {
    StartIn(program_);
    ImportMusic();
    Click("Ash");
    Type("txtTitelSave", "Aspen's");
    Type("txtTracknumber", "07");
    Press(*window_, "cmdSpeichern");

    Click("Birch");
    Click("Cedar", Qt::ControlModifier);
    Click("Elm", Qt::ControlModifier);
    Type("txtInterpretSave", "Bea");
    Press(*window_, "cmdSwitch_1");
    Type("txtMoodSave", "calm");
    BoxAnswers answers{QMessageBox::Yes, QMessageBox::Ok};
    Press(*window_, "cmdSpeichern");
    ASSERT_EQ(answers.seen.size(), 2U);
    EXPECT_EQ(answers.seen[0],
              "Mass-saving: Are you sure to update 3 items(s) with the Artist,Mood-Tag in the "
              "Database and in the ID3Tag?");
    EXPECT_EQ(answers.seen[1].rfind("Tunemeadow: 3 file(s) successfully saved.\n", 0), 0U);
    saved = Rows();
  }
  EXPECT_EQ(saved["Aspen's"], "Anna|Ash|7|||");
  EXPECT_EQ(saved["Birch"], "Bea|Birch|3|calm||");
  EXPECT_EQ(saved["Elm"], "Bea|Elm|3|calm||");
  {
    StartIn(program_);
    EXPECT_EQ(Rows(), saved);
  }
  const TempFolder empty;
  ProvideProgram(empty);
  StartIn(empty);
  ImportMusic();
  ShownRows found = Rows();
  // An import makes two quotes of one, so that a text never ends a statement.
  EXPECT_EQ(found["Aspen''s"], saved["Aspen's"]);
  for (const char* title : {"Birch", "Cedar", "Elm"}) EXPECT_EQ(found[title], saved[title]);
}

}  // namespace
}  // namespace tunemeadow
