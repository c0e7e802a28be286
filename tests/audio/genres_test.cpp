// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/genres.h"

#include <gtest/gtest.h>

namespace tunemeadow {
namespace {

TEST(Genres, NamesStandAtTheirNumbers) {
  const struct {
    int number;
    std::string_view name;
  } cases[] = {{0, "Blues"},       {14, "R&B"},         {67, "Psychadelic"},
               {79, "Hard Rock"},  {85, "Bebob"},       {126, "Goa"},
               {133, "Negerpunk"}, {134, "Polsk Punk"}, {140, "Contemporary C"},
               {147, "SynthPop"},  {148, ""},           {256, ""}};
  for (const auto& [number, name] : cases) EXPECT_EQ(GenreName(number), name) << number;
  EXPECT_FALSE(GenreName(-1));
  EXPECT_FALSE(GenreName(257));
}

TEST(GenreNumberFromName, FindsEveryNameExactlyAndNothingElse) {
  for (int number = 0; number < kGenreCount; ++number) {
    EXPECT_EQ(GenreNumberFromName(*GenreName(number)), number);
  }
  for (const std::string_view name : {"", "rock", "Rock ", "My own"}) {
    EXPECT_EQ(GenreNumberFromName(name), 255) << name;
  }
}

}  // namespace
}  // namespace tunemeadow
