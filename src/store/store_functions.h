// SPDX-License-Identifier: GPL-3.0-or-later
// The functions that statements may call and SQLite does not have, or not as the commands mean
// them.
#pragma once

struct sqlite3;

namespace tunemeadow {

/// Registers on `store`:
/// - like(pattern, text): what `text like pattern` calls; blind to case in every script. Null where
///   either is null.
/// - tm_left(text, n), tm_right(text, n), tm_len(text): count characters; null for a null text. A
///   negative n is an error.
/// - tm_now(): the present moment as date-time text.
/// - tm_dateadd(interval, n, moment): n (halves to even) of "yyyy", "m", "d", "h", "n" (minutes) or
///   "s" added to a date-time text, by the calendar: the 31st plus a month is the month's last day.
///   Null where the moment is no date-time text; an error for another interval or a moment outside
///   the years 1 to 9999.
/// Returns SQLite's result code: 0 for success.
[[nodiscard]] int RegisterStoreFunctions(sqlite3* store) noexcept;

}  // namespace tunemeadow
