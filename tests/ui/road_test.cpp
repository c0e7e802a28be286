// SPDX-License-Identifier: GPL-3.0-or-later
// The whole road of a new person, in the real windows: first start in an empty folder, welcome,
// import, search, sort, a click, the end, and the second start.
#include <QComboBox>
#include <QLabel>
#include <filesystem>

#include "support/list_rows.h"
#include "support/main_window.h"
#include "ui/kit/path_field.h"
#include "ui/panes/tree_pane.h"
#include "ui/windows/library/frmImport.h"
#include "ui/windows/library/frmStartInfos.h"

namespace tunemeadow {
namespace {

constexpr auto kOk = QMessageBox::Ok;

class Road : public MainWindowTest {
 protected:
  Road() {
    std::filesystem::copy_file(TM_BINARY_DIR "/data/mp3s.mdb", new_.Path("mp3s.mdb"));
    std::filesystem::copy_file(TM_SOURCE_DIR "/data/monster.mp3", new_.Path("monster.mp3"));
    const auto write = [&](const char* name, const TagFields& fields) {
      music_.Write(name, Mp3File().Id3v2(fields).Frames(20));
    };
    write("b/one.mp3", {{"TIT2", "Zebra"}, {"TPE1", "Anna"}, {"TRCK", "10"}});
    write("two.mp3", {{"TIT2", "apple"}, {"TPE1", "Bert"}, {"TRCK", "9"}, {"USLT", "engla la"}});
    write("three.mp3", {{"TIT2", "Mango"}, {"TPE1", "anna B"}, {"TRCK", "2"}});
  }

  std::vector<std::string> Titles() { return ColumnOf(Bench().ListView1, TrackField::Songname); }

  void FirstStart() {
    WhenModal<frmStartInfos> welcome([](frmStartInfos& shown) {
      EXPECT_EQ(shown.windowTitle(), "Welcome!");
      Press(shown, "cmdOK");
    });
    BoxAnswers no_player{kOk};
    Start(new_);
  }

  void Import() {
    WhenModal<frmImport> dialog([this](frmImport& shown) {
      Find<PathField>(shown, "lblScan").SetPath(music_.Path() + "/");
      Press(shown, "cmdOK");
    });
    BoxAnswers answers{kOk, kOk};
    Trigger(*window_, "mnuFileImport");
    EXPECT_EQ(answers.seen, (std::vector<std::string>{"Tunemeadow: Import 3 File(s)?",
                                                      "Import: 3 File(s) successfully imported."}));
  }

  TempFolder new_;  ///< a program's folder as it is unpacked
};

TEST_F(Road, FromTheFirstStartToTheSecond) {
  FirstStart();
  EXPECT_EQ(Titles(), std::vector<std::string>{"Monster"}) << "the demonstration row";
  EXPECT_EQ(Shown("txtLocationSave"), new_.Path("monster.mp3"));
  EXPECT_EQ(Find<QLabel>(*window_, "StatusPanel1").text(),
            "Now it's recommended to scan your disk for mp3 files");

  Import();
  EXPECT_EQ(List().model()->rowCount(), 4);
  const auto* tree = Find<LibraryTree>(*window_, "TreeView1").model();
  EXPECT_EQ(tree->index(1, 0, tree->index(0, 0)).data().toString(), "Database [4 Files]");

  Find<QComboBox>(*window_, "cboArtistSearch").setEditText("ANNA");
  Press(*window_, "cmdSuchen");
  List().Sort(8);
  EXPECT_EQ(Titles(), (std::vector<std::string>{"Mango", "Zebra"})) << "track 2 before track 10";
  List().Sort(8);
  EXPECT_EQ(Titles(), (std::vector<std::string>{"Zebra", "Mango"}));

  ClickRow(List(), 0);
  EXPECT_EQ(Shown("txtTitelSave") + Shown("txtInterpretSave"), "ZebraAnna");
  Press(*window_, "cmdSwitch_1");
  EXPECT_TRUE(Find<QLineEdit>(*window_, "txtSituationSave").isVisible());

  List().setColumnHidden(11, true);
  window_->resize(901, 655);
  Start(new_);
  EXPECT_FALSE(session_->first_run);
  EXPECT_EQ(List().model()->rowCount(), 4);
  EXPECT_EQ(window_->size(), QSize(901, 655));
  EXPECT_TRUE(List().isColumnHidden(11));
}

TEST_F(Road, ClosingDuringABatchOnlyCancelsIt) {
  Start();
  session_->busy = true;
  EXPECT_FALSE(window_->close());
  EXPECT_TRUE(session_->CancelRequested);
  EXPECT_TRUE(Catalogue().IsOpen());
  session_->busy = false;
  EXPECT_TRUE(window_->close());
  EXPECT_FALSE(Catalogue().IsOpen());
}

}  // namespace
}  // namespace tunemeadow
