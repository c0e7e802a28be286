// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>

#include "run/preference_rules.h"
#include "support/scripted_interaction.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"
#include "support/window_driver.h"
#include "ui/kit/path_field.h"
#include "ui/kit/qt_text.h"
#include "ui/windows/library/frmPreferences.h"
#include "ui/windows/playback/frmLaufwerke.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class PreferencesWindow : public testing::Test {
 protected:
  PreferencesWindow() { session_.preferences.lblConfigDB = folder_.Path("mp3s.mdb"); }

  /// Opens the dialog, lets the person act, and waits for its end.
  int Show(const std::function<void(frmPreferences&)>& person) {
    const WhenModal<frmPreferences> visitor(person);
    return Window().exec();
  }

  frmPreferences& Window() {
    if (!window_) window_ = std::make_unique<frmPreferences>(session_, person_, world_);
    return *window_;
  }

  [[nodiscard]] std::string Stored(const std::string& key) const {
    return session_.ini.GetString(kConfigSection, key, "", 0);
  }

  TempFolder folder_;
  Session session_{folder_.Path(), "Tunemeadow"};
  ScriptedInteraction person_;
  ScriptedWorld world_;
  std::unique_ptr<frmPreferences> window_;
};

/// Changes the control of a setting as a person could, whatever kind it is.
void ChangeControl(const QWidget& window, const PreferenceKey& key) {
  const QString name = ToQt(key.key);
  if (key.key == "optID3V2Versions") {
    Press(window, "optID3V2Versions_1");
  } else if (std::holds_alternative<bool Preferences::*>(key.member)) {
    Find<QCheckBox>(window, name.toLatin1()).toggle();  // a greyed one too
  } else if (std::holds_alternative<int Preferences::*>(key.member)) {
    Find<QComboBox>(window, name.toLatin1()).setCurrentIndex(5);
  } else if (auto* path = window.findChild<PathField*>(name)) {
    path->SetPath("/path/of \xFF/" + std::string(key.key));
  } else {
    Find<QLineEdit>(window, name.toLatin1()).setText(QString::fromUtf8(" Größe ") + name);
  }
}

TEST_F(PreferencesWindow, EverySettingHasAControlThatReachesSessionAndFile) {
  person_.WillAnswer(Answer::kOk);       // another database
  session_.preferences.cboEncoder = 12;  // a list that was longer once
  const Preferences before = session_.preferences;
  const int result = Show([&](frmPreferences& window) {
    EXPECT_EQ(Find<QComboBox>(window, "cboEncoder").currentIndex(), 0);
    for (const PreferenceKey& key : PreferenceKeys()) ChangeControl(window, key);
    Find<QCheckBox>(window, "chkaudiogalaxy").click();
    Press(window, "cdmOK");
  });
  EXPECT_EQ(result, QDialog::Accepted);
  for (const PreferenceKey& key : PreferenceKeys()) {
    SCOPED_TRACE(key.key);
    std::visit([&](auto member) { EXPECT_NE(session_.preferences.*member, before.*member); },
               key.member);
    EXPECT_EQ(Stored(std::string(key.key)), StoredText(session_.preferences, key));
  }
  EXPECT_EQ(session_.preferences.lblScan, "/path/of \xFF/lblScan");
  EXPECT_EQ(session_.preferences.txtCDTag, " Größe txtCDTag");
  EXPECT_TRUE(session_.preferences.chkaudiogalaxy);
  EXPECT_EQ(Stored("chkaudiogalaxy"), "");
  EXPECT_EQ(Stored("firstrun"), "1");
}

TEST_F(PreferencesWindow, AFailedCheckKeepsItOpenWithTheKeysWrittenAndCancelRestoresTheControls) {
  person_.WillAnswer(Answer::kOk);
  session_.preferences.txtCDTag = "before";
  std::vector<std::string> told;
  QObject::connect(&Window(), &frmPreferences::PreferencesChanged,
                   [&] { told.push_back(session_.preferences.txtCDTag); });
  const bool open_before = Find<QLineEdit>(Window(), "txtautocomment").isEnabledTo(&Window());
  const int result = Show([&](frmPreferences& window) {
    Find<QLineEdit>(window, "txtCDTag").setText("after");
    for (const char* box : {"chkPreview", "chkWarnGlobal", "chkAutoComment"}) {
      Find<QCheckBox>(window, box).toggle();
    }
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_TRUE(window.isVisible());
    EXPECT_THAT(person_.BoxTexts(), ElementsAre(HasSubstr("If Preview is selected")));
    QTest::keyClick(&window, Qt::Key_Escape);
  });
  EXPECT_EQ(result, QDialog::Rejected);
  EXPECT_THAT(told, ElementsAre("after", "before")) << "Cancel is told behind an OK";
  EXPECT_EQ(session_.success_messages, session_.preferences.chkWarnGlobal);
  EXPECT_EQ(Find<QLineEdit>(Window(), "txtautocomment").isEnabledTo(&Window()), open_before);
  EXPECT_EQ(Stored("txtCDTag"), "after");
  EXPECT_EQ(Stored("chkPreview"), "1");
  EXPECT_EQ(session_.preferences.txtCDTag, "before");
  EXPECT_FALSE(session_.preferences.chkPreview);
  EXPECT_EQ(Find<QLineEdit>(Window(), "txtCDTag").text(), "before");
}

TEST_F(PreferencesWindow, TheStartRulesAutoCommentTheOtherWayRoundThanOk) {
  for (const bool automatic : {true, false}) {
    session_.preferences.chkAutoComment = automatic;
    window_.reset();
    const auto& text = Find<QLineEdit>(Window(), "txtautocomment");
    EXPECT_EQ(text.isEnabled(), automatic);
    Show([](frmPreferences& window) { Press(window, "cdmOK"); });
    EXPECT_EQ(text.isEnabled(), !automatic);
  }
}

TEST_F(PreferencesWindow, BoxesOfTheSavingPageDependOnEachOther) {
  session_.preferences.chkSaveTags23 = false;
  const auto enabled = [this] {
    std::string letters;
    for (const char* name :
         {"chkSaveTags11", "chkSaveTags23", "lblLyricsSaved", "chkSaveLyrics1", "chkSaveLyrics2"}) {
      letters += Find<QWidget>(Window(), name).isEnabled() ? 'x' : '-';
    }
    return letters;
  };
  EXPECT_EQ(enabled(), "xxx-x") << "the rule was not applied at the load";
  Find<QCheckBox>(Window(), "chkSaveTags23").click();
  EXPECT_EQ(enabled(), "xxxxx");
  const auto& warning = Find<QWidget>(Window(), "lblLyricsWarning");
  const bool lyrics = Find<QCheckBox>(Window(), "chkSaveLyrics2").isChecked();
  EXPECT_TRUE(warning.isHidden());
  Find<QCheckBox>(Window(), "chkSaveTags11").click();
  EXPECT_EQ(warning.isHidden(), !lyrics);
  Find<QCheckBox>(Window(), "chkSaveLyrics2").click();
  EXPECT_EQ(warning.isHidden(), lyrics);
  Find<QCheckBox>(Window(), "chkSaveLyrics2").setChecked(true);
  Find<QCheckBox>(Window(), "chkSaveTags").click();
  EXPECT_TRUE(warning.isHidden()) << "no tag is written";
  EXPECT_EQ(enabled(), "-----");
}

TEST_F(PreferencesWindow, PickingAnEncoderFillsItsTemplatesAndShutsWhatALibraryDoesNotNeed) {
  session_.preferences.lblEncoderPath = "/usr/bin/lame";
  session_.preferences.txtEncoderParams = "mine";
  auto& list = Find<QComboBox>(Window(), "cboEncoder");
  ASSERT_EQ(list.count(), 8);
  const auto text = [this](const char* name) {
    return Find<QLineEdit>(Window(), name).text().toStdString();
  };
  Show([&](frmPreferences& window) {
    Find<QTabWidget>(window, "TabStrip1").setCurrentIndex(4);
    EXPECT_EQ(text("txtEncoderParams"), "mine");
    for (int index = 1; index < list.count(); ++index) {
      QTest::keyClick(&list, Qt::Key_Down);
      ASSERT_EQ(list.currentIndex(), index);
      EXPECT_EQ(text("txtEncoderParams"), EncoderOf(index).encode);
      EXPECT_EQ(text("txtDecoderParams"), EncoderOf(index).decode);
      EXPECT_EQ(text("lblEncoderPath"), index < 6 ? "/usr/bin/lame" : "");
      for (const char* name : {"Command5", "txtEncoderParams", "txtDecoderParams"}) {
        EXPECT_EQ(Find<QWidget>(window, name).isEnabled(), index < 6) << name << index;
      }
    }
    Press(window, "cmdCancel");
  });
  EXPECT_EQ(text("txtEncoderParams"), "mine");
  EXPECT_TRUE(Find<QWidget>(Window(), "Command5").isEnabled());
}

TEST_F(PreferencesWindow, PickersFillTheirFieldsAndRefuseWhatTheFileWouldCut) {
  const std::string endless = "/" + std::string(255, 'x');
  session_.PlayerKind = "Unknown";
  Show([&](frmPreferences& window) {
    const auto path = [&](const char* name) { return Find<PathField>(window, name).Path(); };
    person_.WillChoose("/home/anna/Musik");
    Press(window, "Command2");
    EXPECT_EQ(path("lblScan"), "/home/anna/Musik/");
    person_.WillChoose(endless);
    person_.WillAnswer(Answer::kOk);
    Press(window, "Command1");
    EXPECT_EQ(path("lblPreviewPath"), "");
    person_.WillChoose("/opt/WinAmp/player");
    Press(window, "Command4");
    EXPECT_EQ(session_.PlayerKind, "Winamp");
    person_.WillChoose("/mnt/discs/");
    WhenModal<frmLaufwerke> drives([](frmLaufwerke& dialog) {
      Press(dialog, "cmdFolder");
      Press(dialog, "cmdOK");
    });
    Press(window, "Command6");
    EXPECT_EQ(path("lblConfigCDROM"), "/mnt/discs");
    Press(window, "cmdCancel");
  });
  EXPECT_THAT(person_.BoxTexts(), ElementsAre(HasSubstr("longer than 255 characters")));
  EXPECT_EQ(session_.PlayerKind, "Unknown") << "Cancel left the kind of a player that is not set";
}

TEST_F(PreferencesWindow, TheChooserOfTheDatabaseAsksAgainUntilAPathFits) {
  person_.WillChoose("/" + std::string(300, 'x'));
  person_.WillAnswer(Answer::kOk);
  person_.WillChoose("/srv/mp3s.mdb");
  EXPECT_TRUE(Window().ChooseDatabase());
  EXPECT_EQ(session_.preferences.lblConfigDB, "/srv/mp3s.mdb");
  person_.WillChoose(std::nullopt);
  EXPECT_FALSE(Window().ChooseDatabase());
  EXPECT_EQ(Stored("lblConfigDB"), "");
}

TEST_F(PreferencesWindow, HelpIsALocalPageAndAMissingOneIsSilent) {
  Press(Window(), "cmdHelp");
  EXPECT_TRUE(world_.log.empty());
  const std::string page = folder_.Write("help/preferences.html");
  Press(Window(), "cmdHelp");
  Press(Window(), "Label16");
  EXPECT_THAT(world_.log, ElementsAre("open " + page, HasSubstr("https://")));
}

TEST_F(PreferencesWindow, WithoutARepairToolItsBoxIsOutOfReach) {
  session_.preferences.chkRepair = false;
  Window().DisableRepair();
  EXPECT_FALSE(Find<QCheckBox>(Window(), "chkRepair").isEnabled());
  Show([](frmPreferences& window) { Press(window, "cdmOK"); });
  EXPECT_EQ(Stored("chkRepair"), "0");
}

}  // namespace
}  // namespace tunemeadow
