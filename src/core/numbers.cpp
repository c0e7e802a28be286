// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/text.h"

namespace tunemeadow {
namespace {

template <typename Number>
std::optional<Number> ParseWholeText(std::string_view text) noexcept {
  // from_chars knows no plus sign; after one, a minus sign is no number.
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return std::nullopt;
  }
  Number number{};
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || text.empty()) return std::nullopt;
  return number;
}

/// Adds one to the last digit of a decimal number without sign.
void CountUp(std::string& digits) {
  for (std::size_t i = digits.size(); i-- > 0;) {
    if (digits[i] == '.') continue;
    if (digits[i]++ != '9') return;
    digits[i] = '0';
  }
  digits.insert(0, 1, '1');
}

}  // namespace

std::string FormatShortest(double value) {
  if (!std::isfinite(value)) return {};
  std::array<char, 400> digits{};
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
  return error == std::errc() ? std::string(digits.data(), end) : std::string();
}

std::string FormatFixed(double value, int decimals) {
  // Rounded in decimal, as a person would: 1.005 is a little less than that in a double.
  std::string text = FormatShortest(std::abs(value));
  if (text.empty()) return text;
  const auto wanted = static_cast<std::size_t>(decimals);
  std::size_t point = text.find('.');
  if (point == std::string::npos) {
    point = text.size();
    text += '.';
  }
  const std::size_t size = point + 1 + wanted;
  const bool up = text.size() > size && text[size] >= '5';
  text.resize(size, '0');
  if (up) CountUp(text);
  if (wanted == 0) text.pop_back();
  const bool is_zero = text.find_first_not_of("0.") == std::string::npos;
  return std::signbit(value) && !is_zero ? "-" + text : text;
}

std::int64_t RoundHalfEven(double value) noexcept {
  constexpr double kTwoTo63 = 9223372036854775808.0;
  if (std::isnan(value)) return 0;
  if (value >= kTwoTo63) return std::numeric_limits<std::int64_t>::max();
  if (value < -kTwoTo63) return std::numeric_limits<std::int64_t>::min();
  const double below = std::floor(value);
  const double rest = value - below;
  const auto whole = static_cast<std::int64_t>(below);
  if (rest > 0.5 || (rest == 0.5 && whole % 2 != 0)) return whole + 1;
  return whole;
}

std::optional<double> ParseNumber(std::string_view text) noexcept {
  text = Trim(text);
  std::array<char, 64> digits{};
  if (text.empty() || text.size() > digits.size()) return std::nullopt;
  bool has_digit = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    digits[i] = text[i] == ',' ? '.' : text[i];
    has_digit |= text[i] >= '0' && text[i] <= '9';
  }
  if (!has_digit) return std::nullopt;  // "inf" and "nan" are words here
  const auto number = ParseWholeText<double>(std::string_view(digits.data(), text.size()));
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<std::int64_t> ParseWhole(std::string_view text) noexcept {
  return ParseWholeText<std::int64_t>(Trim(text));
}

double LeadingNumber(std::string_view text) noexcept {
  text = TrimLeft(text);
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return 0;
  }
  const std::size_t first = text.find_first_not_of('-');
  if (first == std::string_view::npos || text[first] > '9') return 0;  // "inf" is a word here
  double number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && std::isfinite(number) ? number : 0;
}

}  // namespace tunemeadow
