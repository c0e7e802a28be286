// SPDX-License-Identifier: GPL-3.0-or-later
// The whole road of a new person, in the real windows: first start in an empty folder, welcome,
// import, search, sort, a click, the end, and the second start.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <filesystem>

#include "run/program_folder.h"
#include "support/mp3_builder.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"
#include "support/window_driver.h"
#include "ui/kit/path_field.h"
#include "ui/panes/result_view.h"
#include "ui/panes/tree_pane.h"
#include "ui/shell/frmStart.h"
#include "ui/windows/library/frmImport.h"
#include "ui/windows/library/frmPreferences.h"
#include "ui/windows/library/frmStartInfos.h"

namespace tunemeadow {
namespace {

constexpr auto kOk = QMessageBox::Ok;

class Road : public testing::Test {
 protected:
  Road() {
    std::filesystem::create_directories(program_.Path("run"));
    std::filesystem::copy_file(TM_BINARY_DIR "/data/mp3s.mdb", program_.Path("run/mp3s.mdb"));
    std::filesystem::copy_file(TM_SOURCE_DIR "/data/monster.mp3", program_.Path("run/monster.mp3"));
    music_.Write("b/one.mp3",
                 Mp3File().Id3v2({{"TIT2", "Zebra"}, {"TPE1", "Anna"}, {"TRCK", "10"}}).Frames(20));
    music_.Write(
        "two.mp3",
        Mp3File()
            .Id3v2({{"TIT2", "apple"}, {"TPE1", "Bert"}, {"TRCK", "9"}, {"USLT", "engla la"}})
            .Frames(20));
    music_.Write(
        "three.mp3",
        Mp3File().Id3v2({{"TIT2", "Mango"}, {"TPE1", "anna B"}, {"TRCK", "2"}}).Frames(20));
  }

  std::string ProgramPath() { return program_.Path("run"); }

  static int Rows(frmStart& window) {
    return Find<QTreeView>(window, "ListView1").model()->rowCount();
  }
  static std::string Title(frmStart& window, int row) {
    const auto& list = Find<QTreeView>(window, "ListView1");
    return list.model()->index(row, 1).data().toString().toStdString();
  }
  static std::string Text(frmStart& window, const char* name) {
    return Find<QLineEdit>(window, name).text().toStdString();
  }

  void FirstStart(frmStart& window) {
    WhenModal<frmStartInfos> welcome([](frmStartInfos& shown) {
      EXPECT_EQ(shown.windowTitle(), "Welcome!");
      Press(shown, "cmdOK");
    });
    ASSERT_TRUE(window.Form_Load());
  }

  void Import(frmStart& window) {
    WhenModal<frmImport> dialog([this](frmImport& shown) {
      Find<PathField>(shown, "lblScan").SetPath(music_.Path() + "/");
      Press(shown, "cmdOK");
    });
    BoxAnswers answers{kOk, kOk};
    Trigger(window, "mnuFileImport");
    EXPECT_EQ(answers.seen, (std::vector<std::string>{"Tunemeadow: Import 3 File(s)?",
                                                      "Import: 3 File(s) successfully imported."}));
  }

  ScriptedWorld world_;
  TempFolder program_;
  TempFolder music_;
};

TEST_F(Road, FromTheFirstStartToTheSecond) {
  {
    Session session(ProgramPath(), "tunemeadow");
    session.preferences.chkRepair = false;
    frmStart window(session, world_);
    BoxAnswers no_player{kOk};
    FirstStart(window);
    EXPECT_EQ(no_player.seen.size(), 1u);
    EXPECT_EQ(Rows(window), 1) << "the demonstration row";
    EXPECT_EQ(Text(window, "txtLocationSave"), ProgramPath() + "/monster.mp3");
    EXPECT_EQ(Find<QLabel>(window, "StatusPanel1").text(),
              "Now it's recommended to scan your disk for mp3 files");

    Import(window);
    EXPECT_EQ(Rows(window), 4);
    const auto* tree = Find<LibraryTree>(window, "TreeView1").model();
    EXPECT_EQ(tree->index(1, 0, tree->index(0, 0)).data().toString(), "Database [4 Files]");

    Find<QComboBox>(window, "cboArtistSearch").setEditText("ANNA");
    Press(window, "cmdSuchen");
    EXPECT_EQ(Rows(window), 2);
    auto& list = Find<ResultView>(window, "ListView1");
    list.Sort(8);
    EXPECT_EQ(Title(window, 0), "Mango") << "track 2 before track 10";
    list.Sort(8);
    EXPECT_EQ(Title(window, 0), "Zebra");

    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualRect(list.model()->index(0, 1)).center());
    EXPECT_EQ(Text(window, "txtTitelSave"), "Zebra");
    EXPECT_EQ(Text(window, "txtInterpretSave"), "Anna");
    Press(window, "cmdSwitch_1");
    EXPECT_TRUE(Find<QLineEdit>(window, "txtSituationSave").isVisible());

    list.setColumnHidden(11, true);
    window.resize(901, 655);
    window.close();
  }
  Session session(ProgramPath(), "tunemeadow");
  frmStart window(session, world_);
  ASSERT_TRUE(window.Form_Load());
  EXPECT_FALSE(session.first_run);
  EXPECT_EQ(Rows(window), 4);
  EXPECT_EQ(window.size(), QSize(901, 655));
  EXPECT_TRUE(Find<QTreeView>(window, "ListView1").isColumnHidden(11));
  window.close();
}

TEST_F(Road, ClosingDuringABatchOnlyCancelsIt) {
  Session session(ProgramPath(), "tunemeadow");
  session.ini.SaveStrings(kConfigSection, {{"firstrun", "1"}, {"lblConfigWinamp", "/bin/true"}});
  frmStart window(session, world_);
  ASSERT_TRUE(window.Form_Load());
  session.busy = true;
  EXPECT_FALSE(window.close());
  EXPECT_TRUE(session.CancelRequested);
  EXPECT_TRUE(session.connection.IsOpen());
  session.busy = false;
  EXPECT_TRUE(window.close());
  EXPECT_FALSE(session.connection.IsOpen());
}

}  // namespace
}  // namespace tunemeadow
