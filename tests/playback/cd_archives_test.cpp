// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/cd_archives.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "playback/lists_test.h"
#include "tracks/cd_archive_path.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;

constexpr char kLocations[] = "select location from mp3sTabelle order by uid";
constexpr char kArchives[] = "select CDArchive || '/' || UID from cdarchives order by UIDCDArchive";

TEST(PathWithoutRoot, CutsTheDriveTheServerOrTheMountPoint) {
  const std::vector<std::string> mounts = {"/", "/media/disk/", "/media/disk/inner/"};
  const std::pair<std::string, std::string> cases[] = {
      {"/Rock/a.mp3", "/Rock/a.mp3"},
      {"/media/disk/Rock/a.mp3", "/Rock/a.mp3"},
      {"/media/disk/inner/a.mp3", "/a.mp3"},
      {"/media/diskette/a.mp3", "/media/diskette/a.mp3"},
      {"C:\\Rock\\a.mp3", "\\Rock\\a.mp3"},
      {R"(\\server\share\Rock\a.mp3)", "\\Rock\\a.mp3"},
      {"\\\\server", "\\\\server"},
      {"C:", "C:"},
      {"", ""}};
  for (const auto& [location, path] : cases) {
    EXPECT_EQ(PathWithoutRoot(location, mounts), path) << location;
  }
}

TEST(NextDiscNumber, IsOneAboveTheLargest) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{}, "01"},
      {{"CD01/a", "CD09\\a"}, "10"},
      {{"CDx/a", "CD/a", "CD"}, "01"},
      {{"CD7/a/12", "CD007/b"}, "08"},
      {{"CD99/a"}, "100"},
      {{"CD99999999999999999999/a"}, "01"},
      {{"CD9223372036854775807/a", "CD4/a"}, "05"}};
  for (const auto& [locations, next] : cases) EXPECT_EQ(NextDiscNumber(locations, "CD"), next);
}

class CDArchives : public ListsTest {
 protected:
  CDArchives() {
    session_.preferences.txtCDTag = "MP3-CD";
    session_.preferences.lblConfigCDROM = "/media/cdrom/";
  }

  void Archive(const std::string& disc) {
    interaction_.WillAnswerText(disc);
    mnuExtrasDisk2CD_Click(bench_);
  }

  void Delete(const std::string& name) {
    ClickNode(NodeKind::kArchive, name);
    interaction_.WillAnswer(Answer::kYes);
    mnuItem3CDArchivloeschen_Click(bench_, {});
  }
};

TEST_F(CDArchives, TheSelectedTracksMoveToTheDiscAndBackToTheDrive) {
  world_.mounted = {{"/", DriveType::kFixed}, {"/media/usb/", DriveType::kRemovable}};
  const std::string a = AddTrack("/Rock/O'Neil \"a\".mp3");
  const std::string b = AddTrack("/media/usb/Pop/b.mp3");
  AddTrack("/z/stays.mp3");
  ShowTracks(2);
  Archive("MP3-CD01");
  EXPECT_THAT(interaction_.prompts, ElementsAre("CD-Number:"));
  EXPECT_THAT(Rows(kLocations),
              ElementsAre("MP3-CD01/Rock/O'Neil \"a\".mp3", "MP3-CD01/Pop/b.mp3", "/z/stays.mp3"));
  EXPECT_THAT(Rows(kArchives), ElementsAre("MP3-CD01/" + a, "MP3-CD01/" + b));
  EXPECT_THAT(bench_.tree.archives, ElementsAre("MP3-CD01"));
  EXPECT_THAT(Locations(bench_.ListView1), testing::Contains("MP3-CD01/Pop/b.mp3"));
  std::string path = "MP3-CD01/Pop/b.mp3";
  CheckCDArchive(path, session_.preferences);

  Delete("MP3-CD01");
  EXPECT_THAT(interaction_.BoxTexts(),
              ElementsAre("Tunemeadow: Are you sure to delete CD-Archiv \"MP3-CD01\"?\nLocations "
                          "will be renamed to your CD-Drive-letter"));
  EXPECT_THAT(Rows(kLocations), ElementsAre("/media/cdrom/Rock/O'Neil \"a\".mp3",
                                            "/media/cdrom/Pop/b.mp3", "/z/stays.mp3"));
  EXPECT_EQ(path, "/media/cdrom/Pop/b.mp3") << "where it was played from";
  EXPECT_THAT(Rows(kArchives), ElementsAre());
  EXPECT_THAT(bench_.tree.archives, ElementsAre());
}

TEST_F(CDArchives, TheTrackInTheEditorKnowsWhereItIsNow) {
  AddTrack("/m/Rock/a.mp3");
  ShowTracks(1);
  const std::size_t row = *bench_.ListView1.RowOfUid(session_.connection.LastInsertedKey());
  Select(bench_.ListView1, 0);
  bench_.ListView1.SelectOnly(row);
  ListView1_ItemClick(bench_, row);
  bench_.details.texts[TrackField::Songname] = "typed and not saved";
  bench_.details.DetailsKeyed = bench_.details.DetailsChanged = true;
  interaction_.WillAnswerText("MP3-CD01");
  mnuExtrasDisk2CD_Click(bench_);
  EXPECT_EQ(bench_.details.texts[TrackField::location].rfind("MP3-CD01/", 0), 0U)
      << "a save would write the old path back: " << bench_.details.texts[TrackField::location];
  EXPECT_EQ(bench_.details.texts[TrackField::Songname], "typed and not saved");
}

TEST_F(CDArchives, WhatIsArchivedAlreadyOrNotSelectedIsLeftAlone) {
  AddTrack("MP3-CD07/a.mp3");
  AddTrack("/b.mp3");
  ShowTracks(0);
  bench_.ListView1.SelectOnly(1);
  for (int i = 0; i < 2; ++i) {
    interaction_.WillAnswer(Answer::kOk);
    mnuExtrasDisk2CD_Click(bench_);
    bench_.ListView1.ClearSelection();
  }
  EXPECT_THAT(interaction_.BoxTexts(), testing::Each("Tunemeadow: No archievable items selected!"));
  bench_.ListView1.SetSelected(0, 1, true);
  for (const std::optional<std::string>& answer :
       {std::optional<std::string>(), std::optional<std::string>("")}) {
    interaction_.WillAnswerText(answer);
    mnuExtrasDisk2CD_Click(bench_);
  }
  EXPECT_THAT(Rows(kLocations), ElementsAre("MP3-CD07/a.mp3", "/b.mp3"));
  bench_.ListView1.SetSelected(0, 1, true);
  session_.preferences.txtCDTag.clear();
  for (const char* root : {"/b", "\\", "C:", "c:\\x"}) {
    interaction_.WillAnswer(Answer::kOk);
    Archive(root);
    EXPECT_EQ(interaction_.boxes.back().text,
              "\"" + std::string(root) +
                  "\" cannot be the name of a disc: it begins like the path of a folder or a "
                  "drive.\nNothing was changed.");
  }
  EXPECT_THAT(Rows(kArchives), ElementsAre());
  EXPECT_THAT(Rows(kLocations), ElementsAre("MP3-CD07/a.mp3", "/b.mp3"));
  Archive("Disc");
  EXPECT_THAT(Rows(kLocations), ElementsAre("Disc/MP3-CD07/a.mp3", "Disc/b.mp3"))
      << "without a tag every track may go";
}

TEST_F(CDArchives, ANameHitsNoLongerOneAndBothKindsOfPath) {
  for (const char* path : {"CD1/a.mp3", "CD10/b.mp3", "CD1\\c.mp3", "CD10\\d.mp3", "cd1/e.mp3"}) {
    AddTrack(path);
  }
  Run("insert into cdarchives (CDArchive,UID) select 'CD1', uid from mp3sTabelle");
  Run("insert into cdarchives (CDArchive,UID) select 'CD10', uid from mp3sTabelle");
  session_.preferences.lblConfigCDROM = "D:\\";
  Delete("CD1");
  EXPECT_THAT(Rows(kLocations),
              ElementsAre("D:/a.mp3", "CD10/b.mp3", "D:\\c.mp3", "CD10\\d.mp3", "D:/e.mp3"));
  EXPECT_THAT(Rows("select distinct CDArchive from cdarchives"), ElementsAre("CD10"));
}

TEST_F(CDArchives, WhateverIsTypedAsANameIsTheName) {
  const std::vector<std::string> names = {"a\"b'c", "CDArchive", "location",           "a|b",
                                          "50%_",   "Größe \\x", std::string(300, 'n')};
  for (const std::string& name : names) {
    SCOPED_TRACE(name);
    Run("delete from mp3sTabelle");
    const std::string uid = AddTrack("/Rock/a.mp3");
    const std::string other = AddTrack("other/Rock/a.mp3");
    ShowTracks(1);
    Archive(name);
    EXPECT_THAT(ArchiveNames(bench_), ElementsAre(name));
    EXPECT_THAT(Rows(kLocations), ElementsAre(name + "/Rock/a.mp3", "other/Rock/a.mp3"));
    Delete(name);
    EXPECT_THAT(Rows(kLocations), ElementsAre("/media/cdrom/Rock/a.mp3", "other/Rock/a.mp3"));
    EXPECT_THAT(ArchiveNames(bench_), ElementsAre());
  }
}

TEST_F(CDArchives, WithoutADriveNothingIsDeleted) {
  AddTrack("CD1/a.mp3");
  Run("insert into cdarchives (CDArchive,UID) select 'CD1', uid from mp3sTabelle");
  session_.preferences.lblConfigCDROM.clear();
  ClickNode(NodeKind::kArchiveFolder, "CD1");
  interaction_.WillAnswer(Answer::kYes);
  interaction_.WillAnswer(Answer::kOk);
  int choices = 0;
  mnuItem3CDArchivloeschen_Click(bench_, [&] { ++choices; });
  EXPECT_EQ(choices, 1);
  EXPECT_THAT(Rows(kLocations), ElementsAre("CD1/a.mp3"));
  EXPECT_EQ(Rows(kArchives).size(), 1U);
  interaction_.WillAnswer(Answer::kYes);
  mnuItem3CDArchivloeschen_Click(bench_, [&] { session_.preferences.lblConfigCDROM = "/mnt"; });
  EXPECT_THAT(Rows(kLocations), ElementsAre("/mnt/a.mp3"));
}

TEST_F(CDArchives, AnArchiveThatWasInViewGivesWayToTheLibrary) {
  AddTrack("CD1/a.mp3");
  AddTrack("CD2/b.mp3");
  for (const char* name : {"CD1", "CD2"}) {
    Run(std::string("insert into cdarchives (CDArchive,UID) select '") + name +
        "', uid from mp3sTabelle where location like '" + name + "%'");
  }
  const auto in_view = [this] { return bench_.current_view + ":" + bench_.search.cboCDArchive; };
  TreeView1_NodeClick(bench_, {NodeKind::kArchive, "CDArchive|CD1", "cd1"});
  Delete("CD2");
  EXPECT_EQ(in_view(), "CDArchive:cd1") << "another one stays in view";
  Delete("CD1");
  EXPECT_EQ(in_view(), "Database:");
  EXPECT_THAT(Locations(bench_.ListView1), ElementsAre("/media/cdrom/a.mp3", "/media/cdrom/b.mp3"));
}

TEST_F(CDArchives, OnlyAnArchiveIsDeletedAndOnlyOnYes) {
  for (const NodeKind kind : {NodeKind::kRoot, NodeKind::kArchives, NodeKind::kPlaylist}) {
    ClickNode(kind, "CD1");
    interaction_.WillAnswer(Answer::kOk);
    mnuItem3CDArchivloeschen_Click(bench_, {});
  }
  EXPECT_THAT(interaction_.BoxTexts(), testing::Each("Tunemeadow: No CDArchive is  selected."));
  AddTrack("CD1/a.mp3");
  ClickNode(NodeKind::kArchive, "CD1");
  interaction_.WillAnswer(Answer::kNo);
  mnuItem3CDArchivloeschen_Click(bench_, {});
  EXPECT_THAT(Rows(kLocations), ElementsAre("CD1/a.mp3"));
}

TEST_F(CDArchives, ARefusedStatementIsToldAndEndsIt) {
  AddTrack("/a.mp3");
  AddTrack("/b.mp3");
  Refuse("update on mp3sTabelle when old.location='/b.mp3'", "full");
  ShowTracks(2);
  interaction_.WillAnswer(Answer::kOk);
  Archive("CD1");
  EXPECT_THAT(interaction_.BoxTexts(), ElementsAre("Error!: full"));
  EXPECT_THAT(Rows(kLocations), ElementsAre("CD1/a.mp3", "/b.mp3"));
  EXPECT_THAT(Locations(bench_.ListView1), testing::Contains("CD1/a.mp3"));
  EXPECT_FALSE(session_.busy);
}

}  // namespace
}  // namespace tunemeadow
