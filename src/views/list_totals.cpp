// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "core/numbers.h"
#include "core/text.h"
#include "views/quick_search.h"

namespace tunemeadow {
namespace {

/// Sums stay where a double holds every whole number; what a broken cell adds beyond is left out.
constexpr double kSumLimit = 9e15;

void AddRounded(std::int64_t& sum, double value) noexcept {
  const double total = static_cast<double>(sum) + value;
  if (std::abs(total) < kSumLimit) sum = RoundHalfEven(total);
}

double ReadOrZero(std::string_view text) noexcept { return ParseNumber(text).value_or(0); }

/// The number of a size cell: what is left of it without "MB" and blanks.
double Megabytes(std::string_view filesize) {
  if (filesize.ends_with(" MB")) {  // as the import writes it
    const std::string_view number = filesize.substr(0, filesize.size() - 3);
    if (const auto plain = ParseNumber(number)) return *plain;
  }
  return ReadOrZero(ReplaceEach(ReplaceEach(filesize, "MB", ""), " ", ""));
}

}  // namespace

void ListTotals::Add(std::string_view playtime, std::string_view filesize) {
  const std::size_t colon = playtime.find(':');
  if (colon != std::string_view::npos) {
    AddRounded(seconds,
               ReadOrZero(playtime.substr(0, colon)) * 60 + ReadOrZero(playtime.substr(colon + 1)));
  }
  if (!filesize.empty()) AddRounded(megabytes, Megabytes(filesize));
}

std::string TotalTimeText(std::int64_t seconds) {
  struct Unit {
    std::int64_t seconds;
    std::string_view word;
  };
  constexpr std::array kUnits = {Unit{86400, " days, "}, Unit{3600, "hh:"}, Unit{60, "min;"},
                                 Unit{1, "sec"}};
  std::string text;
  for (const Unit& unit : kUnits) {
    const std::int64_t count = seconds / unit.seconds;
    seconds %= unit.seconds;
    if (count != 0) text.append(std::to_string(count)).append(unit.word);
  }
  return text;
}

std::string TotalSizeText(std::int64_t megabytes) {
  if (megabytes > 1024) return FormatFixed(static_cast<double>(megabytes) / 1024, 2) + " GB";
  return std::to_string(megabytes) + " MB";
}

}  // namespace tunemeadow
