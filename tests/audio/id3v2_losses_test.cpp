// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_losses.h"

#include <gtest/gtest.h>

#include "support/mp3_builder.h"

namespace tunemeadow {
namespace {

using std::string_literals::operator""s;

std::string Comment(std::string_view description, std::string_view value) {
  return Id3v2Frame("COMM", "\0eng"s + std::string(description) + '\0' + std::string(value));
}

/// With a size of seven bits a byte.
std::string SafeFrame(std::string_view name, std::size_t size) {
  return std::string(name) + BigEndian(size, 4, 7) + std::string(2, '\0') + std::string(size, 'x');
}

std::string OldFrame(std::string_view name, std::string_view body) {
  return std::string(name) + BigEndian(body.size(), 3) + std::string(body);
}

TEST(CountID3v2Losses, CountsWhatTheNewTagHasNoPlaceFor) {
  const std::string title = Id3v2FieldFrame({"TIT2", "Blue"});
  const std::string album_artist = Id3v2FieldFrame({"TPE2", "Ann"});
  const std::string link = Id3v2FieldFrame({"WXXX", "http://x"});
  const std::string lyrics = Id3v2FieldFrame({"USLT", "la"});
  const std::string wide_mood = Id3v2Frame(
      "COMM", "\1eng"s + Id3v2Text("MusicMatch_Mood", true) + "\0\0"s + Id3v2Text("calm", true));
  const struct {
    int lost;
    std::string frames;
  } cases[] = {
      {0, ""},
      {0, title + PictureFrame(FakeJpeg()) + link + lyrics + Comment("", "hi")},
      {2, album_artist + title + Id3v2Frame("PCNT", "\0\0\0\7"s)},
      {1, Id3v2Frame("TXXX", "\0mood\0calm"s) + Id3v2Frame("TXXX", "\0mood\0"s)},
      {0, Id3v2FieldFrame({"TPE2", ""}) + Id3v2FieldFrame({"TPE2", ""}, true)},
      {2, link + link + lyrics + lyrics},
      {0, link + Id3v2FieldFrame({"WXXX", ""}) + Id3v2FieldFrame({"USLT", ""})},
      {0, MusicmatchFrame("Mood", "calm") + MusicmatchFrame("Tempo", "fast") + wide_mood},
      {2, Comment("", "hi") + Comment("", "ho") + Comment("iTunNORM", "0000")},
      {0, Comment("", "") + Comment("", "ho") + Comment("iTunNORM", "")},
      {1, SafeFrame("COMM", 300) + SafeFrame("TPE2", 300)},
      {2, Id3v2Frame("PRIV", std::string(300, 'x')) + album_artist},
      {1, album_artist + "bad!" + title + album_artist},  // the first leads nowhere
  };
  for (const int version : {3, 4}) {
    for (const auto& each : cases) {
      const int lost = each.frames.find("bad!") == std::string::npos ? each.lost : 0;
      EXPECT_EQ(CountID3v2Losses(Id3v2Tag(each.frames, version, 30), {}, {}).frames, lost)
          << each.frames;
      EXPECT_EQ(CountID3v2Losses(Id3v2Tag(each.frames, version), {}, {}).frames, lost)
          << each.frames;
    }
  }
}

TEST(CountID3v2Losses, KnowsTheShortNamesAndTheExtendedHeader) {
  const std::string frames = OldFrame("TT2", "\0Blue"s) + OldFrame("PIC", "\0JPG\0"s) +
                             OldFrame("COM", "\0eng\0hi"s) + OldFrame("TP2", "\0Ann"s);
  const TagLosses losses =
      CountID3v2Losses(Id3v2Tag(frames, 2, 10), {.Title = "Blue", .Comment = "ho"}, {});
  EXPECT_EQ(losses.frames, 1);
  EXPECT_EQ(losses.pictures, 1);
  EXPECT_EQ(losses.texts, 1) << "the title is written as it was, the comment is not";
  std::string extended =
      Id3v2Tag("\0\0\0\6"s + std::string(6, '\0') + Id3v2FieldFrame({"TPE2", "Ann"}));
  extended[5] = '\x40';
  EXPECT_EQ(CountID3v2Losses(extended, {}, {}).frames, 1);
  extended[3] = '\4';
  extended[13] = '\12';
  EXPECT_EQ(CountID3v2Losses(extended, {}, {}).frames, 1);
}

// A text that the reader sees byte by byte is written back that way.
TEST(CountID3v2Losses, CountsTextsThatAreNotWhatTheOldFrameSays) {
  const struct {
    std::string name, body;
    TagText written;
    int texts, values;
  } cases[] = {
      {"TIT2",
       "\1\xFF\xFE"
       "B\0\xE4\0"s,
       "B\xE4", 0, 0},                                    // UTF-16 that is Windows-1252 as well
      {"TIT2", "\1\xFF\xFE\x1F\x04"s, "\x1F\x04", 1, 0},  // Cyrillic
      {"TIT2", "\1\xFE\xFF\0B"s,
       "\xFE\xFF"
       "B",
       1, 0},  // the higher byte first
      {"TIT2", "\2\0B\0l"s, "Bl", 0, 0},
      {"TIT2", "\3Bl\xC3\xA4"s, "Bl\xC3\xA4", 1, 0},
      {"TIT2", "\3Bl\xC3\xA4"s, "Bl\xE4 again", 0, 0},  // typed again
      {"TIT2", "\3Bl\xC3\xA4"s, "", 0, 0},              // emptied
      {"TIT2", "\3Bl\xD0\xAF"s, "Bl?", 1, 0},
      {"TIT2", "\3plain"s, "other", 0, 0},
      {"TIT2", "\0one\0two\0\0three\0"s, "onetwothree", 0, 2},
      {"TIT2",
       "\1\xFF\xFE"
       "a\0\0\0\xFF\xFE"
       "b\0"s,
       "ab", 0, 1},
      {"COMM", "\3eng\0\xC3\xA4"s, "", 0, 0},
      {"COMM", "\3eng\0\xC3\xA4"s, "\xC3\xA4", 1, 0},
      {"COMM", "\3engMusicMatch_Mood\0\xC3\xA4"s, "\xC3\xA4", 1, 0},
  };
  for (const auto& each : cases) {
    const Mp3Info written = {.Title = each.written, .Comment = each.written, .Mood = each.written};
    const TagLosses losses =
        CountID3v2Losses(Id3v2Tag(Id3v2Frame(each.name, each.body)), written, {});
    EXPECT_EQ(losses.texts, each.texts) << each.body;
    EXPECT_EQ(losses.values, each.values) << each.body;
  }
  const std::string twice = Id3v2FieldFrame({"TPE1", "Ann"}) + Id3v2FieldFrame({"TPE1", "Bob"});
  EXPECT_EQ(CountID3v2Losses(Id3v2Tag(twice), {}, {}).values, 1);
  const std::string genres = OldFrame("TCO", "\0(17)"s);
  EXPECT_EQ(CountID3v2Losses(Id3v2Tag(genres, 2), {.GenreV2 = "Rock"}, {}).texts, 0);
  EXPECT_EQ(CountID3v2Losses(Id3v2Tag(genres, 2), {}, {}).texts, 1);
}

TEST(CountID3v2Losses, CountsPicturesThatAreNotCopiedToTheByte) {
  std::string tag = Id3v2Tag(PictureFrame("\xFF\0\xD8"s), 4, 9);
  const ID3v2PictureRange whole = {10, tag.size() - 9};
  const ID3v2PictureRange shorter = {10, tag.size() - 10};
  EXPECT_EQ(CountID3v2Losses(tag, {}, {&whole, 1}).pictures, 0);
  EXPECT_EQ(CountID3v2Losses(tag, {}, {&shorter, 1}).pictures, 1);
  tag[5] = '\x80';
  EXPECT_EQ(CountID3v2Losses(tag, {}, {&whole, 1}).pictures, 1) << "unsynchronised";
  tag[5] = '\0';
  tag[19] = '\1';
  EXPECT_EQ(CountID3v2Losses(tag, {}, {&whole, 1}).pictures, 1) << "a length before the picture";
}

TEST(CountID3v2Losses, EveryCutIsHarmless) {
  const std::string tag = Id3v2Tag(Comment("d", "v") + Id3v2Frame("TXXX", "\1\xFF\xFE"s), 3, 4);
  for (std::size_t n = 0; n <= tag.size(); ++n)
    EXPECT_LE(CountID3v2Losses(tag.substr(0, n), {}, {}).frames, 2);
}

}  // namespace
}  // namespace tunemeadow
