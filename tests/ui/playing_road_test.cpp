// SPDX-License-Identifier: GPL-3.0-or-later
// The road of a listener, in the real windows: import, tracks onto a disc, play from the disc, a
// playlist put in order and written as files, the end, and the second start.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QFileDialog>
#include <QInputDialog>
#include <QTreeView>
#include <filesystem>
#include <functional>

#include "library/import.h"
#include "playback/play.h"
#include "playback/playlists.h"
#include "support/mp3_builder.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"
#include "support/window_driver.h"
#include "ui/panes/result_view.h"
#include "ui/shell/frmStart.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;

class PlayingRoad : public testing::Test {
 protected:
  PlayingRoad() {
    std::filesystem::copy_file(TM_BINARY_DIR "/data/mp3s.mdb", program_.Path("mp3s.mdb"));
    Connection connection;
    connection.Open(program_.Path("mp3s.mdb"));
    connection.Execute("delete from mp3sTabelle");
    Session(program_.Path(), "tunemeadow")
        .ini.SaveStrings(kConfigSection, {{"firstrun", "1"},
                                          {"lblConfigWinamp", "/opt/mpv"},
                                          {"lblConfigCDROM", disc_.Path()},
                                          {"chkBackup", "0"},
                                          {"chkRepair", "0"}});
    for (const char* title : {"Ash", "Birch", "Cedar", "Elm"}) {
      music_.Write(std::string(title) + ".mp3",
                   Mp3File().Id3v2({{"TIT2", title}, {"TPE1", "Anna"}}).Frames(20));
    }
  }

  static QAction& Entry(frmStart& window, const char* name) { return Find<QAction>(window, name); }
  /// The texts of all nodes of the tree, as a person reads them downwards.
  static std::vector<std::string> Nodes(frmStart& window) {
    std::vector<std::string> texts;
    const QAbstractItemModel& model = *Find<QTreeView>(window, "TreeView1").model();
    const std::function<void(const QModelIndex&)> walk = [&](const QModelIndex& parent) {
      for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex node = model.index(row, 0, parent);
        texts.push_back(node.data().toString().toStdString());
        walk(node);
      }
    };
    walk({});
    return texts;
  }
  static void Select(Workbench& bench, std::size_t first, std::size_t last) {
    bench.ListInView().ClearSelection();
    bench.ListInView().SetSelected(first, last, true);
    bench.Watcher().SelectionSet();
  }
  static std::vector<std::string> Titles(const ResultList& list) {
    std::vector<std::string> titles;
    for (std::size_t row = 0; row < list.RowCount(); ++row) {
      titles.emplace_back(list.Cell(row, TrackField::Songname));
    }
    return titles;
  }

  /// The first three tracks go onto the disc, on which their files lie from then on.
  void MoveToDisc(frmStart& window) {
    Workbench& bench = window.Bench();
    Select(bench, 0, 2);
    WhenModal<QInputDialog> number([](QInputDialog& box) {
      EXPECT_EQ(box.textValue(), "MP3-CD01");
      box.accept();
    });
    Entry(window, "mnuExtrasDisk2CD").trigger();
    const std::string name = "MP3-CD01";
    for (std::size_t row = 0; row < bench.ListView1.RowCount(); ++row) {
      const std::string location(bench.ListView1.Cell(row, TrackField::location));
      if (location.rfind(name, 0) == 0) disc_.Write(location.substr(name.size() + 1), "burnt");
    }
  }

  void WriteFile(frmStart& window, const char* entry, const std::string& path) {
    WhenModal<QFileDialog> where([path](QFileDialog& dialog) {
      dialog.selectFile(QString::fromStdString(path));
      static_cast<QDialog&>(dialog).accept();
    });
    Entry(window, entry).trigger();
  }

  TempFolder program_, music_, disc_;
  ScriptedWorld world_;
};

TEST_F(PlayingRoad, TreeArchiveAndOrderAreThereAfterANewStart) {
  std::vector<std::string> on_disc;
  std::vector<std::string> nodes;
  {
    Session session(program_.Path(), "tunemeadow");
    frmStart window(session, world_);
    ASSERT_TRUE(window.Form_Load());
    Workbench& bench = window.Bench();
    {
      BoxAnswers answers{QMessageBox::Ok, QMessageBox::Ok};
      ImportDropped(bench, std::vector<std::string>{music_.Path()});
    }
    MoveToDisc(window);
    EXPECT_THAT(bench.tree.archives, ElementsAre("MP3-CD01"));
    TreeView1_NodeClick(
        bench, {.kind = NodeKind::kArchive, .key = "CDArchive|MP3-CD01", .name = "MP3-CD01"});
    ASSERT_THAT(Titles(bench.ListView1), ElementsAre("Ash", "Birch", "Cedar"));
    Select(bench, 0, 2);
    Press(window, "cmdSpielen");
    ASSERT_EQ(world_.log.size(), 3U) << "one player for each track";
    EXPECT_EQ(world_.log[0].rfind("start /opt/mpv [" + disc_.Path() + "/", 0), 0U) << world_.log[0];
    for (const std::string& started : world_.log) {
      const std::size_t from = started.find('[') + 1;
      on_disc.push_back(started.substr(from, started.find(']') - from));
    }

    {
      WhenModal<QInputDialog> name([](QInputDialog& box) {
        box.setTextValue("Road");
        box.accept();
      });
      Entry(window, "mnuPlaylistSave").trigger();
    }
    TreeView1_NodeClick(bench, {.kind = NodeKind::kPlaylist, .key = "Road|1", .name = "Road"});
    ASSERT_EQ(bench.ListView3.RowCount(), 3U);
    MovePlaylistRow(bench, 2, 0);
    EXPECT_THAT(Titles(bench.ListView3), ElementsAre("Cedar", "Ash", "Birch"));
    Select(bench, 0, 2);
    WriteFile(window, "mnuExporttoPlaylist", program_.Path("road.m3u"));
    WriteFile(window, "mnuExporttoplsPlaylist", program_.Path("road.pls"));
    TreeView1_NodeClick(bench, {.kind = NodeKind::kDatabase, .key = "Database"});
    nodes = Nodes(window);
    EXPECT_THAT(nodes, testing::Contains("Road [3 Files]"));
    window.close();
  }
  EXPECT_EQ(program_.Read("road.m3u"),
            "#EXTM3U\r\n" + on_disc[2] + "\r\n" + on_disc[0] + "\r\n" + on_disc[1] + "\r\n");
  EXPECT_EQ(program_.Read("road.pls"), "[playlist]\r\nFile1=" + on_disc[2] +
                                           "\r\nFile2=" + on_disc[0] + "\r\nFile3=" + on_disc[1] +
                                           "\r\nNumberOfEntries = 3\r\nVersion = 2\r\n");

  Session session(program_.Path(), "tunemeadow");
  frmStart window(session, world_);
  ASSERT_TRUE(window.Form_Load());
  Workbench& bench = window.Bench();
  EXPECT_EQ(Nodes(window), nodes);
  EXPECT_THAT(bench.tree.playlists, ElementsAre("Road"));
  EXPECT_THAT(bench.tree.archives, ElementsAre("MP3-CD01"));
  TreeView1_NodeClick(bench, {.kind = NodeKind::kPlaylist, .key = "Road|1", .name = "Road"});
  EXPECT_THAT(Titles(bench.ListView3), ElementsAre("Cedar", "Ash", "Birch"));
  TreeView1_NodeClick(
      bench, {.kind = NodeKind::kArchive, .key = "CDArchive|MP3-CD01", .name = "MP3-CD01"});
  EXPECT_THAT(Titles(bench.ListView1), ElementsAre("Ash", "Birch", "Cedar"));
  window.close();
}

}  // namespace
}  // namespace tunemeadow
