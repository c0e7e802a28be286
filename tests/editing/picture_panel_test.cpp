// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/picture_panel.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "audio/tag_writing.h"
#include "core/paths.h"
#include "editing/audiogalaxy.h"
#include "editing/tag_files_test.h"
#include "files/file_facts.h"

namespace tunemeadow {
namespace {

class PicturePanel : public TagFilesTest {
 protected:
  /// One track, in the editor.
  void Load(const std::string& name, const std::string& bytes) {
    Add(name, bytes);
    Edit();
  }

  const std::string with_picture_ = Id3v2Tag(PictureFrame(FakeJpeg())) + audio_;
};

TEST_F(PicturePanel, AddWritesTheEditorsTextsAndTheImageAndCorrectsTheRow) {
  Load("a.mp3", v2_ + audio_);
  Run("update mp3sTabelle set haspic=0");
  bench_.ListView1.SetCell(0, TrackField::haspic, "0");
  bench_.details.texts[TrackField::Songname] = "D\xC5\x8Dmo";  // the o with its stroke is in no tag
  EXPECT_EQ(AddPictureCaption(bench_.details), "add");
  interaction_.WillChoose(folder_.Write("covers/cover.jpg", FakeJpeg()));
  interaction_.statuses.clear();
  cmdAddpic_Click(bench_);
  EXPECT_EQ(bench_.PictureFile, folder_.Path("covers/cover.jpg"));
  EXPECT_EQ(session_.ini.GetString(kConfigSection, "ImageToSave", "", 0), folder_.Path("covers/"));
  EXPECT_EQ(Tag("a.mp3").Title, "D?mo");
  EXPECT_TRUE(Bytes("a.mp3").ends_with(audio_));
  EXPECT_EQ(bench_.details.picture.data.substr(0, 64), FakeJpeg());
  EXPECT_EQ(AddPictureCaption(bench_.details), "del");
  EXPECT_EQ(Flags(), Texts{"111 new"});
  EXPECT_EQ(Cells(), Texts{"111"});
  EXPECT_EQ(watcher_.rows, std::vector<std::size_t>{0});
  EXPECT_EQ(interaction_.statuses, (Texts{"Updating file (saving ID3v2Tag), please wait...",
                                          "Ready.", LossSentence({.characters = 1})}));
}

TEST_F(PicturePanel, ATrackNumberOfZeroIsWrittenOnlyWhereThePersonTypedIt) {
  for (const char* row : {"0", "7"}) {
    Run("delete from mp3sTabelle");
    Load("a.mp3", v2_ + audio_);
    bench_.ListView1.SetCell(0, TrackField::trackno, row);
    DetailEditor& details = bench_.details;
    details.texts[TrackField::trackno] = "0";
    details.DetailsKeyed = details.DetailsChanged = true;
    interaction_.WillChoose(folder_.Write("cover.jpg", FakeJpeg()));
    cmdAddpic_Click(bench_);
    EXPECT_EQ(Tag("a.mp3").TrackV2, *row == '0' ? "" : "0");
    details.DetailsKeyed = details.DetailsChanged = false;
  }
}

TEST_F(PicturePanel, DelTakesThePictureAway) {
  Load("a.mp3", with_picture_);
  ASSERT_EQ(AddPictureCaption(bench_.details), "del");
  cmdAddpic_Click(bench_);
  EXPECT_EQ(Bytes("a.mp3"), Id3v2Tag("") + audio_);
  EXPECT_EQ(Flags(), Texts{"110 new"});
  EXPECT_EQ(Cells(), Texts{"110"});
  EXPECT_EQ(AddPictureCaption(bench_.details), "add");
  EXPECT_EQ(interaction_.Status(), "Ready.");
  EXPECT_FALSE(session_.busy);
}

TEST_F(PicturePanel, WhatCannotBeWrittenIsToldAndNothingChanges) {
  Load("torn.mp3", torn_);
  interaction_.WillChoose(folder_.Write("cover.jpg", FakeJpeg()));
  Run(cmdAddpic_Click, {Answer::kOk});
  const std::string start = "Error: ID3v2-Tag can't be written!\n";
  EXPECT_EQ(Boxes().at(0).substr(0, start.size()), start);
  EXPECT_GT(Boxes().at(0).size(), start.size() + 10) << "and why";
  EXPECT_EQ(interaction_.boxes[0].icon, Icon::kExclamation);
  EXPECT_EQ(Bytes("torn.mp3"), torn_);
  EXPECT_EQ(Flags(), Texts{"111 old"});
  EXPECT_EQ(interaction_.Status(), "Ready.");
}

TEST_F(PicturePanel, AFileThatIsNoJpegIsRefusedByItsBytes) {
  Load("a.mp3", v2_ + audio_);
  interaction_.WillChoose(folder_.Write("cover.jpg", "GIF89a"));
  Run(cmdAddpic_Click, {Answer::kOk});
  EXPECT_EQ(Boxes(), Texts{"Add Image: \"cover.jpg\" is no JPEG image but a GIF image!"});
  interaction_.WillChoose(std::nullopt);
  cmdAddpic_Click(bench_);
  EXPECT_EQ(bench_.PictureFile, "");
  EXPECT_EQ(Bytes("a.mp3"), v2_ + audio_);
}

TEST_F(PicturePanel, TheButtonNeedsOneMp3FileInTheEditor) {
  cmdAddpic_Click(bench_);
  Load("a.mp3", with_picture_);
  bench_.details.save_all = true;
  cmdAddpic_Click(bench_);
  bench_.details.save_all = false;
  bench_.details.texts[TrackField::location] = folder_.Write("a.ogg", with_picture_);
  cmdAddpic_Click(bench_);
  EXPECT_EQ(Bytes("a.mp3"), with_picture_);
  EXPECT_EQ(folder_.Read("a.ogg"), with_picture_);
}

TEST_F(PicturePanel, ACopyGoesWhereThePersonWantsIt) {
  Load("a.mp3", with_picture_);
  interaction_.WillChoose(folder_.Path("copy.jpeg"));
  cmdSavePic_Click(bench_);
  EXPECT_EQ(folder_.Read("copy.jpeg"), FakeJpeg());
  interaction_.WillChoose(std::nullopt);
  cmdSavePic_Click(bench_);
  interaction_.WillChoose(folder_.Path("missing/copy.jpeg"));
  Run(cmdSavePic_Click, {Answer::kOk});
  EXPECT_EQ(Boxes(), Texts{"Error: " + folder_.Path("missing/copy.jpeg") + " can't be written!"});
  bench_.details.picture = {};
  cmdSavePic_Click(bench_);
}

TEST_F(PicturePanel, TheCopyInTheProgramsFolderGoesAtTheEnd) {
  Load("a.mp3", with_picture_);
  const std::string copy = bench_.details.picture_file;
  ASSERT_TRUE(MyFileExists(copy));
  RemovePictureFile(bench_);
  RemovePictureFile(bench_);
  EXPECT_FALSE(MyFileExists(copy));
}

TEST_F(PicturePanel, TheCodeOfANameIsMadeOfItsCapitals) {
  interaction_.WillAnswerText("abc xyz.mp3");
  interaction_.WillAnswer(Answer::kOk);
  interaction_.on_box = [&](const MessageBox&) {
    EXPECT_EQ(std::exchange(world_.clipboard_text, {}), "123222") << "what the box says is true";
  };
  CopyAudiogalaxyCode(bench_);
  for (const auto& answer : {std::optional<std::string>(), std::optional<std::string>("")}) {
    interaction_.WillAnswerText(answer);
    CopyAudiogalaxyCode(bench_);
  }
  EXPECT_EQ(world_.clipboard_text, "");
  EXPECT_EQ(interaction_.prompts.front(), "Enter Name");
  EXPECT_EQ(Boxes(), Texts{"Audiogalaxy scrambler: Your Code is copied to the clipboard."});
}

}  // namespace
}  // namespace tunemeadow
