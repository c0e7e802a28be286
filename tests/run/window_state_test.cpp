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

TEST(BroughtIntoView, AWindowThatNobodyCouldReachMovesIntoTheFirstScreen) {
  const ScreenArea screens[] = {{0, 600, kScreenWidth, kScreenHeight - 600},
                                {kScreenWidth, 0, 9600, 6000}};
  const struct {
    double width, height, top, left;
    double new_width, new_height, new_top, new_left;
  } cases[] = {
      {9000, 6000, 900, 900, 9000, 6000, 900, 900},
      {9000, 6000, 5000, 25000, 9000, 6000, 5000, 25000},         // on the second screen
      {9000, 6000, 900, 17700, 9000, 6000, 900, 17700},           // its left end shows
      {9000, 6000, 6100, 18000, 9000, 6000, 6000, 10200},         // too little of it
      {9000, 6000, 5800, 25000, 9000, 6000, 5800, 10200},         // below the second one
      {9000, 6000, 11900, 900, 9000, 6000, 6000, 900},            // below the first
      {9000, 6000, 300, 900, 9000, 6000, 600, 900},               // its title under a panel
      {99000, 99000, 30000, 90000, kScreenWidth, 11400, 600, 0},  // larger than the screen
      {900, 900, 900, 40000, 900, 900, 900, kScreenWidth - 900},
  };
  for (const auto& c : cases) {
    const WindowState window = BroughtIntoView(
        {.width = c.width, .height = c.height, .top = c.top, .left = c.left}, screens);
    EXPECT_EQ(window.width, c.new_width) << c.left;
    EXPECT_EQ(window.height, c.new_height) << c.left;
    EXPECT_EQ(window.top, c.new_top) << c.left;
    EXPECT_EQ(window.left, c.new_left) << c.left;
  }
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
