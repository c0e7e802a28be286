// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <filesystem>

#include "audio/id3v2_pictures.h"
#include "support/child_process.h"
#include "support/plain_user.h"
#include "support/writer_bench.h"

namespace tunemeadow {
namespace {

using std::string_literals::operator""s;

Mp3Info FullInfo() {
  return {.Copyright = "C",
          .Original = "Bob",
          .Title = "Blue",
          .Artist = "Ann",
          .Album = "Sea",
          .Year = "1999",
          .Comment = "hi",
          .Genre = 17,
          .Track = "7",
          .Bpm = "90",
          .TrackV2 = "3/12",
          .Composer = "Cy",
          .GenreV2 = "Rock",
          .Url = "http://x",
          .Lyrics = "la",
          .Tempo = "Fast",
          .Mood = "Calm",
          .Situation = "Bar",
          .Preference = "Good"};
}

// 346 bytes and 36 bytes; pictures stand between them.
const std::string kFrontFrames =
    "TPE1\0\0\0\4\0\0\0Ann"
    "TIT2\0\0\0\5\0\0\0Blue"
    "TALB\0\0\0\4\0\0\0Sea"
    "WXXX\0\0\0\12\0\0\0\0http://x"
    "TYER\0\0\0\5\0\0\0"
    "1999"
    "TRCK\0\0\0\2\0\0\0"
    "7"
    "TBPM\0\0\0\3\0\0\0"
    "90"
    "TOPE\0\0\0\4\0\0\0Bob"
    "TCOM\0\0\0\3\0\0\0Cy"
    "TENC\0\0\0\1\0\0\0"
    "TCOP\0\0\0\2\0\0\0C"
    "COMM\0\0\0\7\0\0\0eng\0hi"
    "COMM\0\0\0\x19\0\0\0\0\0\0MusicMatch_Tempo\0Fast"
    "COMM\0\0\0\x13\0\0\0\0\0\0MusicMatch_Bio\0"
    "COMM\0\0\0\x18\0\0\0\0\0\0MusicMatch_Mood\0Calm"
    "COMM\0\0\0\x1E\0\0\0\0\0\0MusicMatch_Preference\0Good"
    "COMM\0\0\0\x1C\0\0\0\0\0\0MusicMatch_Situation\0Bar"s;
const std::string kBackFrames =
    "TCON\0\0\0\x9\0\0\0(17)Rock"
    "USLT\0\0\0\7\0\0\0\0\0\0\0la"s;

/// A frame whose size has seven bits a byte.
std::string SafeFrame(std::string_view name, std::string_view body) {
  return std::string(name) + BigEndian(body.size(), 4, 7) + std::string(2, '\0') +
         std::string(body);
}

std::string Zeros(std::size_t count) { return std::string(count, '\0'); }

std::string Save(WriterBench& bench, Mp3Info info = FullInfo(), bool with_picture = false) {
  return WriteID3v2Tag(bench.writing, bench.path, with_picture, info);
}

TEST(WriteID3v2Tag, PutsANewTagBeforeTheOldBytes) {
  WriterBench bench;
  bench.File(Audio());
  Mp3Info info = FullInfo();
  EXPECT_EQ(WriteID3v2Tag(bench.writing, bench.path, true, info), "OK");
  EXPECT_EQ(bench.File(),
            "ID3\3\0\0\0\0\x9\x1E"s + kFrontFrames + kBackFrames + Zeros(800) + Audio());
  EXPECT_EQ(info.Lyrics, "\0\0\0\0la"s) << "the field keeps the zero bytes";
  EXPECT_EQ(LossSentence(bench.writing.losses), "");
}

TEST(WriteID3v2Tag, KeepsTheSizeWhereTheFramesFitAndElseMovesTheAudio) {
  const std::string frames = kFrontFrames + kBackFrames;
  const std::string grown = "ID3\3\0\0\0\0\x9\x1E"s + frames + Zeros(800);
  const std::pair<std::string, std::string> cases[] = {
      {Id3v2Tag("TSSE", 4, 4996), "ID3\3\0\0\0\0\x27\x08"s + frames + Zeros(4618)},
      {"ID3\3\0\0\0\0\2\xFE"s + Zeros(510), "ID3\3\0\0\0\0\2\xFE"s + frames + Zeros(128)},
      {Id3v2Tag("", 2, 382), "ID3\3\0\0\0\0\2\x7E"s + frames},
      {Id3v2Tag("", 3, 381), grown},
      {Id3v2Tag("", 3, 0), grown},
  };
  for (const auto& [old, expected] : cases) {
    WriterBench bench;
    bench.File(old + Audio());
    EXPECT_EQ(Save(bench), "OK");
    EXPECT_EQ(bench.File(), expected + Audio());
    EXPECT_EQ(Save(bench), "OK");
    EXPECT_EQ(bench.File(), expected + Audio()) << "saved a second time";
  }
}

TEST(WriteID3v2Tag, WritesEmptyValuesToo) {
  WriterBench bench;
  bench.File(Audio());
  EXPECT_EQ(Save(bench, {}), "OK");
  const std::string file = bench.File();
  EXPECT_NE(file.find("TIT2\0\0\0\1\0\0\0TALB"s), std::string::npos);
  EXPECT_NE(file.find("TRCK\0\0\0\2\0\0\0"
                      "0TBPM"s),
            std::string::npos);
  EXPECT_NE(file.find("TCON\0\0\0\6\0\0\0(255)USLT\0\0\0\5"s + Zeros(7)), std::string::npos);
}

TEST(WriteID3v2Tag, LongTextsHaveSizesOfSevenBitsAByte) {
  WriterBench bench;
  bench.File(Audio());
  Mp3Info info = FullInfo();
  info.Comment = std::string(200, 'c');
  info.Lyrics = std::string(300'000, 'l');
  info.Title = std::string(126, 't');
  EXPECT_EQ(Save(bench, info), "OK");
  EXPECT_NE(bench.File().find("COMM\0\0\1\x4D\0\0\0eng\0cc"s), std::string::npos);
  EXPECT_NE(bench.File().find("USLT\0\x12\x27\x65\0\0\0\0\0\0\0ll"s), std::string::npos);
  EXPECT_NE(bench.File().find("TIT2\0\0\0\x7F\0\0\0tt"s), std::string::npos);
  EXPECT_EQ(bench.writing.losses.long_texts, 2);
}

TEST(WriteID3v2Tag, CopiesThePicturesOfTheOldTag) {
  const std::string front = PictureFrame(FakeJpeg(90), "image/jpeg", "front");
  const std::string back = PictureFrame(FakeJpeg(300), "image/png", "", 4);
  const std::string play_count = Id3v2Frame("PCNT", "\0\0\0\7"s);
  for (const std::string& pictures : {front, back + front}) {
    for (const std::size_t padding : {0U, 2000U}) {
      WriterBench bench;
      bench.File(Id3v2Tag(play_count + pictures, 3, padding) + Audio());
      EXPECT_EQ(Save(bench), "OK");
      const std::string file = bench.File();
      EXPECT_EQ(file.substr(10, 382 + pictures.size()), kFrontFrames + pictures + kBackFrames);
      EXPECT_TRUE(file.ends_with(Zeros(100) + Audio()));
      EXPECT_EQ(bench.writing.losses.frames, 1);
      EXPECT_EQ(Save(bench), "OK");
      EXPECT_EQ(bench.File(), file);
    }
  }
}

TEST(WriteID3v2Tag, PicturesOfVersion4KeepTheirBytesAndGetAPlainSize) {
  for (const std::size_t size : {100U, 1'000U, 60'000U, 300'000U}) {
    for (const std::string& behind : {""s, Zeros(900), SafeFrame("TSRC", "\0x"s)}) {
      const std::string body = "\0image/jpeg\0\3\0"s + FakeJpeg(size);
      const std::string old = SafeFrame("APIC", body) + SafeFrame("APIC", body + "2");
      WriterBench bench;
      bench.File(Id3v2Tag(old + behind, 4) + Audio());
      EXPECT_EQ(ReadID3v2Pictures(bench.path)->data, FakeJpeg(size));
      EXPECT_EQ(Save(bench), "OK");
      const std::string plain = Id3v2Frame("APIC", body) + Id3v2Frame("APIC", body + "2");
      EXPECT_TRUE(bench.File().substr(10).starts_with(kFrontFrames + plain + kBackFrames)) << size;
      EXPECT_EQ(bench.writing.losses.pictures, 0);
      EXPECT_EQ(bench.writing.losses.frames, behind.starts_with("T") ? 1 : 0);
      bench.File(Id3v2Tag(old + behind, 4) + Audio());
      EXPECT_EQ(RemoveID3v2Picture(bench.writing, bench.path), "OK");
      EXPECT_TRUE(bench.File() == Id3v2Tag(behind, 4) + Audio()) << size;
    }
  }
}

TEST(WriteID3v2Tag, CopiesUnsynchronisedPicturesAsTheyStand) {
  WriterBench bench;
  std::string old = Id3v2Tag(PictureFrame("\xFF\0\xD8\xFF\0\xE0"s), 3, 900);
  old[5] = '\x80';
  bench.File(old + Audio());
  EXPECT_EQ(Save(bench), "OK");
  EXPECT_EQ(bench.File()[5], '\0');
  EXPECT_EQ(bench.File().substr(356, 37), PictureFrame("\xFF\0\xD8\xFF\0\xE0"s) + "TCON\0\0\0"s);
}

TEST(WriteID3v2Tag, PutsANewPictureBehindTheCopiedOnes) {
  const struct {
    std::string picture, extension, head;
  } cases[] = {
      {"PICTURE", "jpg", "APIC\0\0\0\x14\0\0\0image/jpg\0\0\0"s},
      {"PICTURE", "jpeg", "APIC\0\0\0\x14\0\0\0image/jpeg\0\0\0"s},  // one byte short
      {"", "jpg", "APIC\0\0\0\x0D\0\0\0image/jpg\0\0\0"s},
      {std::string(20U << 20, 'p'), "JPG", "APIC\x01\x40\0\x0D\0\0\0image/JPG\0\0\0"s},
  };
  const std::string old = PictureFrame(FakeJpeg());
  for (const auto& each : cases) {
    WriterBench bench;
    bench.writing.PictureFile = bench.folder.Write("cover", each.picture);
    bench.writing.PictureExtension = each.extension;
    bench.File(Id3v2Tag(old) + Audio());
    EXPECT_EQ(Save(bench, FullInfo(), true), "OK");
    const std::string expected = kFrontFrames + old + each.head + each.picture + Zeros(13) +
                                 kBackFrames + Zeros(800) + Audio();
    EXPECT_TRUE(bench.File().substr(10) == expected) << each.head;
    const auto length = bench.File().size();
    EXPECT_EQ(Save(bench), "OK");
    EXPECT_EQ(bench.File().size(), length) << "without the new picture the tag fits";
  }
}

TEST(WriteID3v2Tag, WithoutItsFileThereIsNoNewPicture) {
  WriterBench bench;
  for (const std::string& picture : {bench.folder.Path("gone.jpg"), bench.folder.Path(), ""s}) {
    bench.writing.PictureFile = picture;
    bench.File(Audio());
    EXPECT_EQ(Save(bench, FullInfo(), true), "OK");
    EXPECT_EQ(bench.File().find("APIC"), std::string::npos);
  }
}

TEST(WriteID3v2Tag, WhatMakesNoSenseIsRefusedWithTheFileUntouched) {
  const std::string safe_size = "APIC\0\0\x27\x08\0\0"s + std::string(5000, 'j');  // not in 2.3
  const std::string files[] = {
      Id3v2Tag("", 3, 100).substr(0, 109),     // a byte less than the tag declares
      "ID3\3\0\0\x7F\x7F\x7F\x7F"s + Audio(),  // far less
      "ID3",                                   // no whole header
      Id3v2Tag(safe_size, 3) + Audio(),        // reads as 9992 bytes
      Id3v2Tag(Id3v2FieldFrame({"TIT2", "APIC in a title"}), 3, 900) + Audio(),
      Id3v2Tag("APIC\xFF\xFF\xFF\xFF\0\0"s, 3, 900) + Audio(),
  };
  for (const std::string& file : files) {
    WriterBench bench;
    bench.File(file);
    EXPECT_THAT(Save(bench), testing::StartsWith(file.find("APIC") < 100 ? "A picture" : "The old"))
        << file.substr(0, 40);
    EXPECT_EQ(bench.File(), file);
    EXPECT_EQ(LossSentence(bench.writing.losses), "");
  }
}

TEST(WriteID3v2Tag, SaysWhyAFileCannotBeWritten) {
  WriterBench bench;
  EXPECT_THAT(Save(bench), testing::Not("OK"));
  EXPECT_FALSE(std::filesystem::exists(bench.path)) << "a missing file is not made";
  std::filesystem::create_directory(bench.path);
  EXPECT_THAT(Save(bench), testing::Not("OK"));
  std::filesystem::remove(bench.path);
  bench.File("");
  EXPECT_EQ(Save(bench), "OK");
  EXPECT_EQ(bench.File(), "") << "a file of no bytes stays one";
  bench.File(Audio());
  std::filesystem::permissions(bench.path, std::filesystem::perms(0444));
  const ScopedPlainUser plain_user(bench.folder.Path());
  EXPECT_THAT(Save(bench), testing::Not("OK"));
  EXPECT_EQ(bench.File(), Audio());
}

TEST(WriteID3v2Tag, YieldsOnlyBeforeTheAudioMovesAndMinds) {
  WriterBench bench;
  int yields = 0;
  bench.writing.yield = [&] { ++yields; };
  bench.File(Audio());
  EXPECT_EQ(Save(bench), "OK");
  EXPECT_EQ(Save(bench), "OK");
  EXPECT_EQ(yields, 1);
  bench.File(Audio());
  bench.writing.yield = [&] { bench.File("changed"); };
  EXPECT_THAT(Save(bench), testing::Not("OK"));
  EXPECT_EQ(bench.File(), "changed");
}

TEST(RemoveID3v2Tag, MovesTheAudioToTheHeadOfTheFile) {
  const std::pair<std::string, std::string> cases[] = {
      {Id3v2Tag({{"TIT2", "Blue"}}, {.padding = 700}) + Audio(), Audio()},
      {Id3v2Tag("", 2, 0) + Audio(), Audio()},
      {Id3v2Tag("", 4, 300), ""},
  };
  for (const auto& [old, expected] : cases) {
    WriterBench bench;
    bench.File(old);
    EXPECT_EQ(RemoveID3v2Tag(bench.writing, bench.path), "OK");
    EXPECT_EQ(bench.File(), expected);
    EXPECT_EQ(RemoveID3v2Tag(bench.writing, bench.path), "No ID3v2 Tag available to remove!");
  }
}

TEST(RemoveID3v2Picture, CutsEveryPictureOutOfTheTag) {
  const std::string title = Id3v2FieldFrame({"TIT2", "Blue"});
  const std::string picture = PictureFrame(FakeJpeg(500));
  std::string old = Id3v2Tag(picture + title + picture, 4, 20);
  old[5] = '\x80';
  WriterBench bench;
  bench.File(old + Audio());
  EXPECT_EQ(RemoveID3v2Picture(bench.writing, bench.path), "OK");
  EXPECT_EQ(bench.File(), "ID3\4\0\x80\0\0\0\x23"s + title + Zeros(20) + Audio());
  EXPECT_EQ(RemoveID3v2Picture(bench.writing, bench.path),
            "No ID3v2-APIC Tag available to remove!");
}

TEST(RemoveID3v2, WhatMakesNoSenseOrMayNotBeWrittenStays) {
  const std::string no_tag = "No ID3v2 Tag available to remove!";
  const std::string no_picture = "No ID3v2-APIC Tag available to remove!";
  const std::string short_tag = Id3v2Tag(PictureFrame("\xFF\xD8"), 3, 9);
  const std::string too_long = "The old ID3v2 tag tells more bytes than the file has.";
  const struct {
    std::string file, tag_result, picture_result;
  } cases[] = {
      {"", no_tag, no_picture},
      {Audio(), no_tag, no_picture},
      {short_tag.substr(0, short_tag.size() - 1), too_long, too_long},
      {Id3v2Tag("", 3, 9) + "APIC" + Audio(), "", no_picture},
      {Id3v2Tag("APIC\0\0\0\x0A\0\0"s, 3, 9) + Audio(), "",
       "A picture of the old ID3v2 tag runs past its end."},
  };
  for (const auto& each : cases) {
    WriterBench bench;
    bench.File(each.file);
    std::filesystem::permissions(bench.path, std::filesystem::perms(0444));
    const ScopedPlainUser plain_user(bench.folder.Path());
    const std::string result = RemoveID3v2Tag(bench.writing, bench.path);
    EXPECT_THAT(result, each.tag_result.empty() ? testing::StartsWith("The file cannot be opened")
                                                : testing::StartsWith(each.tag_result));
    EXPECT_EQ(RemoveID3v2Picture(bench.writing, bench.path), each.picture_result);
    EXPECT_EQ(bench.File(), each.file);
  }
}

#ifndef __SANITIZE_ADDRESS__  // which gives no memory back
TEST(WriteID3v2Tag, AudioOfAnyLengthMovesInLittleMemory) {
  WriterBench bench;
  bench.File(Audio());
  constexpr long kMegabytes = 100;
  std::filesystem::resize_file(bench.path, kMegabytes << 20);
  const std::string kilobytes = InChildProcess([&] {
    rusage before{};
    rusage after{};
    getrusage(RUSAGE_SELF, &before);
    Mp3Info info;
    if (WriteID3v2Tag(bench.writing, bench.path, false, info) != "OK") return std::string();
    getrusage(RUSAGE_SELF, &after);
    return std::to_string(after.ru_maxrss - before.ru_maxrss);
  });
  ASSERT_FALSE(kilobytes.empty());
  EXPECT_LT(std::stol(kilobytes), (kMegabytes / 10) << 10);
  EXPECT_GT(std::filesystem::file_size(bench.path), kMegabytes << 20);
}
#endif

}  // namespace
}  // namespace tunemeadow
