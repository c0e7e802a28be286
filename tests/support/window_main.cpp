// SPDX-License-Identifier: GPL-3.0-or-later
// Test programs with windows: no screen, the program's own look, dialogs that a test can reach.
#include <gtest/gtest.h>

#include <QApplication>

#include "ui/kit/theme.h"

int main(int argc, char** argv) {
  // Set here and not by the test runner: the cases are listed while the program is built.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  tunemeadow::PrepareApplication();
  QApplication application(argc, argv);
  tunemeadow::ApplyTheme();
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
