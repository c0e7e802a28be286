// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tunemeadow {
namespace {

using namespace std::string_literals;

TEST(Text, MalformedBytesCountAsOneCharacterEachAndSurvive) {
  struct {
    std::string text;
    std::size_t length;
  } cases[] = {
      {"", 0},
      {"abcdefghi", 9},
      {"aäß€😀", 5},
      {"\xFF\x80", 2},
      {"\xC3", 1},              // cut in the middle
      {"\xE2\x82x", 3},         // ends in another character
      {"\xC0\xAF", 2},          // overlong
      {"\xED\xA0\x80", 3},      // half of a surrogate pair
      {"\xF4\x90\x80\x80", 4},  // above the last character
      {"12345678\xE4"s, 9},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Length(c.text), c.length) << testing::PrintToString(c.text);
    EXPECT_EQ(Lower(Lower(c.text)), c.text);
    EXPECT_EQ(std::string(Left(c.text, 1)) + std::string(Mid(c.text, 2)), c.text);
    EXPECT_EQ(Length(Left(c.text, 1)), c.length > 0 ? 1u : 0u);
  }
  EXPECT_EQ(ToValidUtf8("a\xFF\xC3z"), "a\uFFFD\uFFFDz");
}

TEST(Text, LeftMidAndRightCountCharactersFromOne) {
  constexpr std::string_view kText = "Äöü-€x";
  EXPECT_EQ(Left(kText, 0), "");
  EXPECT_EQ(Left(kText, 2), "Äö");
  EXPECT_EQ(Left(kText, 99), kText);
  EXPECT_EQ(Right(kText, 2), "€x");
  EXPECT_EQ(Right(kText, 6), kText);
  EXPECT_EQ(Right(kText, 0), "");
  EXPECT_EQ(Mid(kText, 1, 1), "Ä");
  EXPECT_EQ(Mid(kText, 3, 3), "ü-€");
  EXPECT_EQ(Mid(kText, 6, 5), "x");
  EXPECT_EQ(Mid(kText, 7), "");
  EXPECT_EQ(Mid(kText, 1000000), "");
}

TEST(Text, TrimCutsBlanksOnly) {
  EXPECT_EQ(Trim("  a b \t "), "a b \t");
  EXPECT_EQ(TrimLeft(" a "), "a ");
  EXPECT_EQ(TrimRight(" a "), " a");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim(""), "");
}

TEST(Text, CaseMapsOneCharacterToOne) {
  EXPECT_EQ(Upper("straße änne ÿ żółw жук αβγ ǆ 😀\xFF"), "STRAßE ÄNNE Ÿ ŻÓŁW ЖУК ΑΒΓ Ǆ 😀\xFF");
  EXPECT_EQ(Lower("ÄNNE Ÿ ЖУК ABC[]"), "änne ÿ жук abc[]");
  EXPECT_EQ(FoldCase(U'Σ'), FoldCase(U'ς')) << "the final sigma is a sigma";
  EXPECT_EQ(FoldCase(kMalformed + 0xE4), kMalformed + 0xE4);
  EXPECT_EQ(UpperAscii("aäz\xFF{"), "AäZ\xFF{");
}

TEST(Text, ComparingWithoutCaseKnowsAsciiOnly) {
  EXPECT_TRUE(EqualsNoCase("aBc[ä", "AbC[ä"));
  EXPECT_FALSE(EqualsNoCase("ä", "Ä"));
  EXPECT_FALSE(EqualsNoCase("a", "ab"));
  EXPECT_FALSE(EqualsNoCase("[", "{")) << "neighbours of the letters";
  EXPECT_EQ(FindNoCase("xx.Mp3.mP3", ".MP3"), 2u);
  EXPECT_EQ(FindNoCase("xx.Mp3.mP3", ".mp3", 3), 6u);
  EXPECT_EQ(FindNoCase("abc", "d"), std::string_view::npos);
  EXPECT_EQ(FindNoCase("abc", "", 3), 3u);
  EXPECT_EQ(FindNoCase("abc", "", 4), std::string_view::npos);
  EXPECT_TRUE(EndsWithNoCase("a.OGG", ".ogg"));
  EXPECT_FALSE(EndsWithNoCase("ogg", ".ogg"));
}

TEST(Capitalize, TouchesTheFirstLetterOfEachWordOnly) {
  EXPECT_EQ(Capitalize("mcDONALD had  a farm"), "McDONALD Had  A Farm");
  EXPECT_EQ(Capitalize("  two leading, one trailing "), "  Two Leading, One Trailing ");
  EXPECT_EQ(Capitalize("(live) 2nd-hand o'neil\tx"), "(live) 2nd-hand O'neil\tx");
  EXPECT_EQ(Capitalize("änne über éa ÿx ßa"), "Änne Über Éa Ÿx ßa");
  EXPECT_EQ(Capitalize("ıa ɐb жук"), "Ia \u2C6Fb Жук") << "capitals of other lengths in bytes";
  EXPECT_EQ(Capitalize("µ-ziq ƒoo"), "µ-ziq ƒoo") << "a tag could not hold their capitals";
  EXPECT_EQ(Capitalize("\xE4 \xFFx \xC3"), "\xE4 \xFFx \xC3");
  EXPECT_EQ(Capitalize(""), "");
  EXPECT_EQ(Capitalize("   "), "   ");
}

TEST(StripNulls, RemovesEveryNulThenBlanksAtBothEnds) {
  EXPECT_EQ(StripNulls(" \0 T\0i \0t\0l\0e\0 \0 \0"s), "Ti tle");
  EXPECT_EQ(StripNulls("\0\0\0"s), "");
  EXPECT_EQ(StripNulls(" plain "), "plain");
  EXPECT_EQ(StripNulls("\tkept\n"), "\tkept\n");
}

TEST(ReplaceEach, NeverLooksAtReplacedTextAgain) {
  EXPECT_EQ(ReplaceEach("a_b__c", "_", " "), "a b  c");
  EXPECT_EQ(ReplaceEach("aaa", "aa", "a"), "aa");
  EXPECT_EQ(ReplaceEach("it's", "'", "''"), "it''s");
  EXPECT_EQ(ReplaceEach("abc", "", "_"), "abc") << "an empty search text leaves all alone";
  EXPECT_EQ(ReplaceEach("abab", "ab", ""), "");
  EXPECT_EQ(ReplaceEach("", "a", "b"), "");
}

TEST(Split, GivesOnePieceMoreThanSeparators) {
  EXPECT_EQ(Split("", ';'), (std::vector<std::string_view>{""}));
  EXPECT_EQ(Split(";a;;b", ';'), (std::vector<std::string_view>{"", "a", "", "b"}));
}

}  // namespace
}  // namespace tunemeadow
