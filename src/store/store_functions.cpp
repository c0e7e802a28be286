// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/store_functions.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/dates.h"
#include "core/numbers.h"
#include "core/text.h"
#include "store/like_pattern.h"

namespace tunemeadow {
namespace {

/// Text of an argument; it lives until the function returns. Null: no view.
std::optional<std::string_view> TextArgument(sqlite3_value* value) noexcept {
  const unsigned char* const text = sqlite3_value_text(value);
  if (text == nullptr) return std::nullopt;
  return std::string_view(reinterpret_cast<const char*>(text),
                          static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

void ReturnText(sqlite3_context* context, std::string_view text) noexcept {
  sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void ReturnError(sqlite3_context* context, const char* why) noexcept {
  sqlite3_result_error(context, why, -1);
}

void DeletePattern(void* pattern) noexcept { delete static_cast<LikePattern*>(pattern); }

/// The prepared pattern of this statement; made at its first row.
LikePattern* PreparedPattern(sqlite3_context* context, std::string_view pattern) {
  if (void* const kept = sqlite3_get_auxdata(context, 0)) return static_cast<LikePattern*>(kept);
  auto prepared = std::make_unique<LikePattern>(pattern);
  sqlite3_set_auxdata(context, 0, prepared.release(), DeletePattern);
  return static_cast<LikePattern*>(sqlite3_get_auxdata(context, 0));
}

void LikeFunction(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) noexcept {
  const auto text = TextArgument(arguments[1]);
  const auto pattern = TextArgument(arguments[0]);
  if (!text || !pattern) return sqlite3_result_null(context);
  try {
    LikePattern* const prepared = PreparedPattern(context, *pattern);
    // Without a kept pattern (memory, or one that changes from row to row) each row makes its own.
    const bool matches =
        prepared != nullptr ? prepared->Matches(*text) : LikePattern(*pattern).Matches(*text);
    sqlite3_result_int(context, matches ? 1 : 0);
  } catch (const std::exception&) {
    sqlite3_result_error_nomem(context);
  }
}

/// Shared by tm_left and tm_right.
void CutText(sqlite3_context* context, sqlite3_value** arguments,
             std::string_view (*cut)(std::string_view, std::size_t) noexcept) noexcept {
  const auto text = TextArgument(arguments[0]);
  if (!text || sqlite3_value_type(arguments[1]) == SQLITE_NULL) return sqlite3_result_null(context);
  const sqlite3_int64 count = sqlite3_value_int64(arguments[1]);
  if (count < 0) return ReturnError(context, "A text cannot be cut to less than no characters.");
  ReturnText(context, cut(*text, static_cast<std::size_t>(count)));
}

void LeftFunction(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) noexcept {
  CutText(context, arguments, Left);
}

void RightFunction(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) noexcept {
  CutText(context, arguments, Right);
}

void LenFunction(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) noexcept {
  const auto text = TextArgument(arguments[0]);
  if (!text) return sqlite3_result_null(context);
  sqlite3_result_int64(context, static_cast<sqlite3_int64>(Length(*text)));
}

void NowFunction(sqlite3_context* context, int /*count*/, sqlite3_value** /*none*/) noexcept {
  try {
    ReturnText(context, Now());
  } catch (const std::exception&) {
    sqlite3_result_error_nomem(context);
  }
}

/// Adds whole months; a day that the month does not have becomes its last one.
void AddMonths(std::tm& moment, int months) noexcept {
  const int total = moment.tm_year * 12 + moment.tm_mon + months;
  moment.tm_year = total >= 0 ? total / 12 : -((11 - total) / 12);
  moment.tm_mon = total - moment.tm_year * 12;
  moment.tm_mday = std::min(moment.tm_mday, DaysOfMonth(moment.tm_year + 1900, moment.tm_mon + 1));
}

/// nullopt for an interval that there is none of.
std::optional<std::time_t> AddInterval(std::time_t moment, std::string_view interval,
                                       std::int64_t count) {
  if (EqualsNoCase(interval, "S")) return moment + count;
  if (EqualsNoCase(interval, "N")) return moment + 60 * count;
  if (EqualsNoCase(interval, "H")) return moment + 3600 * count;
  // As many days lead out of the calendar from any day in it.
  constexpr std::int64_t kMostDays = 4'000'000;
  const int steps = static_cast<int>(std::clamp(count, -kMostDays, kMostDays));
  std::tm calendar{};
  localtime_r(&moment, &calendar);
  if (EqualsNoCase(interval, "D")) {
    calendar.tm_mday += steps;
  } else if (EqualsNoCase(interval, "M")) {
    AddMonths(calendar, steps);
  } else if (EqualsNoCase(interval, "YYYY")) {
    AddMonths(calendar, 12 * steps);
  } else {
    return std::nullopt;
  }
  calendar.tm_isdst = -1;  // the same time of day, whatever the season
  return std::mktime(&calendar);
}

void ReturnMovedDate(sqlite3_context* context, std::string_view interval, double number,
                     std::time_t moment) {
  // More seconds than the years 1 to 9999 have, and as hours still far from any overflow.
  constexpr double kMost = 400'000'000'000;
  if (!(std::abs(number) < kMost)) return ReturnError(context, "dateadd: the number is too large.");
  const auto moved = AddInterval(moment, interval, RoundHalfEven(number));
  if (!moved) return ReturnError(context, "dateadd: there is no such interval.");
  const std::string text = DateTimeText(*moved);
  if (text.empty()) return ReturnError(context, "dateadd: the moment lies outside the calendar.");
  ReturnText(context, text);
}

void DateAddFunction(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) noexcept {
  const auto interval = TextArgument(arguments[0]);
  const auto moment = TextArgument(arguments[2]);
  if (!interval || !moment || sqlite3_value_type(arguments[1]) == SQLITE_NULL) {
    return sqlite3_result_null(context);
  }
  try {
    const auto parsed = ParseDateTime(*moment);
    if (!parsed) return sqlite3_result_null(context);
    ReturnMovedDate(context, *interval, sqlite3_value_double(arguments[1]), *parsed);
  } catch (const std::exception&) {
    sqlite3_result_error_nomem(context);
  }
}

struct StoreFunction {
  const char* name;
  int arguments;
  int flags;
  void (*call)(sqlite3_context*, int, sqlite3_value**) noexcept;
};

// The moment and the time zone count as constant while one statement runs.
constexpr int kPure = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;

constexpr std::array kStoreFunctions{
    StoreFunction{"like", 2, kPure, LikeFunction},
    StoreFunction{"tm_left", 2, kPure, LeftFunction},
    StoreFunction{"tm_right", 2, kPure, RightFunction},
    StoreFunction{"tm_len", 1, kPure, LenFunction},
    StoreFunction{"tm_now", 0, kPure, NowFunction},
    StoreFunction{"tm_dateadd", 3, kPure, DateAddFunction},
};

}  // namespace

int RegisterStoreFunctions(sqlite3* store) noexcept {
  for (const StoreFunction& function : kStoreFunctions) {
    const int result =
        sqlite3_create_function_v2(store, function.name, function.arguments, function.flags,
                                   nullptr, function.call, nullptr, nullptr, nullptr);
    if (result != SQLITE_OK) return result;
  }
  return SQLITE_OK;
}

}  // namespace tunemeadow
