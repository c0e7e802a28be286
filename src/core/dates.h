// SPDX-License-Identifier: GPL-3.0-or-later
// Moments as text: "YYYY-MM-DD hh:mm:ss" in local time, so that the order of the texts is the order
// of the moments. One pair of functions serves every date that the catalogue holds.
#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace tunemeadow {

/// Text of a moment, whole seconds, local time. "" where the calendar cannot hold it.
[[nodiscard]] std::string DateTimeText(std::time_t moment);

/// Text of the present moment.
[[nodiscard]] std::string Now();

/// Days of a month, 1 to 12, in the Gregorian calendar.
[[nodiscard]] int DaysOfMonth(int year, int month) noexcept;

/// The moment that a text names: "YYYY-MM-DD hh:mm[:ss]" or "DD.MM.YYYY hh:mm[:ss]", the time of
/// day left out or not, blanks around it. nullopt if it is anything else, also a day that the
/// month does not have.
[[nodiscard]] std::optional<std::time_t> ParseDateTime(std::string_view text);

}  // namespace tunemeadow
