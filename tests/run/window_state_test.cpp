// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/window_state.h"

#include <gtest/gtest.h>

namespace tunemeadow {
namespace {

constexpr double kScreenWidth = 19200;
constexpr double kScreenHeight = 12000;

TEST(ReadWindowState, WithoutStoredValuesTakesTheScreenLessATenthCentred) {
  const WindowState window = ReadWindowState({}, kScreenWidth, kScreenHeight);
  EXPECT_EQ(window.width, 17280);
  EXPECT_EQ(window.height, 10800);
  EXPECT_EQ(window.left, 960);
  EXPECT_EQ(window.top, 600);
  EXPECT_EQ(window.state, kWindowNormal);
}

TEST(ReadWindowState, AMinimisedWindowComesUpNormalAndSmall) {
  const WindowState window = ReadWindowState(
      {{"WindowState", "1"}, {"Width", "3000"}, {"Height", "2000"}}, kScreenWidth, kScreenHeight);
  EXPECT_EQ(window.state, kWindowNormal);
  EXPECT_EQ(window.width, 13890);
  EXPECT_EQ(window.height, 10410);
}

TEST(ReadWindowState, PlaceLosesItsSignAndNonsenseFallsBackToTheScreen) {
  const WindowState window =
      ReadWindowState({{"LEFT", "-150"}, {"Top", "-45,5"}, {"Width", "wide"}, {"Height", "1e300"}},
                      kScreenWidth, kScreenHeight);
  EXPECT_EQ(window.left, 150);
  EXPECT_EQ(window.top, 45.5);
  EXPECT_EQ(window.width, 17280);
  EXPECT_EQ(window.height, 10800);
}

TEST(WindowStateValues, AMaximisedWindowKeepsTheStoredPlace) {
  WindowState window{.width = 100, .height = 200, .top = 3.5, .left = 4, .state = kWindowNormal};
  const StoredValues normal = WindowStateValues(window);
  EXPECT_EQ(StoredValue(normal, "top"), "3.5");
  EXPECT_EQ(StoredValue(normal, "WindowState"), "0");
  window.state = kWindowMaximized;
  const StoredValues maximized = WindowStateValues(window);
  EXPECT_EQ(maximized.size(), 1u);
  EXPECT_EQ(StoredValue(maximized, "WindowState"), "2");
}

}  // namespace
}  // namespace tunemeadow
