// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/code_page.h"

#include <gtest/gtest.h>

#include <string>

#include "core/text.h"

namespace tunemeadow {
namespace {

TEST(CodePage, EveryByteSurvivesTheRoundTripAsOneCharacter) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  const std::string text = FromTagText(bytes);
  EXPECT_EQ(Length(text), 256u);
  EXPECT_EQ(ToValidUtf8(text), text);
  EXPECT_EQ(ToTagText(text), bytes);
}

TEST(CodePage, KnowsTheCharactersOfWindows1252) {
  EXPECT_EQ(FromTagText("\x80\x8A\x93x\x94\x99\x9F\xA0\xE4\xFF"), "€Š“x”™Ÿ\u00A0äÿ");
  EXPECT_EQ(FromTagText("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
  EXPECT_EQ(FromTagText("Stra\xDF"
                        "e"),
            "Straße");
}

TEST(CodePage, AQuestionMarkStandsForEachCharacterThatItLacks) {
  EXPECT_EQ(ToTagText("aЖ日😀ä"), "a???\xE4");
  EXPECT_EQ(ToTagText("\u0080\u0099"), "??") << "controls whose bytes mean other characters";
  EXPECT_EQ(ToTagText("\xFF"
                      "a"),
            "?a")
      << "a byte that is not UTF-8";
}

}  // namespace
}  // namespace tunemeadow
