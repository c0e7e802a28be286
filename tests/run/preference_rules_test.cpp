// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/preference_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "support/scripted_interaction.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(ValidatePreferences, TellsTheFirstThingThatDoesNotFitAndWhetherToStay) {
  struct Case {
    std::function<void(Preferences&)> change;
    std::string message;  // part of the only one; empty: none
    bool stays_open;
  };
  const std::vector<Case> cases{
      {[](Preferences&) {}, "", false},
      {[](Preferences& p) { p.chkPreview = true; }, "If Preview is selected", true},
      {[](Preferences& p) { p.chkPreview = true, p.lblPreviewPath = "/p/"; }, "If Preview", true},
      {[](Preferences& p) { p.chkPreview = true, p.txtPreviewSize = "10", p.cboEncoder = 2; },
       "If Preview", true},
      {[](Preferences& p) { p.cboEncoder = 5; }, "define the location!", true},
      {[](Preferences& p) { p.cboEncoder = 5, p.lblEncoderPath = "/usr/bin/x"; },
       "define the decoding parameters", true},
      {[](Preferences& p) { p.cboEncoder = 4, p.lblEncoderPath = "/x", p.txtDecoderParams = "d"; },
       "encoding will be disabled!", false},
      {[](Preferences& p) { p.cboEncoder = 1, p.lblEncoderPath = "/x", p.txtEncoderParams = "e"; },
       "decoding will be disabled!", false},
      {[](Preferences& p) { p.cboEncoder = 6; }, "", false},
      {[](Preferences& p) { p.cboEncoder = 7; }, "", false},
      {[](Preferences& p) { p.cboEncoder = 99; }, "", false},
  };
  for (std::size_t i = 0; i < cases.size(); ++i) {
    SCOPED_TRACE(i);
    Preferences preferences;
    cases[i].change(preferences);
    const PreferenceVerdict verdict = ValidatePreferences(preferences);
    EXPECT_EQ(verdict.stays_open, cases[i].stays_open);
    if (cases[i].message.empty()) {
      EXPECT_THAT(verdict.messages, IsEmpty());
    } else {
      EXPECT_THAT(verdict.messages, ElementsAre(HasSubstr(cases[i].message)));
    }
  }
}

TEST(ChooseEncoder, FillsTheTemplatesOfTheEntryAndALibraryLosesItsLocation) {
  Preferences preferences;
  preferences.lblEncoderPath = "/usr/bin/lame";
  ChooseEncoder(preferences, 3);
  EXPECT_EQ(preferences.txtEncoderParams, "-br 128000 -if %Inputfile% -of %Outputfile% ");
  EXPECT_EQ(preferences.lblEncoderPath, "/usr/bin/lame");
  ChooseEncoder(preferences, 0);
  EXPECT_EQ(preferences.txtDecoderParams, "%Inputfile% %Outputfile% -wav");
  ChooseEncoder(preferences, 7);
  EXPECT_EQ(
      preferences.lblEncoderPath + preferences.txtEncoderParams + preferences.txtDecoderParams, "");
}

TEST(ConfirmPreferences, WritesFirstThenTellsAndChecks) {
  const TempFolder folder;
  Session session(folder.Path(), "Tunemeadow");
  Preferences controls;
  controls.lblConfigDB = folder.Path("other.mdb");
  controls.chkWarnGlobal = false;
  controls.chkPreview = true;
  ScriptedInteraction person{Answer::kOk, Answer::kOk};
  person.on_box = [&](const MessageBox&) {
    EXPECT_EQ(session.ini.GetString("CONFIG", "lblConfigDB", "", 0), controls.lblConfigDB);
    EXPECT_EQ(session.ini.GetString("CONFIG", "firstrun", "", 0), "1");
  };
  EXPECT_FALSE(ConfirmPreferences(session, person, controls, folder.Path("mp3s.mdb")));
  EXPECT_THAT(person.BoxTexts(),
              ElementsAre("Tunemeadow: Tunemeadow must be restartet to take effect the new "
                          "database.",
                          HasSubstr("If Preview is selected")));
  EXPECT_FALSE(session.success_messages);
  EXPECT_EQ(session.preferences, controls);
}

TEST(ConfirmFirstRun, WritesWhatWasDetectedAndNothingElse) {
  const TempFolder folder;
  Session session(folder.Path(), "Tunemeadow");
  session.preferences.lblConfigWinamp = "/usr/bin/qmmp";
  session.preferences.lblScan = "/home/anna/Musik/";
  session.preferences.lblConfigDB = folder.Path("mp3s.mdb");  // the standard one: stored as none
  ConfirmFirstRun(session);
  EXPECT_THAT(session.ini.ReadSection("CONFIG"),
              testing::UnorderedElementsAre(
                  testing::Pair("lblConfigWinamp", "/usr/bin/qmmp"),
                  testing::Pair("lblConfigDB", ""), testing::Pair("lblConfigCDROM", ""),
                  testing::Pair("lblScan", "/home/anna/Musik/"), testing::Pair("firstrun", "1")));
}

}  // namespace
}  // namespace tunemeadow
