// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers in texts, always with a point and without grouping, whatever the person's locale is.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tunemeadow {

/// `value` with a fixed number of decimals (0 and more), rounded in decimal; halves go away from
/// zero, as formats do: 1.005 with two decimals is "1.01". No "-0.00". Empty for what is not
/// finite.
[[nodiscard]] std::string FormatFixed(double value, int decimals);

/// The shortest decimal text that reads back as this number, without exponent: 44.1, 48, 22.05.
/// Empty for what is not finite.
[[nodiscard]] std::string FormatShortest(double value);

/// To the nearest whole number, halves to the even neighbour, as number conversions do. Beyond the
/// range of the result its end; 0 for what is no number.
[[nodiscard]] std::int64_t RoundHalfEven(double value) noexcept;

/// The number that the text is, blanks around it allowed; a point or a comma stands before the
/// decimals. nullopt if the text is anything else, or not finite.
[[nodiscard]] std::optional<double> ParseNumber(std::string_view text) noexcept;

/// The whole number that the text is, blanks around it allowed; nullopt if it is anything else.
[[nodiscard]] std::optional<std::int64_t> ParseWhole(std::string_view text) noexcept;

/// The number at the start of the text after blanks, 0 if there is none.
[[nodiscard]] double LeadingNumber(std::string_view text) noexcept;

}  // namespace tunemeadow
