// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/dates.h"

#include <algorithm>
#include <charconv>

#include "core/text.h"

namespace tunemeadow {
namespace {

/// Takes a number of at most `digits` digits off the front of `text`; -1 if there is none.
int TakeNumber(std::string_view& text, std::size_t digits) noexcept {
  const std::size_t length = std::min(text.find_first_not_of("0123456789"), text.size());
  if (length == 0 || length > digits) return -1;
  int number = 0;
  std::from_chars(text.data(), text.data() + length, number);
  text.remove_prefix(length);
  return number;
}

/// A year has four digits: "26" may be any of several.
int TakeYear(std::string_view& text) noexcept {
  const std::size_t before = text.size();
  const int year = TakeNumber(text, 4);
  return before - text.size() == 4 ? year : -1;
}

bool Take(std::string_view& text, char expected) noexcept {
  if (text.empty() || text.front() != expected) return false;
  text.remove_prefix(1);
  return true;
}

bool TakeDate(std::string_view& text, std::tm& moment) noexcept {
  const bool year_first = text.find('-') == 4;
  const char separator = year_first ? '-' : '.';
  const int first = year_first ? TakeYear(text) : TakeNumber(text, 2);
  if (!Take(text, separator)) return false;
  const int month = TakeNumber(text, 2);
  if (month < 1 || month > 12 || !Take(text, separator)) return false;
  const int last = year_first ? TakeNumber(text, 2) : TakeYear(text);
  const int year = year_first ? first : last;
  const int day = year_first ? last : first;
  if (year < 1 || day < 1 || day > DaysOfMonth(year, month)) return false;
  moment.tm_year = year - 1900;
  moment.tm_mon = month - 1;
  moment.tm_mday = day;
  return true;
}

bool TakeTime(std::string_view& text, std::tm& moment) noexcept {
  moment.tm_hour = TakeNumber(text, 2);
  if (moment.tm_hour < 0 || moment.tm_hour > 23 || !Take(text, ':')) return false;
  moment.tm_min = TakeNumber(text, 2);
  if (moment.tm_min < 0 || moment.tm_min > 59) return false;
  if (!Take(text, ':')) return true;
  moment.tm_sec = TakeNumber(text, 2);
  return moment.tm_sec >= 0 && moment.tm_sec <= 59;
}

/// Seconds that local time is ahead of UTC at a moment.
std::time_t AheadOfUtc(std::time_t moment) noexcept {
  std::tm local{};
  return localtime_r(&moment, &local) == nullptr ? 0 : local.tm_gmtoff;
}

/// The moment of a local time; one of the two that it may mean where clocks are put forward over it
/// or back. mktime would do, but looks at the zone file at each call.
std::time_t MomentOf(std::tm local) noexcept {
  const std::time_t as_utc = timegm(&local);
  const std::time_t first_guess = as_utc - AheadOfUtc(as_utc);
  return as_utc - AheadOfUtc(first_guess);
}

void PutDigits(char* at, int number, int digits) noexcept {
  for (; digits > 0; --digits, number /= 10) at[digits - 1] = static_cast<char>('0' + number % 10);
}

}  // namespace

std::string DateTimeText(std::time_t moment) {
  std::tm local{};
  if (localtime_r(&moment, &local) == nullptr || local.tm_year < -1899 || local.tm_year > 8099) {
    return {};
  }
  std::string text = "0000-00-00 00:00:00";
  PutDigits(text.data(), local.tm_year + 1900, 4);
  PutDigits(text.data() + 5, local.tm_mon + 1, 2);
  PutDigits(text.data() + 8, local.tm_mday, 2);
  PutDigits(text.data() + 11, local.tm_hour, 2);
  PutDigits(text.data() + 14, local.tm_min, 2);
  PutDigits(text.data() + 17, local.tm_sec, 2);
  return text;
}

std::string Now() { return DateTimeText(std::time(nullptr)); }

int DaysOfMonth(int year, int month) noexcept {
  const bool is_leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  if (month == 2) return is_leap ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

std::optional<std::time_t> ParseDateTime(std::string_view text) {
  std::tm moment{};
  text = Trim(text);
  if (!TakeDate(text, moment)) return std::nullopt;
  if (!text.empty() && !(Take(text, ' ') && TakeTime(text, moment) && text.empty())) {
    return std::nullopt;
  }
  return MomentOf(moment);
}

}  // namespace tunemeadow
