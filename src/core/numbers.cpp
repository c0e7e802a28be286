// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/numbers.h"

#include <array>
#include <charconv>
#include <cmath>

#include "core/text.h"

namespace tunemeadow {
namespace {

template <typename Number>
std::optional<Number> ParseWholeText(std::string_view text) noexcept {
  Number number{};
  const char* end = text.data() + text.size();
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || text.empty()) return std::nullopt;
  return number;
}

}  // namespace

std::string FormatFixed(double value, int decimals) {
  const double scale = std::pow(10.0, decimals);
  const double scaled = std::round(value * scale);
  // Beyond 2^53 a double holds no decimals that could be rounded.
  const double rounded = std::abs(scaled) < 9007199254740992.0 ? scaled / scale : value;
  std::array<char, 400> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), rounded,
                                          std::chars_format::fixed, decimals);
  return error == std::errc() ? std::string(digits.data(), end) : std::string();
}

std::string FormatShortest(double value) {
  std::array<char, 400> digits{};
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
  return error == std::errc() ? std::string(digits.data(), end) : std::string();
}

std::int64_t RoundHalfEven(double value) noexcept {
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
  double number = 0;
  const auto first = text.find_first_not_of("+-");
  if (first == std::string_view::npos || text[first] > '9') return 0;  // "inf" is a word here
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && std::isfinite(number) ? number : 0;
}

}  // namespace tunemeadow
