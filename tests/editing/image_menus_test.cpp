// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "audio/id3v2_pictures.h"
#include "audio/tag_writing.h"
#include "editing/tag_files_test.h"
#include "editing/tag_menus.h"

namespace tunemeadow {
namespace {

class ImageMenus : public TagFilesTest {
 protected:
  ImageMenus() { bench_.PictureFile = folder_.Write("cover.jpg", FakeJpeg()); }

  std::string WithPictures(int count) {
    std::string frames = Id3v2FieldFrame({"TIT2", "two"});
    for (int i = 0; i < count; ++i) frames += PictureFrame(FakeJpeg(), "image/jpeg", "x");
    return Id3v2Tag(frames + Id3v2FieldFrame({"TPE1", "Anna"}));
  }
};

TEST_F(ImageMenus, TheImageGoesIntoEachFileThatHasNone) {
  const std::string a = Add("a.mp3", v2_ + audio_ + Id3v1Record({.title = "two", .track = 7}));
  const std::string b = Add("b.mp3", WithPictures(1) + audio_);
  const std::string gone = Add("gone.mp3", "");
  Add("song.ogg", audio_);
  const std::string empty = Add("empty.mp3", "x");
  std::filesystem::resize_file(empty, 0);
  Run("update mp3sTabelle set haspic=0");
  ShowAll();
  Run(mnuAddImagetoFile_Click, {Answer::kYes, Answer::kOk});
  EXPECT_EQ(Boxes(), (Texts{"Add Image: Are you sure to add the selected image to 5 items(s)?",
                            "Tunemeadow: Images to 1/5 file(s) successfully added.\n"
                            "Elapsed Time: #"}));
  EXPECT_EQ(interaction_.job_titles, Texts{"Image adding/removing"});
  EXPECT_EQ(interaction_.job_lines,
            (Texts{"OK: " + a + " : image successful saved.", b + " already has an image.",
                   "ERROR: " + gone + " : the file can't be read",
                   "ERROR: " + empty + " : the file is empty"}));
  EXPECT_TRUE(interaction_.loading_lines.empty()) << "the job has a window of its own";
  EXPECT_EQ(Flags(), (Texts{"111 new", "110 old", "110 old", "110 old", "110 old"}));
  EXPECT_EQ(watcher_.rows, std::vector<std::size_t>{0});
  EXPECT_EQ(Bytes("b.mp3"), WithPictures(1) + audio_);
  EXPECT_FALSE(std::filesystem::exists(gone));
  const auto picture = ReadID3v2Pictures(a);
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->data.substr(0, FakeJpeg().size()), FakeJpeg());
  const Mp3Info info = Tag("a.mp3");
  EXPECT_EQ(info.Title, "two");
  EXPECT_EQ(info.TrackV2, "7") << "what stood in the ID3v1 record alone";
  const std::string rest = audio_ + Id3v1Record({.title = "two", .track = 7});
  EXPECT_TRUE(Bytes("a.mp3").ends_with(rest));
}

TEST_F(ImageMenus, WhatAnImportPassesOverIsKeptAllTheSame) {
  std::string tag = v2_;
  tag[3] = 5;  // a version that the setting leaves out
  session_.preferences.chkID3v2Read = session_.preferences.optID3V2Versions = false;
  Add("a.mp3", tag + audio_);
  ShowAll();
  Run(mnuAddImagetoFile_Click, {Answer::kYes, Answer::kOk});
  EXPECT_EQ(Tag("a.mp3").Title, "two");
}

TEST_F(ImageMenus, NothingHappensWithoutAnImageThatIsOne) {
  const std::string bytes = v2_ + audio_;
  Add("a.mp3", bytes);
  ShowAll();
  for (const auto& [name, content, message] :
       {std::tuple{"", "", "No image selected!"}, std::tuple{"a.jpg", "", "\"a.jpg\" is empty!"},
        std::tuple{"b.jpg", "\x89PNG\r\n", "\"b.jpg\" is no JPEG image but a PNG image!"},
        std::tuple{"c.jpg", "hello", "\"c.jpg\" is no JPEG image!"}}) {
    bench_.PictureFile = *name == '\0' ? "" : folder_.Write(name, content);
    interaction_.boxes.clear();
    Run(mnuAddImagetoFile_Click, {Answer::kOk});
    EXPECT_EQ(Boxes(), Texts{std::string("Add Image: ") + message});
    EXPECT_EQ(interaction_.boxes.back().icon, Icon::kExclamation);
  }
  EXPECT_EQ(Bytes("a.mp3"), bytes);
  EXPECT_TRUE(interaction_.job_titles.empty());
}

TEST_F(ImageMenus, AnImageThatVanishesInTheMiddleIsNoTagWithoutOne) {
  Add("a.mp3", audio_);
  const std::string b = Add("b.mp3", audio_);
  ShowAll();
  interaction_.on_yield = [&](std::size_t) {
    if (!interaction_.job_lines.empty()) std::filesystem::remove(bench_.PictureFile);
  };
  Run(mnuAddImagetoFile_Click, {Answer::kYes, Answer::kOk});
  EXPECT_EQ(interaction_.job_lines.back(), "ERROR: " + b + " : the image can't be read any more");
  EXPECT_EQ(Bytes("b.mp3"), audio_);
}

TEST_F(ImageMenus, WhatTheNewTagsDropIsToldLast) {
  const std::string text = std::string(130, 'x');
  Add("a.mp3", Id3v2Tag({{"TIT2", text}, {"TSRC", "lost"}}) + audio_);
  ShowAll();
  Run(mnuAddImagetoFile_Click, {Answer::kYes, Answer::kOk});
  EXPECT_EQ(interaction_.Status(), LossSentence({.frames = 1, .long_texts = 1}));
}

TEST_F(ImageMenus, RemovingTakesEveryPictureAndTheTagShrinks) {
  Add("two.mp3", WithPictures(2) + audio_ + v1_);
  const std::string none = Add("none.mp3", v2_ + audio_);
  const std::string bad = Add("bad.mp3", torn_);
  Edit(0);
  bench_.ListView1.SetSelected(0, 2, true);
  ASSERT_FALSE(bench_.details.picture.data.empty());
  Run(mnuRemoveImagefromfile_Click, {Answer::kYes, Answer::kOk});
  EXPECT_EQ(Boxes(), (Texts{"Tunemeadow: Are you sure to remove images of 3 items(s)?",
                            "Tunemeadow: Images from 1/3 file(s) removed.\nElapsed Time: #"}));
  EXPECT_EQ(Bytes("two.mp3"), WithPictures(0) + audio_ + v1_);
  EXPECT_EQ(Bytes("bad.mp3"), torn_);
  ASSERT_EQ(interaction_.job_lines.size(), 2U);
  EXPECT_EQ(interaction_.job_lines[0], none + " has no image.");
  EXPECT_EQ(interaction_.job_lines[1].substr(0, bad.size() + 10), "ERROR: " + bad + " : ");
  EXPECT_EQ(Flags(), (Texts{"110 new", "111 old", "111 old"}));
  EXPECT_EQ(Cells(), (Texts{"110", "111", "111"}));
  EXPECT_TRUE(bench_.details.picture.data.empty());
  EXPECT_TRUE(
      interaction_.SawStatus("Updating file (removing Image from ID3v2Tag), please wait..."));
}

TEST_F(ImageMenus, CancelIsLoggedAndEndsTheJob) {
  for (const char* name : {"a.mp3", "b.mp3"}) Add(name, WithPictures(1) + audio_);
  ShowAll();
  interaction_.on_yield = [&](std::size_t yield) { session_.CancelRequested = yield == 2; };
  Run(mnuRemoveImagefromfile_Click, {Answer::kYes, Answer::kOk});
  EXPECT_EQ(interaction_.job_lines, Texts{"ERROR: Job cancelled"});
  EXPECT_EQ(Boxes().back(), "Tunemeadow: Images from 1/2 file(s) removed.\nElapsed Time: #");
  EXPECT_EQ(Flags(), (Texts{"110 new", "111 old"}));
}

TEST_F(ImageMenus, NoEndsBothAndNoSelectionAsksNothing) {
  Add("a.mp3", WithPictures(1) + audio_);
  ShowAll();
  for (auto* const click : {mnuAddImagetoFile_Click, mnuRemoveImagefromfile_Click}) {
    bench_.ListView1.SetSelected(0, 0, true);
    Run(click, {Answer::kNo});
    bench_.ListView1.ClearSelection();
    click(bench_);
  }
  EXPECT_EQ(Bytes("a.mp3"), WithPictures(1) + audio_);
  EXPECT_TRUE(interaction_.job_titles.empty());
}

}  // namespace
}  // namespace tunemeadow
