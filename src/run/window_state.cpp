// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/window_state.h"

#include <cmath>
#include <string_view>

#include "core/numbers.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

/// Sizes beyond this are nonsense and would overflow on their way to pixels.
constexpr double kLargestTwips = 1e6;

double NumberOr(const std::string& text, double standard) {
  const auto number = ParseNumber(text);
  return number && std::abs(*number) < kLargestTwips ? *number : standard;
}

}  // namespace

std::string StoredValue(const StoredValues& values, std::string_view key) {
  for (const auto& [stored_key, value] : values) {
    if (EqualsNoCase(stored_key, key)) return value;
  }
  return {};
}

WindowState ReadWindowState(const StoredValues& values, double screen_width, double screen_height) {
  WindowState window;
  window.width = NumberOr(StoredValue(values, "Width"), screen_width * 0.9);
  window.height = NumberOr(StoredValue(values, "Height"), screen_height * 0.9);
  window.state = static_cast<int>(NumberOr(StoredValue(values, "WindowState"), kWindowNormal));
  if (window.state == kWindowMinimized) {
    window.state = kWindowNormal;
    window.width = 13890;
    window.height = 10410;
  }
  window.top = std::abs(NumberOr(StoredValue(values, "Top"), (screen_height - window.height) / 2));
  window.left = std::abs(NumberOr(StoredValue(values, "Left"), (screen_width - window.width) / 2));
  return window;
}

StoredValues WindowStateValues(const WindowState& window) {
  StoredValues values;
  if (window.state == kWindowNormal) {
    values = {{"Width", FormatShortest(window.width)},
              {"Height", FormatShortest(window.height)},
              {"Top", FormatShortest(window.top)},
              {"Left", FormatShortest(window.left)}};
  }
  values.emplace_back("WindowState", std::to_string(window.state));
  return values;
}

}  // namespace tunemeadow
