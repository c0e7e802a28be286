// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/ogg_comments.h"

#include <gtest/gtest.h>

#include <string>

#include "support/mp3_builder.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

std::string Read(std::string_view bytes, Mp3Info& info) {
  FileBytes file;
  file.OpenMemory(bytes);
  return ReadOggInfo(file, info);
}

TEST(ReadOggInfo, FillsTheFieldsAndTheLength) {
  const TempFolder folder;
  Mp3Info info{.Year = "old", .Bpm = "kept"};
  const std::string path = folder.Write("a.ogg", OggHead({{"Title", "Blue"},
                                                          {"album", "Sea"},
                                                          {"TRACKNUMBER", "3"},
                                                          {"ARTIST", "Anna"},
                                                          {"ORGANIZATION", "Label"},
                                                          {"DESCRIPTION", "note"},
                                                          {"GENRE", "Rock"},
                                                          {"LOCATION", "there"},
                                                          {"COPYRIGHT", "me"}}));
  EXPECT_EQ(ReadOggInfo(path, info), "OK");
  EXPECT_EQ(info.Title + info.Album + info.TrackV2 + info.Artist, "BlueSea3Anna");
  EXPECT_EQ(info.Composer + info.Comment + info.GenreV2 + info.Copyright, "LabelnoteRockme");
  EXPECT_EQ(info.Url, "there");
  EXPECT_EQ(info.Year, "");
  EXPECT_EQ(info.Bpm, "kept");
  EXPECT_EQ(info.FileLength, 4096);
  EXPECT_EQ(Read(OggHead({{"URL", "here"}, {"LOCATION", "there"}}), info), "OK");
  EXPECT_EQ(info.Url, "here");
  EXPECT_EQ(info.Title, "");
}

TEST(ReadOggInfo, SeesTheFirst1024BytesAndTheLowByteOfALength) {
  Mp3Info info;
  EXPECT_EQ(Read(OggHead({{"TITLE", std::string(300 - 6, 't')}, {"ARTIST", "Anna"}}), info), "OK");
  EXPECT_EQ(info.Title.size(), 44U - 6U);
  EXPECT_EQ(info.Artist, "Anna");
  EXPECT_EQ(Read(OggHead({{"X", std::string(900, 'x')}, {"ARTIST", "Anna"}}), info), "OK");
  EXPECT_EQ(info.Artist, "An");
  EXPECT_EQ(Read(OggHead({{"X", std::string(903, 'x')}, {"ARTIST", "Anna"}}), info), "OK");
  EXPECT_EQ(info.Artist, "");
  EXPECT_EQ(Read("", info), "OK");
  EXPECT_EQ(info.FileLength, 0);
}

TEST(OggField, TakesTheKeyAnywhereAndInAnyCase) {
  // A longer key that ends in this one: its "L" (76) is taken for the length.
  const std::string head = OggHead({{"ALBUMtitle", "Wrong"}, {"TITLE", "Blue"}});
  const std::string value = OggField(head, "TITLE=").value_or("");
  EXPECT_EQ(value.substr(0, 5), "Wrong");
  EXPECT_EQ(value.size(), 76U - 6U);
  EXPECT_EQ(OggField("\x0Axx\xE4title=\xE4\xDF!x", "TITLE="), "\xE4\xDF!x");
  EXPECT_EQ(OggField("\x08..\xFFTITLE=\xE4\xDF!x", "TITLE="), "\xE4\xDF");
  EXPECT_EQ(OggField("nothing", "TITLE="), "");
}

TEST(ReadOggInfo, ALengthThatCannotBeKeepsTheFieldsBeforeIt) {
  EXPECT_FALSE(OggField("xxxTITLE=Blue", "TITLE="));
  EXPECT_FALSE(OggField("\5xxxTITLE=Blue", "TITLE="));
  EXPECT_EQ(OggField("\6xxxTITLE=Blue", "TITLE="), "");
  Mp3Info info{.Album = "old", .Year = "old", .FileLength = 7};
  EXPECT_NE(Read("\x0AxxxTITLE=Blue\1xxxALBUM=Sea", info), "OK");
  EXPECT_EQ(info.Title, "Blue");
  EXPECT_EQ(info.Album + info.Year, "oldold");
  EXPECT_EQ(info.FileLength, 7);
  const TempFolder folder;
  EXPECT_NE(ReadOggInfo(folder.Path("none.ogg"), info), "OK");
}

}  // namespace
}  // namespace tunemeadow
