// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/save_rules.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "tracks/tag_texts.h"

namespace tunemeadow {
namespace {

TEST(SaveRules, AFieldThatIsLeftIsAWholeNumberOfSixteenBits) {
  // The box of the track, "n" not a number, "l" too large, and whether the year gets one.
  const std::tuple<const char*, char, bool> cases[] = {
      {"", '-', false},      {" 12 ", '-', false}, {"254.5", '-', false}, {"255.5", 'l', false},
      {"256", 'l', false},   {"-7", '-', false},   {"32767", 'l', false}, {"32768", 'n', true},
      {"-32769", 'n', true}, {"3/12", 'n', true}};
  for (const auto& [text, box, year] : cases) {
    const auto track = CheckTracknumber(text);
    EXPECT_EQ(track ? track->text : "", box == '-'   ? ""
                                        : box == 'n' ? "Track-number is not a number!"
                                                     : "Track-number must be less than 256!")
        << text;
    EXPECT_EQ(CheckYear(text) ? CheckYear(text)->text : "", year ? "Year is not a number!" : "");
  }
}

TEST(SaveRules, TheTrackIsItsLeadingNumberUpTo255) {
  const std::pair<const char*, const char*> cases[] = {
      {"07", "7"}, {"3/12", "3"}, {"1e2", "100"}, {"255", "255"},
      {"abc", ""}, {"0", ""},     {"-1", ""}};
  for (const auto& [text, track] : cases) EXPECT_EQ(TrackToSave(text), track) << text;
  EXPECT_EQ(TrackToSave("256"), std::nullopt);
  EXPECT_EQ(TrackToSave("70000"), std::nullopt);
}

TEST(SaveRules, QuotesGiveWayToTheDelimiter) {
  EXPECT_EQ(EscapeEditorText(R"(a'b"c)", '\''), R"(a"b"c)");
  EXPECT_EQ(EscapeEditorText(R"(a'b"c)", '"'), "a'b''c");
}

TEST(SaveRules, CapitalsComeBeforeReplacements) {
  Preferences preferences{.chkCapitalizeSave = true, .chkReplaceSave = true};
  EXPECT_EQ(ApplySaveRules("one_two  mcDONALD", preferences), "One two  McDONALD");
  preferences.chkCapitalizeSave = false;
  EXPECT_EQ(ApplySaveRules("one_two", preferences), "one two");
  preferences.chkReplaceSave = false;
  EXPECT_EQ(ApplySaveRules("one_two", preferences), "one_two");
}

TEST(SaveRules, APlaytimeWithoutColonLastsNoTime) {
  EXPECT_EQ(PlaytimeSeconds("3:05"), 185);
  EXPECT_EQ(PlaytimeSeconds("185"), 0);
  EXPECT_EQ(PlaytimeSeconds(":"), 0);
}

}  // namespace
}  // namespace tunemeadow
