// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_reader.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "audio/id3v2_frame_table.h"
#include "core/text.h"
#include "support/mp3_builder.h"
#include "support/plain_id3v2.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

constexpr auto kAny = ID3v2Versions::kAny;

std::string Zero(std::size_t count = 1) { return std::string(count, '\0'); }

Mp3Info Parsed(std::string_view bytes, std::string_view expected = "OK", Mp3Info info = {}) {
  EXPECT_EQ(ParseID3v2Tag(bytes, kAny, info), expected);
  return info;
}

TEST(ReadID3v2Tag, FillsEachFieldFromItsFrame) {
  const struct {
    const char* name;
    TagText Mp3Info::*field;
  } cases[] = {
      {"TPE1", &Mp3Info::Artist},    {"TIT2", &Mp3Info::Title},     {"TALB", &Mp3Info::Album},
      {"TRCK", &Mp3Info::TrackV2},   {"TBPM", &Mp3Info::Bpm},       {"TCON", &Mp3Info::GenreV2},
      {"TCOM", &Mp3Info::Composer},  {"TYER", &Mp3Info::Year},      {"TOPE", &Mp3Info::Original},
      {"TENC", &Mp3Info::EncodedBy}, {"TCOP", &Mp3Info::Copyright}, {"COMM", &Mp3Info::Comment}};
  const TempFolder folder;
  TagFields fields;
  for (const auto& each : cases)
    fields.emplace_back(each.name, std::string("of ") + (each.name + 1));
  fields.emplace_back("WXXX", "http://x.example/");
  fields.emplace_back("USLT", "la la");
  const std::string path = folder.Write(
      "a.mp3", Mp3File()
                   .Id3v2(fields, {.padding = 5000, .more_frames = PictureFrame(FakeJpeg(60000))})
                   .Frames(3));
  Mp3Info info{.Title = "old"};
  ASSERT_TRUE(HasID3v2Tag(path));
  ASSERT_EQ(ReadID3v2Tag(path, ID3v2Versions::kTwoToFour, info), "OK");
  for (const auto& each : cases) EXPECT_EQ(info.*each.field, std::string("of ") + (each.name + 1));
  EXPECT_EQ(info.Url, Zero() + "http://x.example/");
  EXPECT_EQ(info.Lyrics, "eng" + Zero() + "la la");
  EXPECT_TRUE(info.HasPicture);
  ASSERT_EQ(ReadID3v2Tag(folder.Write("b.mp3", Mp3File().Id3v2({}, {.padding = 9})), kAny, info),
            "OK");
  EXPECT_EQ(plain::Fields(info), plain::Fields({})) << "missing frames empty their fields";
}

TEST(ReadID3v2Tag, TheVersionDecidesOnlyUnderTheOption) {
  for (int version = 0; version < 256; ++version) {
    const std::string tag = Id3v2Tag(TagFields{{"TIT2", "Blue"}}, {.version = version});
    Mp3Info info;
    EXPECT_EQ(ParseID3v2Tag(tag, ID3v2Versions::kTwoToFour, info),
              version >= 2 && version <= 4 ? "OK" : "");
    EXPECT_EQ(Parsed(tag).Title, "Blue");
  }
}

TEST(ReadID3v2Tag, WithoutATagNothingChanges) {
  const TempFolder folder;
  const Mp3Info old{.Title = "old", .Comment = "old"};
  for (const std::string& bytes : {std::string(), std::string("ID3\3\0\0\0\0\0", 9),
                                   "IDX" + Id3v2Tag(TagFields{}).substr(3), MpegFrame()}) {
    EXPECT_EQ(Parsed(bytes, "", old).Title, "old");
  }
  Mp3Info info = old;
  EXPECT_EQ(ReadID3v2Tag(folder.Path("none.mp3"), kAny, info), "");
  EXPECT_EQ(info.Comment, "old");
  EXPECT_FALSE(HasID3v2Tag(folder.Path("none.mp3")));
  EXPECT_TRUE(HasID3v2Tag(folder.Write("a.mp3", "ID3"))) << "three bytes are enough for the flag";
}

TEST(ReadID3v2Tag, ANameInsideAnotherTextCountsAsAFrame) {
  const std::string words = "x" + Id3v2FieldFrame({"TALB", "wrong"});
  EXPECT_EQ(Parsed(Id3v2Tag({{"USLT", words}})).Album, "wrong");
  EXPECT_EQ(Parsed(Id3v2Tag({{"TALB", "right"}, {"USLT", words}})).Album, "right");
  // "TCOMM" is two names, one letter apart.
  const Mp3Info both =
      Parsed(Id3v2Tag("TCOMM" + BigEndian(9, 4) + Zero(3) + "eng" + Zero() + "note"));
  EXPECT_EQ(both.Comment, "note");
  EXPECT_EQ(both.Composer.substr(0, 9), Zero() + "eng" + Zero() + "note");
  // A name in the header's ten bytes is none; the 91 bytes after the tag belong to the text.
  EXPECT_EQ(Parsed("ID3\3TIT2" + Zero(2) + Zero(200)).Title, "");
  EXPECT_EQ(Parsed(Id3v2Tag("") + Id3v2FieldFrame({"TIT2", "Blue"})).Title, "Blue");
  EXPECT_EQ(Parsed(Id3v2Tag("") + Zero(91) + Id3v2FieldFrame({"TIT2", "Blue"})).Title, "");
}

TEST(ReadID3v2Tag, TheSizeBytesOfTheHeaderCountWhole) {
  // 01 FF is 128 + 255, so that the text has 484 bytes.
  const std::string head = "ID3\3" + Zero(4) + "\1\xFF";
  const std::string frame = Id3v2FieldFrame({"TIT2", "Blue"});
  EXPECT_EQ(Parsed(head + Zero(484 - 10 - frame.size()) + frame + Zero(99)).Title, "Blue");
  EXPECT_EQ(Parsed(head + Zero(484 - 10 - 3) + frame + Zero(99)).Title, "");
}

TEST(ReadID3v2Tag, AVersion22TagIsReadAndEmpty) {
  const std::string frame = std::string("TT2") + Zero(2) + "\5" + Zero() + "Blue";
  EXPECT_EQ(plain::Fields(Parsed(Id3v2Tag(frame, 2))), plain::Fields({}));
}

TEST(ReadFrameText, TakesTheSizeAsAPlainNumberInEveryVersion) {
  const auto value = [](std::string_view size, const std::string& body) {
    return ReadFrameText(1, "TIT2" + std::string(size) + Zero(2) + body);
  };
  const std::string body = Zero() + std::string(400, 'a');
  EXPECT_EQ(value(BigEndian(333, 4), body)->size(), 332U);
  EXPECT_EQ(value(BigEndian(205, 4, 7), body)->size(), 332U) << "of 205, written as 00 00 01 4D";
  EXPECT_EQ(value(Zero(4), body), "");
  EXPECT_EQ(value(BigEndian(1, 4), body), "");
  EXPECT_EQ(value(BigEndian(0x7FFFFFFF, 4), body), std::string(400, 'a'));
  EXPECT_FALSE(value(BigEndian(0x80000000, 4), body));
  EXPECT_EQ(value("", "").value(), "");
  EXPECT_EQ(ReadFrameText(500, "TIT2").value(), "");
}

TEST(ReadFrameText, RemovesByteOrderMarksInTwoPasses) {
  const auto value = [](const std::string& body) {
    return ReadFrameText(1, Id3v2Frame("TIT2", Zero() + body)).value();
  };
  EXPECT_EQ(value("\xFF\xFE"
                  "B\xFF\xFE"
                  "l\x9F\xFE"),
            "Bl");
  EXPECT_EQ(value("\xFF\xFF\xFE\xFE"), "\xFF\xFE") << "what the removal joins stays";
  EXPECT_EQ(value("\x9F\xFF\xFE\xFE"), "") << "unless the second pass meets it";
  EXPECT_EQ(value("\xFE\xFF\xFE"), "\xFE");
  EXPECT_EQ(Parsed(Id3v2Tag(TagFields{{"TIT2", "Bl"}}, {.utf16 = true})).Title,
            "B" + Zero() + "l" + Zero());
}

TEST(ReadID3v2Tag, TheLastOrdinaryCommentWins) {
  const std::string first = Id3v2FieldFrame({"COMM", "first"});
  const std::string mood = MusicmatchFrame("Mood", "calm");
  const std::string described = Id3v2Frame("COMM", Zero() + "engnote" + Zero() + "last");
  EXPECT_EQ(Parsed(Id3v2Tag(first + mood)).Comment, "first");
  const Mp3Info info = Parsed(Id3v2Tag(
      mood + first + MusicmatchFrame("Tempo", "fast") + described + MusicmatchFrame("Bio", "born") +
      MusicmatchFrame("Preference", "good") + MusicmatchFrame("Situation", "home")));
  EXPECT_EQ(info.Comment, "ote" + Zero() + "last");
  EXPECT_EQ(info.Mood + info.Tempo + info.Bio + info.Preference + info.Situation,
            "calmfastborngoodhome");
  EXPECT_EQ(Parsed(Id3v2Tag(mood), "OK", {.Comment = "old"}).Comment, "");
  // Two marks in one value, any case, no zero byte: both fields get the whole value.
  const std::string both = "musicMatch_mood_TEMPO";
  const Mp3Info odd = Parsed(Id3v2Tag(Id3v2Frame("COMM", Zero() + both)));
  EXPECT_EQ(odd.Mood, both);
  EXPECT_EQ(odd.Tempo, both);
}

TEST(ReadID3v2Tag, ASizeAbove31BitsKeepsTheFieldsBeforeIt) {
  const std::string bad = std::string("TALB\x80") + Zero(20);
  const Mp3Info info = Parsed(Id3v2Tag(Id3v2FieldFrame({"TIT2", "Blue"}) + bad), "",
                              {.Title = "old", .Year = "old", .Comment = "old"});
  EXPECT_EQ(info.Title, "Blue");
  EXPECT_EQ(info.Year, "old");
  EXPECT_EQ(info.Comment, "old");
  const Mp3Info comment =
      Parsed(Id3v2Tag(MusicmatchFrame("Mood", "calm") + Id3v2FieldFrame({"COMM", "one"}) +
                      "COMM\xFF" + Zero(20) + MusicmatchFrame("Mood", "wild")),
             "", {.Comment = "old"});
  EXPECT_EQ(comment.Mood, "calm");
  EXPECT_EQ(comment.Comment, "eng" + Zero() + "one");
}

TEST(ReadID3v2Tag, EveryCutOfAGoodTagIsHarmless) {
  const TempFolder folder;
  const std::string whole = Id3v2Tag(
      {{"TPE1", "Anna"}, {"TIT2", "Blue"}, {"COMM", "note"}},
      {.version = 4, .more_frames = MusicmatchFrame("Mood", "calm") + PictureFrame(FakeJpeg())});
  for (std::size_t n = 0; n <= whole.size(); ++n) {
    SCOPED_TRACE(n);
    const std::string cut = whole.substr(0, n);
    Mp3Info from_file;
    const std::string result = ReadID3v2Tag(folder.Write("a.mp3", cut), kAny, from_file);
    EXPECT_EQ(result, n < 10 ? "" : "OK");
    Mp3Info measure;
    EXPECT_EQ(result, plain::Parse(cut, measure));
    EXPECT_EQ(plain::Fields(from_file), plain::Fields(measure));
  }
}

// Tags put together at random from the pieces that matter, against the plain reader.
TEST(ReadID3v2Tag, FindsWhatAPlainSearchFinds) {
  std::vector<std::string> pieces = {Zero(3) + " " + Zero(2), Zero(2) + "\1\x10" + Zero(3), Zero(),
                                     "\x7F" + std::string(3, '\xFF'), "\x80"};
  const std::string_view words =
      "TPE1 TIT2 TALB TRCK TCO MM TCOM COMM COMM WXXX USLT APIC TYE R MUSICMATCH MusicM atch _Mood "
      "_BI O _TEMPO \xFF \xFE \x9F xxxxxxxxxxxxxxxxx";
  for (const std::string_view word : Split(words, ' ')) pieces.emplace_back(word);
  std::mt19937 random(7);
  int failures = 0;
  for (int i = 0; i < 20000; ++i) {
    std::string frames;
    for (auto n = random() % 40; n > 0; --n) {
      const std::size_t piece = random() % pieces.size();
      if (pieces[piece] != "\x80" || random() % 8 == 0) frames += pieces[piece];
    }
    const std::string tag = Id3v2Tag(frames, 3, random() % 3 * 40) + (i % 2 == 0 ? frames : "");
    Mp3Info measure{.Title = "old", .Comment = "old"};
    const std::string expected = plain::Parse(tag, measure);
    const Mp3Info info = Parsed(tag, expected, {.Title = "old", .Comment = "old"});
    ASSERT_EQ(plain::Fields(info), plain::Fields(measure)) << testing::PrintToString(tag);
    failures += expected.empty() ? 1 : 0;
  }
  EXPECT_GT(failures, 100);
  EXPECT_LT(failures, 10000);
}

TEST(ReadID3v2Tag, AMillionCommentsThatAllReachToTheEndAreReadOnce) {
  std::string frames;
  for (int i = 0; i < 1000000; ++i) frames += "COMM\x7F\xFF\xFF\xFF" + Zero(2);
  const Mp3Info info = Parsed(Id3v2Tag(frames + Zero() + "eng" + Zero() + "last"));
  EXPECT_EQ(info.Comment, "last" + Zero(91));
}

TEST(ReadID3v2Tag, ALargeTagIsReadInPiecesAsInOne) {
  const TempFolder folder;
  const std::string comment = Id3v2FieldFrame({"COMM", std::string(70'000, 'c')});
  std::string frames;
  for (int i = 0; i < 70; ++i) {
    // The names stand at all places of a piece, also across its end.
    frames += comment + MusicmatchFrame("Mood", std::to_string(i)) + std::string(65'521 + i, 'x');
  }
  frames += Id3v2FieldFrame({"USLT", std::string(200'000, 'l')}) + Id3v2FieldFrame({"TIT2", "B"});
  const std::string path = folder.Write("a.mp3", Id3v2Tag(frames) + MpegFrame());
  Mp3Info info;
  ASSERT_EQ(ReadID3v2Tag(path, kAny, info), "OK");
  Mp3Info measure;
  EXPECT_EQ(plain::Parse(Id3v2Tag(frames) + MpegFrame(), measure), "OK");
  EXPECT_TRUE(plain::Fields(info) == plain::Fields(measure));
}

std::string SizedSafely(std::string frame) {
  return frame.replace(4, 4, BigEndian(frame.size() - 10, 4, 7));
}

TEST(ReadID3v2TagByFrames, EndsEachTextWhereItsFrameDoes) {
  const std::string comment(123, 'c');
  const std::string bio(300, 'b');
  const std::string frames = SizedSafely(Id3v2FieldFrame({"USLT", "TALB in a song"})) +
                             SizedSafely(Id3v2FieldFrame({"COMM", comment})) +
                             SizedSafely(MusicmatchFrame("Bio", bio)) +
                             MusicmatchFrame("Mood", "m") + PictureFrame(FakeJpeg());
  // What this program puts after a picture of its own ends the walk of others.
  const std::string behind = Zero(13) + Id3v2FieldFrame({"TCON", "(17)Rock"});
  for (const int version : {3, 4}) {
    FileBytes file;
    const std::string bytes = Id3v2Tag(frames + behind, version, 40) + MpegFrame();
    file.OpenMemory(bytes);
    Mp3Info info{.Album = "old"};
    EXPECT_EQ(ReadID3v2TagByFrames(file, info), "OK");
    EXPECT_EQ(info.Comment + info.Bio + info.Mood, comment + bio + "m");
    EXPECT_EQ(info.Album + info.GenreV2, "(17)Rock");
    EXPECT_TRUE(info.HasPicture);
  }
}

TEST(SplitGenreText, TakesNumberAndNameApart) {
  const struct {
    const char* text;
    const char* number;
    const char* name;
    int genre;
  } cases[] = {
      {"Rock", "", "Rock", 255},
      {"(17)Rock", "17", "Rock", 17},
      {"(17)", "17", "", 17},
      {"(17)(18)Mix", "17", "Mix", 17},
      {"Rock (live)", "live", "", 255},
      {"a)b(c", "", "b(c", 255},
      {"(RX)x", "RX", "x", 255},
      {"(-1)x", "-1", "x", 255},
      {"( 4 )x", " 4 ", "x", 4},
      {"(99999)x", "99999", "x", 255},
      {"()x", "", "x", 255},
      {"(17", "", "(17", 255},
      {"", "", "", 255},
      {"((x)y", "(x", "y", 255},
  };
  for (const auto& each : cases) {
    const GenreText split = SplitGenreText(each.text);
    EXPECT_EQ(split.number, each.number) << each.text;
    EXPECT_EQ(split.name, each.name) << each.text;
    EXPECT_EQ(split.genre, each.genre) << each.text;
  }
}

TEST(ID3v2FrameDescription, KnowsTheFramesByName) {
  EXPECT_EQ(ID3v2FrameDescription("TIT1"), "Content group description");
  EXPECT_EQ(ID3v2FrameDescription("APIC"), "Picture");
  EXPECT_EQ(ID3v2FrameDescription("TXXX"), "");
}

}  // namespace
}  // namespace tunemeadow
