// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/window_state.h"

#include <algorithm>
#include <cmath>
#include <span>
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

constexpr double kHandleWidth = 1500;  ///< of a title bar, 100 pixels: enough to drag it by
constexpr double kHandleHeight = 300;

bool IsWithinReach(const WindowState& window, const ScreenArea& screen) {
  const double left = std::max(window.left, screen.left);
  const double right = std::min(window.left + window.width, screen.left + screen.width);
  return right - left >= std::min(kHandleWidth, window.width) && window.top >= screen.top &&
         window.top + kHandleHeight <= screen.top + screen.height;
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

WindowState BroughtIntoView(WindowState window, std::span<const ScreenArea> screens) {
  const auto within_reach = [&window](const ScreenArea& screen) {
    return IsWithinReach(window, screen);
  };
  if (screens.empty() || std::any_of(screens.begin(), screens.end(), within_reach)) return window;
  const ScreenArea& first = screens.front();
  window.width = std::min(window.width, first.width);
  window.height = std::min(window.height, first.height);
  const double right_most = first.left + first.width - window.width;
  const double lowest = first.top + first.height - window.height;
  window.left = std::clamp(window.left, first.left, right_most);
  window.top = std::clamp(window.top, first.top, lowest);
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
