// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/dates.h"

#include <gtest/gtest.h>

#include <ctime>
#include <optional>
#include <string>

#include "core/text.h"
#include "support/scoped_environment.h"

namespace tunemeadow {
namespace {

constexpr const char* kBerlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* kNewYork = "EST5EDT,M3.2.0,M11.1.0";

TEST(DateTimeText, IsLocalTimeWhoseOrderAsTextIsTheOrderInTime) {
  const ScopedZone zone(kBerlin);
  EXPECT_EQ(DateTimeText(0), "1970-01-01 01:00:00");
  EXPECT_EQ(DateTimeText(1083819489), "2004-05-06 06:58:09") << "summer time";
  EXPECT_EQ(DateTimeText(951782399), "2000-02-29 00:59:59");
  EXPECT_EQ(DateTimeText(-62135596800), "0001-01-01 01:00:00");
  EXPECT_EQ(DateTimeText(253402297199), "9999-12-31 23:59:59");
  EXPECT_EQ(DateTimeText(253402297200), "") << "a year of five digits would break the order";
  EXPECT_EQ(DateTimeText(INT64_MAX), "");
}

TEST(ParseDateTime, ReadsBackEveryTextThatWasWritten) {
  for (const char* rule : {"UTC0", kBerlin, kNewYork, "NPT-5:45"}) {
    const ScopedZone zone(rule);
    // Every 7 hours and some through a year, both changes of the clock included.
    for (std::time_t t = 1075000000; t < 1107000000; t += 26003) {
      const std::string text = DateTimeText(t);
      const auto moment = ParseDateTime(text);
      ASSERT_TRUE(moment) << text;
      EXPECT_EQ(DateTimeText(*moment), text) << rule;
    }
  }
}

TEST(ParseDateTime, TakesBothOrdersAndShortTimes) {
  const ScopedZone zone("UTC0");
  for (const char* text :
       {"2004-05-06 07:08:00", "2004-05-06 07:08", " 06.05.2004 07:08 ", "6.5.2004 7:08:00"}) {
    EXPECT_EQ(ParseDateTime(text), 1083827280) << text;
  }
  EXPECT_EQ(ParseDateTime("2004-05-06"), 1083801600);
  EXPECT_EQ(ParseDateTime("29.02.2000"), 951782400);
  EXPECT_EQ(ParseDateTime("1969-12-31 23:59:59"), -1);
}

TEST(ParseDateTime, RefusesWhatIsNoDate) {
  constexpr std::string_view kTexts =
      "| |0:10|2004|2004-05|2004-13-01|2004-00-01|2004-05-32|1900-02-29|31.04.2004|2004-06-31|"
      "2004-09-31|2004-11-31|2004-05-06 24:00|2004-05-06 07:60|2004-05-06 07:08:60|"
      "2004-05-06T07:08|2004-05-06 07:08:09 pm|06.05.04|04-05-06|12004-05-06|2004-05.06|"
      "2004-05-06x|a.b.2004|.5.2004|99999999999-1-1|0000-01-01";
  for (const std::string_view text : Split(kTexts, '|')) {
    EXPECT_EQ(ParseDateTime(text), std::nullopt) << text;
  }
}

TEST(ParseDateTime, ATimeThatTheClocksLeaveOutIsStillSomeMomentNearIt) {
  const ScopedZone zone(kBerlin);
  const auto moment = ParseDateTime("2004-03-28 02:30:00");
  ASSERT_TRUE(moment);
  EXPECT_LE(std::abs(*moment - 1080435600), 1800);
}

TEST(Now, IsThePresentMoment) {
  const std::time_t before = std::time(nullptr);
  const auto now = ParseDateTime(Now());
  ASSERT_TRUE(now);
  EXPECT_GE(*now, before);
  EXPECT_LE(*now, std::time(nullptr));
}

}  // namespace
}  // namespace tunemeadow
