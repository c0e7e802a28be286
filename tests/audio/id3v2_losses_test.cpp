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
  EXPECT_EQ(CountID3v2Losses(Id3v2Tag(frames, 2, 10), {}, {}).frames, 2);
  std::string extended =
      Id3v2Tag("\0\0\0\6"s + std::string(6, '\0') + Id3v2FieldFrame({"TPE2", "Ann"}));
  extended[5] = '\x40';
  EXPECT_EQ(CountID3v2Losses(extended, {}, {}).frames, 1);
  extended[3] = '\4';
  extended[13] = '\12';
  EXPECT_EQ(CountID3v2Losses(extended, {}, {}).frames, 1);
}

TEST(CountID3v2Losses, EveryCutIsHarmless) {
  const std::string tag = Id3v2Tag(Comment("d", "v") + Id3v2Frame("TXXX", "\1\xFF\xFE"s), 3, 4);
  for (std::size_t n = 0; n <= tag.size(); ++n)
    EXPECT_LE(CountID3v2Losses(tag.substr(0, n), {}, {}).frames, 2);
}

}  // namespace
}  // namespace tunemeadow
