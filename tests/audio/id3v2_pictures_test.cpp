// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_pictures.h"

#include <gtest/gtest.h>

#include <string>

#include "support/mp3_builder.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

std::optional<ID3v2Picture> Picture(std::string_view bytes) {
  FileBytes file;
  file.OpenMemory(bytes);
  return ReadID3v2Pictures(file);
}

TEST(ReadID3v2Pictures, GivesThePictureAndWhatStandsBeforeIt) {
  const TempFolder folder;
  const std::string jpeg = FakeJpeg(60000);
  const auto picture = ReadID3v2Pictures(folder.Write(
      "a.mp3",
      Mp3File()
          .Id3v2({{"TIT2", "Blue"}}, {.padding = 99,
                                      .more_frames = PictureFrame(jpeg, "image/JPEG", "Front") +
                                                     PictureFrame(FakeJpeg(), "image/x", "2nd")})
          .Frames(3)));
  ASSERT_TRUE(picture);
  EXPECT_TRUE(picture->data == jpeg) << picture->data.size();
  EXPECT_EQ(picture->mime, "image/JPEG");
  EXPECT_EQ(picture->extension, "jpeg");
  EXPECT_EQ(picture->description, "Front");
  EXPECT_EQ(picture->kind, 3);
}

TEST(ReadID3v2Pictures, ReadsOddFrameHeads) {
  const std::string jpeg = FakeJpeg();
  const std::string zero(1, '\0');
  const struct {
    std::string body;
    std::string extension;
    std::string description;
    int kind;
  } cases[] = {
      {zero + "image/jpg" + zero + "\3" + zero + jpeg, "jpg", "", 3},
      {"\1image/jpeg" + zero + "\4" +
           "\xFF\xFE"
           "B" +
           zero + zero + zero + jpeg,
       "jpeg", "B" + zero, 4},
      {zero + "../../Evil name" + zero + "\3" + "d" + zero + jpeg, "evilname", "d", 3},
      {zero + zero + zero + zero + jpeg, "jpg", "", 0},
      {zero + "image/" + zero + zero + "junk" + zero + "more junk" + jpeg, "jpg", "junk", 0},
      {jpeg, "jpg", "", 0},
      {zero + "no end " + jpeg, "noend", "", 0},
      {zero + "image/jpeg" + jpeg, "jpeg", "", 0},
  };
  for (const auto& each : cases) {
    const auto picture = Picture(Id3v2Tag(Id3v2Frame("APIC", each.body)));
    ASSERT_TRUE(picture) << each.body;
    EXPECT_EQ(picture->data, jpeg);
    EXPECT_EQ(picture->extension, each.extension);
    EXPECT_EQ(picture->description, each.description);
    EXPECT_EQ(picture->kind, each.kind);
  }
}

TEST(ReadID3v2Pictures, FindsJpegDataOnly) {
  const std::string png = "\x89PNG\r\n\x1A\n data";
  EXPECT_FALSE(Picture(Id3v2Tag(PictureFrame(png, "image/png", "Front"))));
  EXPECT_FALSE(Picture(Id3v2Tag(PictureFrame("GIF89a", "image/gif"))));
  EXPECT_FALSE(Picture(Id3v2Tag(PictureFrame("http://x.example/a.jpg", "-->"))));
}

TEST(ReadID3v2Pictures, EveryCutAndEverySizeThatLiesIsHarmless) {
  const std::string whole = Id3v2Tag(PictureFrame(FakeJpeg(), "image/jpeg", "Front"));
  for (std::size_t n = 0; n <= whole.size(); ++n) (void)Picture(whole.substr(0, n));
  for (const std::uint32_t size : {0U, 1U, 2U, 12U, 0x7FFFFFFFU, 0x80000000U}) {
    std::string lying = whole;
    lying.replace(14, 4, BigEndian(size, 4));
    EXPECT_EQ(Picture(lying).has_value(), size == 0x7FFFFFFFU) << size;
  }
  EXPECT_FALSE(Picture(Id3v2Tag(TagFields{{"TIT2", "Blue"}})));
  EXPECT_FALSE(Picture(MpegFrame()));
}

}  // namespace
}  // namespace tunemeadow
