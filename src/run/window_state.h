// SPDX-License-Identifier: GPL-3.0-or-later
// Place and state of the main window as the settings keep them, in twips (1/1440 inch).
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tunemeadow {

inline constexpr int kWindowNormal = 0;
inline constexpr int kWindowMinimized = 1;
inline constexpr int kWindowMaximized = 2;

struct WindowState {
  double width = 0;
  double height = 0;
  double top = 0;
  double left = 0;
  int state = kWindowNormal;
};

using StoredValues = std::vector<std::pair<std::string, std::string>>;

/// The value of a key among the values of a section, matched without regard to case; empty if none.
[[nodiscard]] std::string StoredValue(const StoredValues& values, std::string_view key);

/// The window of the stored values. What is missing or no number comes from the screen, whose size
/// is given in twips: a tenth less than the screen, centred. Top and left lose their sign. A stored
/// minimised window comes up normal, 13890 by 10410.
[[nodiscard]] WindowState ReadWindowState(const StoredValues& values, double screen_width,
                                          double screen_height);

/// A screen, or what of it windows may take, in twips.
struct ScreenArea {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
};

/// The window where a person can reach it: as it is where enough of its upper edge lies on one of
/// the screens to be taken hold of; otherwise moved into the first of them, no larger than that.
[[nodiscard]] WindowState BroughtIntoView(WindowState window, std::span<const ScreenArea> screens);

/// The keys to store: WindowState always, size and place only of a normal window.
[[nodiscard]] StoredValues WindowStateValues(const WindowState& window);

}  // namespace tunemeadow
