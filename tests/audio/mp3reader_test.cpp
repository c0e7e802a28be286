// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/mp3reader.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "support/mp3_builder.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

Mp3Info Analyse(std::string_view bytes, Mp3Info info = {}, ScanProgress* progress = nullptr) {
  FileBytes file;
  file.OpenMemory(bytes);
  ReadMp3Info(file, true, true, info, progress);
  return info;
}

// The fields that are stored together or not at all.
std::string HeaderFields(const Mp3Info& i) {
  std::string all;
  for (const int number :
       {int{i.Bitrate}, i.SampleRate, i.Playtime, int{i.Layer}, int{i.Version}}) {
    all += std::to_string(number) + " ";
  }
  return all + i.ChannelMode + "/" + i.Emphasis + "/" + i.Crc + i.Padding + i.Original +
         i.Copyright + i.Private;
}

Mp3Info Predecessor() {
  return {.Bitrate = 1,
          .SampleRate = 2,
          .ChannelMode = "Mode",
          .Emphasis = "E",
          .Version = 3,
          .Layer = 4,
          .Padding = "P",
          .Crc = "C",
          .Playtime = 5,
          .Copyright = "Co",
          .Original = "O",
          .Private = "Pr",
          .IsVbr = false,
          .VbrFrames = 7};
}

TEST(ReadMp3Info, DecodesEveryFieldOfTheHeader) {
  const struct {
    MpegHeader header;
    const char* fields;
  } cases[] = {
      {{}, "128 44100 1 3 1 Joint Stereo/None/NoNoYesNoNo"},
      {{.no_crc = 0, .bitrate = 14, .rate = 1, .mode = 3, .emphasis = 1},
       "320 48000 0 3 1 Single Channel/50/15/YesNoYesNoNo"},
      {{.padding = 1, .private_bit = 1, .mode = 2, .copyright = 1, .original = 0, .emphasis = 3},
       "128 44100 1 3 1 Dual Channel/CCITT J 17/NoYesNoYesYes"},
      {{.version = 2, .bitrate = 1, .rate = 2, .mode = 0, .emphasis = 2},
       "8 16000 20 3 2 Stereo/Reserved/NoNoYesNoNo"},
      {{.version = 2, .layer = 2, .rate = 1}, "80 24000 2 2 2 Joint Stereo/None/NoNoYesNoNo"},
      {{.version = 2, .layer = 3, .no_crc = 0}, "144 22050 1 1 2 Joint Stereo/None/YesNoYesNoNo"},
      {{.bitrate = 0}, "0 44100 0 3 1 Joint Stereo/None/NoNoYesNoNo"},
  };
  for (const auto& [header, fields] : cases) {
    const Mp3Info info = Analyse(Mp3File().Frames(50, header).Build());
    EXPECT_EQ(HeaderFields(info), fields);
    EXPECT_FALSE(info.NoHeader);
    EXPECT_EQ(info.FileLength, 50 * 417);
  }
}

TEST(ReadMp3Info, AcceptsASecondByteFromF3ToFBOnly) {
  for (int second = 0; second < 256; ++second) {
    const std::string bytes = Fixed(std::string("x\xFF") + static_cast<char>(second), 300, ' ');
    EXPECT_EQ(Analyse(bytes).NoHeader, second < 0xF3 || second > 0xFB) << second;
  }
  EXPECT_FALSE(Analyse(Mp3File().Bytes("\xFF\xFF\xFB\x90").FillTo(300)).NoHeader);
  EXPECT_TRUE(Analyse(std::string(299, 'x') + '\xFF').NoHeader) << "half a pair at the end";
}

TEST(ReadMp3Info, TakesTheFirstPairEvenInsideTheTag) {
  const std::string picture = HeaderBytes({.bitrate = 3}) + std::string(300, 'j');
  const std::string bytes =
      Mp3File().Id3v2({}, {.more_frames = PictureFrame(picture)}).Frames(10).Build();
  EXPECT_EQ(Analyse(bytes).Bitrate, 48);
}

TEST(ReadMp3Info, FindsAPairAcrossEveryBorderOfItsReads) {
  const TempFolder folder;
  for (const std::size_t at : {4094, 4095, 4096, 99998, 99999, 100000, 199999, 300000}) {
    const std::string bytes = std::string(at, '\xFE') + MpegFrame() + std::string(9, ' ');
    Mp3Info info;
    ReadMp3Info(folder.Write("x.mp3", bytes), false, true, info);
    EXPECT_EQ(info.Bitrate, 128) << at;
    EXPECT_EQ(HeaderFields(info), HeaderFields(Analyse(bytes))) << at;
  }
}

class RecordedProgress : public ScanProgress {
 public:
  void OnPosition(std::int64_t position, std::int64_t length) override {
    seen.push_back(SearchPositionText(position, length));
  }
  void OnSearchEnd() override { seen.emplace_back("end"); }
  std::vector<std::string> seen;
};

TEST(ReadMp3Info, TellsEachHundredThousandthPosition) {
  RecordedProgress progress;
  (void)Analyse(std::string(99998, 'x') + MpegFrame(), {}, &progress);
  EXPECT_EQ(progress.seen, std::vector<std::string>());
  EXPECT_TRUE(Analyse(std::string(300000, 'x'), {}, &progress).NoHeader);
  EXPECT_EQ(progress.seen,
            (std::vector<std::string>{"Searching fileheader at position 100000/300000",
                                      "Searching fileheader at position 200000/300000",
                                      "Searching fileheader at position 300000/300000", "end"}));
}

TEST(ReadMp3Info, EstimatesTheBitrateOfAVariableOneFromTheWholeLength) {
  const struct {
    MpegHeader header;
    std::uint32_t frames;
    std::size_t length;
    int bitrate;
    int playtime;
  } cases[] = {
      {{}, 1000, 4000000, 1225, 26},
      {{}, 32767, 1000000, 9, 855},                      // 9.347
      {{.rate = 1}, 1000, 25500, 8, 24},                 // 8.5, the even neighbour
      {{.rate = 1}, 1000, 28500, 10, 24},                // 9.5
      {{.version = 2, .layer = 3}, 100, 10000, 184, 0},  // 183.75, layer 1 divides by 12
  };
  for (const auto& [header, frames, length, bitrate, playtime] : cases) {
    const Mp3Info info = Analyse(Mp3File().Xing(frames, header).FillTo(length));
    EXPECT_TRUE(info.IsVbr);
    EXPECT_EQ(info.VbrFrames, static_cast<int>(frames));
    EXPECT_EQ(info.Bitrate, bitrate);
    EXPECT_EQ(info.Playtime, playtime);
  }
}

TEST(ReadMp3Info, AFailureKeepsTheHeaderFieldsOfTheFileBefore) {
  const struct {
    const char* name;
    std::string bytes;
    bool no_header = false;
    bool is_vbr = false;
    int frames = 7;
  } cases[] = {
      {"no sync", std::string(300, 'x'), true},
      {"rate index 3", Mp3File().Frames(2, {.rate = 3}).Build()},
      {"bit-rate index 15", Mp3File().Frames(2, {.bitrate = 15}).Build()},
      {"layer code 0", Mp3File().Frames(2, {.layer = 0}).Build()},
      {"layer code 0 with Xing", Mp3File().Xing(9, {.layer = 0}).Build(), false, true, 9},
      {"no frames", Mp3File().Xing(0).Build(), false, true, 0},
      {"40000 frames", Mp3File().Xing(40000).Build(), false, true},
      {"frames with the top bit", Mp3File().Xing(0x80000001U).Build(), false, true},
      {"rate above 32767", Mp3File().Xing(1).FillTo(200000).Build(), false, true, 1},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    const Mp3Info info = Analyse(each.bytes, Predecessor());
    EXPECT_EQ(HeaderFields(info), HeaderFields(Predecessor()));
    EXPECT_EQ(info.NoHeader, each.no_header);
    EXPECT_EQ(info.IsVbr, each.is_vbr);
    EXPECT_EQ(info.VbrFrames, each.frames);
    EXPECT_EQ(info.FileLength, static_cast<int>(each.bytes.size()));
  }
}

TEST(ReadMp3Info, TooShortMissingAndTooLongFilesFailInTheirOwnWays) {
  const TempFolder folder;
  Mp3Info info = Predecessor();
  info.NoHeader = true;
  info.Title = "old";
  const std::string end = Id3v1Record({.title = "New"});
  ReadMp3Info(folder.Write("a.mp3", MpegFrame({}, 127) + end), true, true, info);
  EXPECT_EQ(info.FileLength, 255);
  EXPECT_TRUE(info.NoHeader) << "never reset by a file under 256 bytes";
  EXPECT_EQ(info.Title, "");
  EXPECT_FALSE(info.HasID3v1);

  ReadMp3Info(folder.Path("none.mp3"), true, true, info);
  EXPECT_EQ(info.FileLength, 255);
  EXPECT_NE(access(folder.Path("none.mp3").c_str(), F_OK), 0);

  const std::string path = folder.Write("b.mp3", MpegFrame());
  ASSERT_EQ(truncate(path.c_str(), 268435456), 0);
  ReadMp3Info(path, true, true, info);
  EXPECT_EQ(HeaderFields(info), HeaderFields(Predecessor()));
  EXPECT_EQ(info.FileLength, 268435456);
  EXPECT_FALSE(info.NoHeader);
  ASSERT_EQ(truncate(path.c_str(), 268435455), 0);
  ReadMp3Info(path, true, true, info);
  EXPECT_EQ(info.Playtime, 16777);
  ASSERT_EQ(truncate(path.c_str(), 2147483648), 0);
  ReadMp3Info(path, true, true, info);
  EXPECT_EQ(info.FileLength, 268435455) << "above 2 GB nothing is stored";
}

TEST(ReadMp3Info, TheTrailerScanTakesAnyTagInTheLast129Bytes) {
  const Id3v1Fields fields{.title = "Blue",
                           .artist = "Anna ",
                           .album = std::string(30, 'a'),
                           .year = "1999",
                           .comment = std::string(30, 'c'),
                           .track = 7,
                           .genre = 17};
  Mp3Info info = Analyse(Mp3File().Frames(3).Id3v1(fields));
  EXPECT_TRUE(info.HasID3v1);
  EXPECT_EQ(info.Title + "|" + info.Artist + "|" + info.Album + "|" + info.Year,
            "Blue|Anna|" + std::string(30, 'a') + "|1999");
  EXPECT_EQ(info.Comment, std::string(28, 'c') + '\0' + '\7');
  EXPECT_EQ(info.Track, "7");
  EXPECT_EQ(info.Genre, 17);

  info = Analyse(Mp3File().Frames(3).Id3v1({.title = "Blue", .filler = '\0', .mark = "tAg"}));
  EXPECT_TRUE(info.HasID3v1);
  EXPECT_EQ(info.Title, Fixed("Blue", 30, '\0')) << "zero bytes stay";
  EXPECT_EQ(info.Track, "0");
  EXPECT_EQ(info.Genre, 255);

  info = Analyse(
      Mp3File().Frames(3).Bytes(std::string(64, 'x') + "Stage left" + std::string(54, 'x')));
  EXPECT_TRUE(info.HasID3v1);
  EXPECT_EQ(info.Title, "e left" + std::string(24, 'x'));
  EXPECT_EQ(info.Genre, 0) << "the byte lies behind the file";
}

TEST(ReadMp3Info, TrailerTrackAndGenreHaveTheirOddBytes) {
  const auto with = [](int track, int genre) {
    return Analyse(Mp3File().Frames(3).Id3v1({.title = "T", .track = track, .genre = genre}));
  };
  EXPECT_EQ(with(255, 0).Track, "255");
  EXPECT_EQ(with(7, ' ').Genre, 0);
  const Mp3Info info = with(' ', 17);
  EXPECT_TRUE(info.HasID3v1);
  EXPECT_EQ(info.Title, "T");
  EXPECT_EQ(info.Track, "0");
  EXPECT_EQ(info.Genre, 255) << "a track byte of 32 ends the scan";
}

TEST(ReadMp3Info, WithoutATrailerTheTagStringsAreEmptied) {
  Mp3Info old{.Title = "t",
              .Artist = "a",
              .Album = "b",
              .Year = "y",
              .Comment = "c",
              .Genre = 1,
              .Track = "3",
              .CommentOverride = "o",
              .Lyrics = "kept"};
  old.HasID3v1 = true;
  const Mp3Info info = Analyse(Mp3File().Frames(3), old);
  EXPECT_EQ(info.Title + info.Artist + info.Album + info.Year + info.Comment + info.CommentOverride,
            "");
  EXPECT_FALSE(info.HasID3v1);
  EXPECT_EQ(info.Track, "0");
  EXPECT_EQ(info.Genre, 255);
  EXPECT_EQ(info.Lyrics, "kept");
}

TEST(ReadMp3Info, TheFlagsSwitchTheTwoHalves) {
  const TempFolder folder;
  const std::string path = folder.Write("a.mp3", Mp3File().Frames(3).Id3v1({.title = "Blue"}));
  Mp3Info info = Predecessor();
  ReadMp3Info(path, true, false, info);
  EXPECT_EQ(HeaderFields(info), HeaderFields(Predecessor()));
  EXPECT_EQ(info.Title, "Blue");
  ReadMp3Info(path, false, true, info);
  EXPECT_EQ(info.Bitrate, 128);
  EXPECT_EQ(info.Title, "");
  // A Xing header that fails leaves the trailer unread.
  EXPECT_FALSE(Analyse(Mp3File().Xing(40000).Id3v1({.title = "Blue"})).HasID3v1);
}

TEST(BitText, HasNoLeadingZerosAndReadsBack) {
  EXPECT_EQ(BytesToBitText("\xFF\xFB\x90\x64"), "11111111111110111001000001100100");
  EXPECT_EQ(BytesToBitText(std::string("\0\5", 2)), "101");
  EXPECT_EQ(BytesToBitText(std::string(4, '\0')), "");
  EXPECT_EQ(BitTextToNumber(""), 0U);
  EXPECT_EQ(BitTextToNumber(BytesToBitText("\xFF\xFB\x90\x64")), 0xFFFB9064U);
}

TEST(QualityText, ShowsRateFrequencyAndMode) {
  Mp3Info info;
  EXPECT_EQ(QualityText(info), "0 kbps / 0 khz / ");
  info = {.Bitrate = 192, .SampleRate = 44100, .ChannelMode = "Joint Stereo", .IsVbr = true};
  EXPECT_EQ(QualityText(info), "192 kbps (VBR) / 44.1 khz / Joint Stereo");
  info.IsVbr = false;
  info.SampleRate = 48000;
  EXPECT_EQ(QualityText(info), "192 kbps / 48 khz / Joint Stereo");
  info.NoHeader = true;
  EXPECT_EQ(QualityText(info), "damaged header");
}

}  // namespace
}  // namespace tunemeadow
