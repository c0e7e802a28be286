// SPDX-License-Identifier: GPL-3.0-or-later
// The road of a listener, in the real windows: import, tracks onto a disc, play from the disc, a
// playlist put in order and written as files, the end, and the second start.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFileDialog>
#include <QInputDialog>
#include <QTreeView>
#include <functional>

#include "playback/play.h"
#include "playback/playlists.h"
#include "support/list_rows.h"
#include "support/main_window.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;

class PlayingRoad : public MainWindowTest {
 protected:
  PlayingRoad() {
    Configure(program_, {{"lblConfigWinamp", "/opt/play"}, {"lblConfigCDROM", disc_.Path()}});
    WriteSongs({"Ash", "Birch", "Cedar", "Elm"});
    Start();
    ImportMusic();
  }

  /// The texts of all nodes of the tree, as a person reads them downwards.
  std::vector<std::string> Nodes() {
    std::vector<std::string> texts;
    const QAbstractItemModel& model = *Find<QTreeView>(*window_, "TreeView1").model();
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
  void Select(std::size_t first, std::size_t last) {
    Bench().ListInView().ClearSelection();
    Bench().ListInView().SetSelected(first, last, true);
    Bench().Watcher().SelectionSet();
  }
  void ClickPlaylist() {
    TreeView1_NodeClick(Bench(), {.kind = NodeKind::kPlaylist, .key = "Road|1", .name = "Road"});
  }
  void ClickArchive() {
    TreeView1_NodeClick(
        Bench(), {.kind = NodeKind::kArchive, .key = "CDArchive|MP3-CD01", .name = "MP3-CD01"});
  }
  static std::vector<std::string> Titles(const ResultList& list) {
    return ColumnOf(list, TrackField::Songname);
  }

  /// The first three tracks go onto the disc, on which their files lie from then on.
  void MoveToDisc() {
    Select(0, 2);
    WhenModal<QInputDialog> number([](QInputDialog& box) {
      EXPECT_EQ(box.textValue(), "MP3-CD01");
      box.accept();
    });
    Action("mnuExtrasDisk2CD").trigger();
    const std::string name = "MP3-CD01/";
    for (const std::string& path : ColumnOf(Bench().ListView1, TrackField::location)) {
      if (path.starts_with(name)) disc_.Write(path.substr(name.size()), "burnt");
    }
  }

  void WriteFile(const char* entry, const std::string& path) {
    WhenModal<QFileDialog> where([path](QFileDialog& dialog) {
      dialog.selectFile(QString::fromStdString(path));
      static_cast<QDialog&>(dialog).accept();
    });
    Action(entry).trigger();
  }

  TempFolder disc_;
};

TEST_F(PlayingRoad, TreeArchiveAndOrderAreThereAfterANewStart) {
  std::vector<std::string> on_disc;
  std::vector<std::string> nodes;
  {
    MoveToDisc();
    EXPECT_THAT(Bench().tree.archives, ElementsAre("MP3-CD01"));
    ClickArchive();
    ASSERT_THAT(Titles(Bench().ListView1), ElementsAre("Ash", "Birch", "Cedar"));
    Select(0, 2);
    Press(*window_, "cmdSpielen");
    ASSERT_EQ(world_.log.size(), 3U) << "one player for each track";
    EXPECT_EQ(world_.log[0].rfind("start /opt/play [" + disc_.Path() + "/", 0), 0U)
        << world_.log[0];
    for (const std::string& started : world_.log) {
      const std::size_t from = started.find('[') + 1;
      on_disc.push_back(started.substr(from, started.find(']') - from));
    }

    {
      WhenModal<QInputDialog> name([](QInputDialog& box) {
        box.setTextValue("Road");
        box.accept();
      });
      Action("mnuPlaylistSave").trigger();
    }
    ClickPlaylist();
    ASSERT_EQ(Bench().ListView3.RowCount(), 3U);
    MovePlaylistRow(Bench(), 2, 0);
    EXPECT_THAT(Titles(Bench().ListView3), ElementsAre("Cedar", "Ash", "Birch"));
    Select(0, 2);
    WriteFile("mnuExporttoPlaylist", program_.Path("road.m3u"));
    WriteFile("mnuExporttoplsPlaylist", program_.Path("road.pls"));
    TreeView1_NodeClick(Bench(), {.kind = NodeKind::kDatabase, .key = "Database"});
    nodes = Nodes();
    EXPECT_THAT(nodes, testing::Contains("Road [3 Files]"));
  }
  EXPECT_EQ(program_.Read("road.m3u"),
            "#EXTM3U\r\n" + on_disc[2] + "\r\n" + on_disc[0] + "\r\n" + on_disc[1] + "\r\n");
  EXPECT_EQ(program_.Read("road.pls"), "[playlist]\r\nFile1=" + on_disc[2] +
                                           "\r\nFile2=" + on_disc[0] + "\r\nFile3=" + on_disc[1] +
                                           "\r\nNumberOfEntries = 3\r\nVersion = 2\r\n");

  Start();
  EXPECT_EQ(Nodes(), nodes);
  EXPECT_THAT(Bench().tree.playlists, ElementsAre("Road"));
  EXPECT_THAT(Bench().tree.archives, ElementsAre("MP3-CD01"));
  ClickPlaylist();
  EXPECT_THAT(Titles(Bench().ListView3), ElementsAre("Cedar", "Ash", "Birch"));
  ClickArchive();
  EXPECT_THAT(Titles(Bench().ListView1), ElementsAre("Ash", "Birch", "Cedar"));
}

}  // namespace
}  // namespace tunemeadow
