// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/lyrics3.h"

#include <gtest/gtest.h>

#include <string>

#include "support/mp3_builder.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

struct Outcome {
  bool ok = false;
  Lyrics3 lyrics;
};

Outcome Walked(std::string_view bytes) {
  FileBytes file;
  file.OpenMemory(bytes);
  Outcome outcome;
  outcome.lyrics.Lyrics3Lyr = "of the file before";
  outcome.lyrics.Lyrics3Other = "of the file before";
  outcome.ok = ReadLyrics3Tag(file, outcome.lyrics);
  return outcome;
}

const TagFields kAllFields = {
    {"IND", "10"},     {"LYR", " la la "}, {"INF", "info"},  {"AUT", "author"}, {"EAL", "album"},
    {"EAR", "artist"}, {"ETT", "title"},   {"IMG", "image"}, {"QUA", "good"},   {"XYZ", " raw "},
    {"SIT", "home"},   {"MOO", "calm"},    {"lyr", "small"}, {"LYR", "last"}};

TEST(ReadLyrics3Tag, FillsEveryFieldWithAndWithoutAnID3v1Tag) {
  const TempFolder folder;
  for (const bool with_id3v1 : {true, false}) {
    Mp3File file = Mp3File().Frames(2).Lyrics3(kAllFields);
    if (with_id3v1) file.Id3v1({.title = "Blue"});
    const std::string path = folder.Write("a.mp3", file);
    Lyrics3 l;
    ASSERT_TRUE(ReadLyrics3Tag(path, l));
    EXPECT_EQ(l.Lyrics3Lyr, "last");
    EXPECT_EQ(l.Lyrics3Inf + l.Lyrics3Aut + l.Lyrics3Eal + l.Lyrics3Ear + l.Lyrics3Ett,
              "infoauthoralbumartisttitle");
    EXPECT_EQ(l.Lyrics3Img + l.Lyrics3Qua + l.Lyrics3Sit + l.Lyrics3Moo, "imagegoodhomecalm");
    EXPECT_EQ(l.Lyrics3Other, "XYZ00005 raw lyr00005small");
    EXPECT_EQ(l.Lyrics3SizeText, "000189");
    Lyrics3 found{.Lyrics3Lyr = "kept"};
    EXPECT_TRUE(HasLyrics3Tag(path, found));
    EXPECT_EQ(found.Lyrics3SizeText, "000189");
    EXPECT_EQ(found.Lyrics3Lyr, "kept");
  }
}

TEST(ReadLyrics3Tag, WithoutABlockTheFieldsAreEmpty) {
  const TempFolder folder;
  const std::string block = Lyrics3Bytes({{"LYR", "la"}});
  const std::string audio(200, 'x');
  const auto with_size = [&](std::string_view size) {
    std::string changed = block;
    changed.replace(block.size() - 15, 6, size);
    return audio + changed;
  };
  const std::string files[] = {
      "",
      audio,
      audio + block + ' ',
      with_size("000020"),
      with_size("000022"),
      with_size("999999"),
      with_size("      "),
      with_size("-00021"),
      with_size("0x0015"),
      block,  // alone it is under 143 bytes
      std::string(142 - block.size(), 'x') + block,
  };
  for (const std::string& bytes : files) {
    const Outcome outcome = Walked(bytes);
    EXPECT_FALSE(outcome.ok) << bytes;
    EXPECT_EQ(outcome.lyrics.Lyrics3Lyr + outcome.lyrics.Lyrics3Other, "") << bytes;
  }
  EXPECT_TRUE(Walked(std::string(143 - block.size(), 'x') + block).ok);
  Lyrics3 lyrics{.Lyrics3Lyr = "old"};
  EXPECT_FALSE(ReadLyrics3Tag(folder.Path("none.mp3"), lyrics));
  EXPECT_EQ(lyrics.Lyrics3Lyr, "");
}

TEST(ReadLyrics3Tag, AFieldLengthAbove32767OrWithoutDigitsFails) {
  const auto block = [](const std::string& fields) {
    return std::string(200, 'x') + "LYRICSBEGIN" + fields + Digits(fields.size() + 11, 6) +
           "LYRICS200";
  };
  Outcome outcome = Walked(block("MOO00004calmLYR32767" + std::string(32767, 'l')));
  EXPECT_TRUE(outcome.ok);
  EXPECT_EQ(outcome.lyrics.Lyrics3Lyr.size(), 32767U);
  for (const std::string& bad :
       {"LYR32768" + std::string(32768, 'l'), std::string("LYR-0005l"), std::string("LYR 0001l"),
        std::string("LY"), std::string("LYR00099short")}) {
    outcome = Walked(block("MOO00004calm" + bad));
    EXPECT_FALSE(outcome.ok) << bad;
    EXPECT_EQ(outcome.lyrics.Lyrics3Moo, "calm") << "what came before stays";
  }
  outcome = Walked(block("LYR00004la"));
  EXPECT_TRUE(outcome.ok) << "a value may run past the block";
  EXPECT_EQ(outcome.lyrics.Lyrics3Lyr, "la00");
}

TEST(ReadLyrics3Tag, EveryCutIsHarmless) {
  const std::string whole = Mp3File().Bytes("x").Lyrics3(kAllFields).Id3v1({}).Build();
  for (std::size_t n = 0; n < whole.size(); ++n) {
    (void)Walked(whole.substr(n));
    (void)Walked(whole.substr(0, n));
  }
}

}  // namespace
}  // namespace tunemeadow
