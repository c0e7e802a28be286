// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>

#include "library/import_options.h"
#include "support/scripted_interaction.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"
#include "support/window_driver.h"
#include "ui/kit/path_field.h"
#include "ui/windows/library/frmImport.h"

namespace tunemeadow {
namespace {

class ImportWindow : public testing::Test {
 protected:
  [[nodiscard]] std::string Stored(std::string_view key) const {
    return session_.ini.GetString(kConfigSection, key, "", 0);
  }

  TempFolder folder_;
  Session session_{folder_.Path(), "Tunemeadow"};
  ScriptedInteraction person_;
  ScriptedWorld world_;
};

TEST_F(ImportWindow, ShowsTheSettingsAndBringsThemToSessionAndFile) {
  session_.preferences.txtPattern = "ogg";
  session_.preferences.lblScan = "/old/";
  session_.preferences.chkWarn = false;
  person_.WillChoose(folder_.Path());
  person_.WillChoose("/previews/");
  frmImport window(session_, person_, world_);
  EXPECT_EQ(Find<QLineEdit>(window, "txtPattern").text(), "ogg");
  EXPECT_TRUE(Find<QAbstractButton>(window, "optID3V2Versions_0").isChecked());
  Press(window, "Command2");
  Press(window, "Command1");
  Press(window, "optID3V2Versions_1");
  Find<QLineEdit>(window, "txtPreviewSize").setText("0:10");
  Find<QLineEdit>(window, "txtReplacewith").setText("");
  for (const char* box : {"chkRekursiv", "chkID3Read", "chkID3v2Read", "chkLyrics3",
                          "chkReadHiddenFiles", "chkPreview", "chkCapitalize", "chkReplace"}) {
    Find<QCheckBox>(window, box).click();
  }
  Press(window, "cmdOK");
  EXPECT_EQ(window.result(), QDialog::Accepted);
  Preferences expected;
  expected.lblScan = folder_.Path() + "/";
  expected.txtPattern = "ogg";
  expected.chkRekursiv = expected.chkID3Read = expected.chkID3v2Read = expected.chkLyrics3 = false;
  expected.chkReadHiddenFiles = expected.chkPreview = expected.chkCapitalize = true;
  expected.chkReplace = expected.optID3V2Versions = true;
  expected.lblPreviewPath = "/previews/";
  expected.txtPreviewSize = "0:10";
  expected.txtReplacewith = "";
  expected.chkWarn = false;
  EXPECT_EQ(session_.preferences, expected);
  EXPECT_EQ(Stored("lblScan"), expected.lblScan);
  EXPECT_EQ(Stored("chkLyrics3"), "0");
  EXPECT_EQ(Stored("chkWarn"), "") << "a key that the dialog has no control for";
}

TEST_F(ImportWindow, APreviewWithoutFolderKeepsItOpenAndCancelChangesNothing) {
  person_.WillAnswer(Answer::kOk);
  folder_.Write("help/import.html");
  frmImport window(session_, person_, world_);
  window.show();
  Find<QCheckBox>(window, "chkPreview").click();
  Press(window, "cmdOK");
  EXPECT_TRUE(window.isVisible());
  Press(window, "Command3");
  EXPECT_THAT(world_.log, testing::ElementsAre("open " + folder_.Path("help/import.html")));
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(session_.preferences, Preferences{});
  EXPECT_EQ(Stored("txtPattern"), "");
}

}  // namespace
}  // namespace tunemeadow
