// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace tunemeadow {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(FormatFixed, RoundsHalvesAwayFromZeroInDecimal) {
  struct {
    double value;
    int decimals;
    const char* text;
  } cases[] = {
      {0, 2, "0.00"},         {3.14159, 2, "3.14"}, {0.125, 2, "0.13"},
      {-0.125, 2, "-0.13"},   {1.005, 2, "1.01"},   {2.5, 0, "3"},
      {-2.5, 0, "-3"},        {0.49999, 0, "0"},    {999.995, 2, "1000.00"},
      {9.99, 1, "10.0"},      {-0.001, 2, "0.00"},  {1e15, 2, "1000000000000000.00"},
      {0.1 + 0.2, 2, "0.30"}, {5e-324, 3, "0.000"}, {kInfinity, 2, ""},
      {std::nan(""), 2, ""},
  };
  for (const auto& c : cases) EXPECT_EQ(FormatFixed(c.value, c.decimals), c.text) << c.value;
}

TEST(FormatShortest, HasNoExponentAndNoTrailingZeros) {
  EXPECT_EQ(FormatShortest(44.1), "44.1");
  EXPECT_EQ(FormatShortest(22050.0 / 1000), "22.05");
  EXPECT_EQ(FormatShortest(48), "48");
  EXPECT_EQ(FormatShortest(1e21), "1000000000000000000000");
  EXPECT_EQ(FormatShortest(-kInfinity), "");
}

TEST(RoundHalfEven, TakesTheEvenNeighbourAndStaysInRange) {
  EXPECT_EQ(RoundHalfEven(2.5), 2);
  EXPECT_EQ(RoundHalfEven(3.5), 4);
  EXPECT_EQ(RoundHalfEven(-2.5), -2);
  EXPECT_EQ(RoundHalfEven(-3.5), -4);
  EXPECT_EQ(RoundHalfEven(2.5000001), 3);
  EXPECT_EQ(RoundHalfEven(-2.4999999), -2);
  EXPECT_EQ(RoundHalfEven(kInfinity), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(RoundHalfEven(-1e300), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(RoundHalfEven(std::nan("")), 0);
}

TEST(ParseNumber, TakesPointOrCommaAndNothingElse) {
  EXPECT_EQ(ParseNumber(" 926.5 "), 926.5);
  EXPECT_EQ(ParseNumber("926,5"), 926.5);
  EXPECT_EQ(ParseNumber("-7"), -7.0);
  EXPECT_EQ(ParseNumber("+.5"), 0.5);
  for (const char* text : {"", " ", "1,234.5", "12 px", "inf", "nan", "nan(1)", "0x10", "+-5",
                           "--5", "1e999", "-", "."}) {
    EXPECT_EQ(ParseNumber(text), std::nullopt) << text;
  }
  EXPECT_EQ(ParseNumber(std::string(65, '1')), std::nullopt);
}

TEST(ParseWhole, TakesWholeNumbersThatFit) {
  EXPECT_EQ(ParseWhole(" 07 "), 7);
  EXPECT_EQ(ParseWhole("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  for (const char* text : {"", "7.0", "9223372036854775808", "+-1", "1 2", "+"}) {
    EXPECT_EQ(ParseWhole(text), std::nullopt) << text;
  }
}

TEST(LeadingNumber, IsZeroWhereTheTextBeginsWithNone) {
  struct {
    const char* text;
    double number;
  } cases[] = {{"192 kbps", 192}, {"  -3.5x", -3.5}, {"+5", 5},    {".5.5", .5}, {"0,5", 0},
               {"", 0},           {"x5", 0},         {"inf", 0},   {"-inf", 0},  {"+-5", 0},
               {"--5", 0},        {"nan", 0},        {"1e999", 0}, {"12e", 12}};
  for (const auto& c : cases) EXPECT_EQ(LeadingNumber(c.text), c.number) << c.text;
}

}  // namespace
}  // namespace tunemeadow
