// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/save_rules.h"

#include <gtest/gtest.h>

#include <string>

namespace tunemeadow {
namespace {

TEST(SaveRules, AFieldThatIsLeftIsAWholeNumberOfSixteenBits) {
  const std::string no_track = "Track-number is not a number!", no_year = "Year is not a number!";
  const struct {
    const char *text, *track, *year;  // the box; empty: none
  } cases[] = {{"", "", ""},
               {" 12 ", "", ""},
               {"255.5", "Track-number must be less than 256!", ""},  // halves to the even 256
               {"254.5", "", ""},
               {"256", "Track-number must be less than 256!", ""},
               {"-7", "", ""},
               {"32767", "Track-number must be less than 256!", ""},
               {"32768", no_track.c_str(), no_year.c_str()},
               {"-32769", no_track.c_str(), no_year.c_str()},
               {"3/12", no_track.c_str(), no_year.c_str()}};
  const auto text_of = [](const std::optional<MessageBox>& box) { return box ? box->text : ""; };
  for (const auto& each : cases) {
    EXPECT_EQ(text_of(CheckTracknumber(each.text)), each.track) << each.text;
    EXPECT_EQ(text_of(CheckYear(each.text)), each.year) << each.text;
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
