// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/playlist_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "playback/lists_test.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;

class PlaylistFiles : public ListsTest {
 protected:
  /// A track whose file is there; its path.
  std::string AddFile(const std::string& name) {
    std::string path = music_.Write(name, "x");
    AddTrack(path);
    return path;
  }

  TempFolder music_, target_;
};

TEST_F(PlaylistFiles, BothAreWrittenByteForByte) {
  const std::string a = AddFile("a \"b\" 'c' ü.MP3");
  const std::string o = AddFile("b.ogg");
  const std::string bytes = AddFile("c \xFF.mp3");
  ShowTracks(3);
  interaction_.WillChoose(target_.Path("list"));
  mnuExporttoPlaylist_Click(bench_);
  EXPECT_EQ(target_.Read("list.m3u"), "#EXTM3U\r\n" + a + "\r\n" + o + "\r\n" + bytes + "\r\n");
  interaction_.WillChoose(target_.Path("list.Pls"));
  mnuExporttoplsPlaylist_Click(bench_);
  EXPECT_EQ(target_.Read("list.Pls"), "[playlist]\r\nFile1=" + a + "\r\nFile2=" + o + "\r\nFile3=" +
                                          bytes + "\r\nNumberOfEntries = 3\r\nVersion = 2\r\n");
}

TEST_F(PlaylistFiles, WithoutAnMp3FileThereIsNothingToWrite) {
  AddFile("a.ogg");
  ShowTracks(1);
  for (const auto export_list : {mnuExporttoPlaylist_Click, mnuExporttoplsPlaylist_Click}) {
    interaction_.WillAnswer(Answer::kOk);
    export_list(bench_);
  }
  EXPECT_THAT(interaction_.BoxTexts(), testing::Each("Tunemeadow: No Objects selected!"));
  EXPECT_EQ(interaction_.boxes[0].icon, Icon::kInformation);
}

TEST_F(PlaylistFiles, AMissingFileIsLeftOutLookedForAgainOrEndsIt) {
  const std::string a = AddFile("a.mp3");
  const std::string b = AddFile("b.mp3");
  std::filesystem::remove(a);
  ShowTracks(2);
  interaction_.WillChoose(target_.Path("x.pls"));
  interaction_.WillAnswer(Answer::kIgnore);
  mnuExporttoplsPlaylist_Click(bench_);
  EXPECT_EQ(target_.Read("x.pls"),
            "[playlist]\r\nFile1=" + b + "\r\nNumberOfEntries = 1\r\nVersion = 2\r\n");
  EXPECT_THAT(interaction_.BoxTexts(),
              ElementsAre("File not found: The file " + a + " was not found."));

  interaction_.WillChoose(target_.Path("y.m3u"));
  interaction_.WillAnswer(Answer::kAbort);
  mnuExporttoPlaylist_Click(bench_);
  EXPECT_FALSE(std::filesystem::exists(target_.Path("y.m3u")));

  interaction_.WillChoose(target_.Path("y.m3u"));
  interaction_.WillAnswer(Answer::kRetry);
  interaction_.WillAnswer(Answer::kRetry);
  interaction_.on_box = [&](const MessageBox&) {
    if (interaction_.boxes.size() == 4) music_.Write("a.mp3", "x");
  };
  mnuExporttoPlaylist_Click(bench_);
  EXPECT_EQ(target_.Read("y.m3u"), "#EXTM3U\r\n" + a + "\r\n" + b + "\r\n");
}

TEST_F(PlaylistFiles, AFileIsReplacedOnlyOnYes) {
  AddFile("a.mp3");
  ShowTracks(1);
  for (const Answer answer : {Answer::kNo, Answer::kYes}) {
    target_.Write("x.m3u", "old");
    interaction_.WillChoose(target_.Path("x.m3u"));
    interaction_.WillAnswer(answer);
    mnuExporttoPlaylist_Click(bench_);
    EXPECT_EQ(target_.Read("x.m3u") == "old", answer == Answer::kNo);
  }
  EXPECT_THAT(interaction_.BoxTexts(), testing::Each("File exists: Overwrite file?"));
}

TEST_F(PlaylistFiles, NoChoiceAndNoPlaceToWriteEndWithoutAWord) {
  AddFile("a.mp3");
  ShowTracks(1);
  interaction_.WillChoose(std::nullopt);
  mnuExporttoPlaylist_Click(bench_);
  interaction_.WillChoose(target_.Path("*.m3u"));  // what the dialog began with: asked again
  interaction_.WillChoose(target_.Path("no/folder/x.m3u"));
  mnuExporttoPlaylist_Click(bench_);
  EXPECT_EQ(target_.Count(), 0);
}

TEST_F(PlaylistFiles, AnArchivedTrackIsWrittenWithItsDrive) {
  const std::string disc = music_.Write("Rock/a.mp3", "x");
  session_.preferences.txtCDTag = "MP3-CD";
  session_.preferences.lblConfigCDROM = music_.Path();
  AddTrack("MP3-CD01/Rock/a.mp3");
  ShowTracks(1);
  interaction_.WillChoose(target_.Path("x.m3u"));
  mnuExporttoPlaylist_Click(bench_);
  EXPECT_EQ(target_.Read("x.m3u"), "#EXTM3U\r\n" + disc + "\r\n");
}

TEST_F(PlaylistFiles, TellsHowManyOfTheListItHoldsAndOffersNameAndFolderOfLastTime) {
  const std::string a = AddFile("a.mp3");
  AddFile("b.mp3");
  ShowTracks(1);
  interaction_.WillChoose(target_.Path("x.m3u"));
  mnuExporttoPlaylist_Click(bench_);
  EXPECT_EQ(interaction_.offered.back(), folder_.Path("*.m3u"));
  EXPECT_EQ(interaction_.Status(), "1 of 2 tracks written.");
  Run("insert into playlists (Playlist,UID) select 'AC/DC',uid from mp3sTabelle");
  OpenPlaylist("AC/DC", 2);
  interaction_.WillChoose(target_.Path("no/folder/x.pls"));
  mnuExporttoplsPlaylist_Click(bench_);
  EXPECT_EQ(interaction_.offered.back(), target_.Path("AC_DC.pls"));
  EXPECT_EQ(interaction_.Status(), target_.Path("no/folder/x.pls") + " cannot be written.");
  interaction_.WillChoose(target_.Path("x.pls"));
  mnuExporttoplsPlaylist_Click(bench_);
  EXPECT_EQ(interaction_.Status(), "2 tracks written.");
}

}  // namespace
}  // namespace tunemeadow
