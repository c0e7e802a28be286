// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/collation.h"

#include <gtest/gtest.h>
#include <unicode/ucol.h>
#include <unicode/utypes.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "core/text.h"

namespace tunemeadow {
namespace {

TEST(Collation, AccentsStandBesideTheirLettersAndMalformedBytesLast) {
  const std::vector<std::string> sorted = {
      "",          " x",      "_",    "-",       "'74",    "\"Heroes\"", "10",   "2",
      "ABBA",      "abba!",   "Anna", "Ännchen", "Ärzte",  "Arzteb",     "cote", "coté",
      "côte",      "Édith",   "Edu",  "Øre",     "Strase", "Straße",     "Zoe",  "Zoë",
      "Zo\u00EBs", "Ζορμπάς", "Анна", "йод",     "日本",   "\xFF z"};
  for (std::size_t i = 1; i < sorted.size(); ++i) {
    EXPECT_TRUE(CollatesBefore(sorted[i - 1], sorted[i])) << sorted[i - 1] << " < " << sorted[i];
  }
  EXPECT_EQ(CollationKey("ÉDITH Straße"), CollationKey("e\u0301dith straße"));
  EXPECT_EQ(CollationKey("a\x01"
                         "b"),
            CollationKey("AB"));
}

/// The collation's own comparison; -1, 0 or 1.
int Compare(const UCollator* root, const std::string& left, const std::string& right) {
  UErrorCode status = U_ZERO_ERROR;
  UCharIterator one;
  UCharIterator other;
  uiter_setUTF8(&one, left.data(), static_cast<std::int32_t>(left.size()));
  uiter_setUTF8(&other, right.data(), static_cast<std::int32_t>(right.size()));
  return ucol_strcollIter(root, &one, &other, &status);
}

TEST(Collation, KeysCompareAsTheCollationItselfDoes) {
  UErrorCode status = U_ZERO_ERROR;
  UCollator* const root = ucol_open("", &status);
  ucol_setStrength(root, UCOL_SECONDARY);
  ucol_setAttribute(root, UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
  std::mt19937 random(5);
  // Few letters, so that most texts differ late; any character below U+0500; marks and beyond.
  const auto character = [&random]() -> char32_t {
    const auto kind = random() % 20;
    if (kind < 12) return U"aAlLeEoO éÉäß·"[random() % 14];
    if (kind < 19) return static_cast<char32_t>(1 + random() % 0x4FF);
    return std::u32string(U"\u0301\u0308\u0306и日ｱ𝄞\u0E40\u0E01")[random() % 9];
  };
  const auto utf8 = [](const std::u32string& characters) {
    std::string text;
    for (const char32_t c : characters) AppendUtf8(text, c);
    return text;
  };
  for (int i = 0; i < 20000; ++i) {
    std::u32string characters;
    for (auto length = random() % 8; length > 0; --length) characters += character();
    const std::string left = utf8(characters);
    // One that differs in a character or two: most texts by chance differ in the first.
    for (auto changes = random() % 3; changes > 0 && !characters.empty(); --changes) {
      characters[random() % characters.size()] = character();
    }
    const std::string right = utf8(characters);
    const int told = CollationKey(left).compare(CollationKey(right));
    ASSERT_EQ((told > 0) - (told < 0), Compare(root, left, right)) << left << " | " << right;
  }
  ucol_close(root);
}

}  // namespace
}  // namespace tunemeadow
