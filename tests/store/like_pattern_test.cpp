// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/like_pattern.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "core/text.h"

namespace tunemeadow {
namespace {

/// The rule itself, character by character and with all ways tried.
bool MatchesByRule(std::string_view pattern, std::string_view text) {
  if (pattern.empty()) return text.empty();
  const CodePoint wanted = DecodeUtf8(pattern);
  const std::string_view rest = pattern.substr(wanted.bytes);
  if (wanted.value == U'%') {
    for (;;) {
      if (MatchesByRule(rest, text)) return true;
      if (text.empty()) return false;
      text.remove_prefix(DecodeUtf8(text).bytes);
    }
  }
  if (text.empty()) return false;
  const CodePoint found = DecodeUtf8(text);
  if (wanted.value != U'_' && FoldCase(wanted.value) != FoldCase(found.value)) return false;
  return MatchesByRule(rest, text.substr(found.bytes));
}

TEST(LikePattern, IsBlindToCaseInEveryScript) {
  struct Case {
    const char* pattern;
    const char* text;
    bool matches;
  };
  for (const Case& one : {
           Case{"%beat%", "The BEATLES", true},
           Case{"%ÄNNE%", "Die änne", true},
           Case{"%über%", "x ÜBER y", true},
           Case{"%мир%", "ВОЙНА И МИР", true},
           Case{"%kelvin%",
                "\xE2\x84\xAA"
                "elvin",
                true},  // the Kelvin sign folds to k
           Case{"%strasse%", "straße", false},
           Case{"a_c", "aßc", true},
           Case{"a_c", "ac", false},
           Case{"_", "\xC3\xA9", true},
           Case{"__", "\xC3\xA9", false},
           Case{"abc%", "ABCdef", true},
           Case{"%def", "abcDEF", true},
           Case{"%def", "abcDEFg", false},
           Case{"", "", true},
           Case{"", "a", false},
           Case{"%%", "", true},
           Case{"a%a", "a", false},
           Case{"%100%", "100 %", true},
       }) {
    EXPECT_EQ(LikePattern(one.pattern).Matches(one.text), one.matches)
        << one.pattern << " like " << one.text;
  }
}

TEST(LikePattern, AgreesWithTheRuleOnRandomTexts) {
  // Few letters, so that matches are common; long texts take another road than short ones.
  constexpr std::string_view kPieces[] = {"a",        "A",    "b",        "K",        "s",
                                          "Z",        "@",    "\xC3\xA4", "\xC3\x84", "i",
                                          "\xC4\xB1", "\xFF", "\xC3",     " "};
  std::mt19937 random(20240506);
  const auto text_of = [&](std::size_t longest, bool wild) {
    std::string text;
    for (std::size_t left = random() % longest; left > 0; --left) {
      const std::size_t kind = random() % 10;
      if (wild && kind < 3) {
        text += kind < 2 ? '%' : '_';
      } else {
        text += kPieces[random() % std::size(kPieces)];
      }
    }
    return text;
  };
  int matched = 0;
  for (int round = 0; round < 20000; ++round) {
    const std::string pattern = text_of(7, true);
    LikePattern prepared(pattern);
    const std::string text = text_of(round % 2 == 0 ? 10 : 60, false);
    const bool expected = MatchesByRule(pattern, text);
    matched += expected ? 1 : 0;
    ASSERT_EQ(prepared.Matches(text), expected) << pattern << " like " << text;
  }
  EXPECT_GT(matched, 1000);
}

TEST(LikePattern, FindsAPieceAtEveryPlaceOfALongText) {
  const std::vector<std::string> pieces = {"x", "xy", "needle", "@x", std::string(300, 'n') + "x"};
  for (const std::string& piece : pieces) {
    LikePattern prepared("%" + piece + "%");
    for (std::size_t place = 0; place < 70; ++place) {
      std::string text(place + piece.size() + 40, '.');
      EXPECT_FALSE(prepared.Matches(text));
      text.replace(place, piece.size(), piece);
      EXPECT_TRUE(prepared.Matches(text)) << piece << " at " << place;
      EXPECT_TRUE(prepared.Matches(text.substr(0, place + piece.size()))) << place;
    }
  }
}

TEST(LikePattern, ManyWildcardsDoNotTakeForever) {
  std::string pattern = "%";
  for (int i = 0; i < 40; ++i) pattern += "a_%";
  EXPECT_FALSE(LikePattern(pattern + "b").Matches(std::string(20000, 'a')));
}

TEST(FoldCase, TheOnlyForeignersThatFoldIntoAsciiAreThoseOfIAndKAndS) {
  for (char32_t c = 0x80; c < 0x20000; ++c) {
    const char32_t folded = FoldCase(c);
    EXPECT_TRUE(folded >= 0x80 || folded == U'i' || folded == U'k' || folded == U's')
        << static_cast<std::uint32_t>(c);
  }
}

}  // namespace
}  // namespace tunemeadow
