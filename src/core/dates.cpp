// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/dates.h"

#include <sys/stat.h>

#include <array>
#include <charconv>

#include "core/text.h"

namespace tunemeadow {
namespace {

/// Takes a number of 1 to 4 digits off the front of `text`; -1 where there is none.
int TakeNumber(std::string_view& text) noexcept {
  int number = -1;
  const std::string_view digits = text.substr(0, text.find_first_not_of("0123456789"));
  if (digits.empty() || digits.size() > 4) return -1;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  text.remove_prefix(digits.size());
  return number;
}

bool Take(std::string_view& text, char expected) noexcept {
  if (text.empty() || text.front() != expected) return false;
  text.remove_prefix(1);
  return true;
}

bool TakeDate(std::string_view& text, std::tm& moment) noexcept {
  const int first = TakeNumber(text);
  const char separator = text.empty() ? '\0' : text.front();
  if (first < 0 || (separator != '-' && separator != '.')) return false;
  text.remove_prefix(1);
  const int month = TakeNumber(text);
  if (month < 1 || month > 12 || !Take(text, separator)) return false;
  const int last = TakeNumber(text);
  const int year = separator == '-' ? first : last;
  const int day = separator == '-' ? last : first;
  if (year < 1 || day < 1 || day > 31) return false;
  moment.tm_year = year - 1900;
  moment.tm_mon = month - 1;
  moment.tm_mday = day;
  return true;
}

bool TakeTime(std::string_view& text, std::tm& moment) noexcept {
  moment.tm_hour = TakeNumber(text);
  if (moment.tm_hour < 0 || moment.tm_hour > 23 || !Take(text, ':')) return false;
  moment.tm_min = TakeNumber(text);
  if (moment.tm_min < 0 || moment.tm_min > 59) return false;
  if (!Take(text, ':')) return true;
  moment.tm_sec = TakeNumber(text);
  return moment.tm_sec >= 0 && moment.tm_sec <= 59;
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

std::string FileTimeText(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? DateTimeText(status.st_mtime) : std::string();
}

std::optional<std::time_t> ParseDateTime(std::string_view text) {
  std::tm moment{};
  moment.tm_isdst = -1;
  text = Trim(text);
  if (!TakeDate(text, moment)) return std::nullopt;
  if (!text.empty() && !(Take(text, ' ') && TakeTime(text, moment) && text.empty())) {
    return std::nullopt;
  }
  const int day = moment.tm_mday;
  const std::time_t result = std::mktime(&moment);
  // mktime turns 31 February into 3 March without a word.
  return moment.tm_mday == day ? std::optional(result) : std::nullopt;
}

}  // namespace tunemeadow
