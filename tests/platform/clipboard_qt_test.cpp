// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/clipboard_qt.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>

namespace tunemeadow {
namespace {

TEST(QtClipboard, HoldsTheLastTextForOtherPrograms) {
  QtClipboard().SetText("before");
  QtClipboard().SetText("Bj\xC3\xB6rk\t1\n");
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "Bj\xC3\xB6rk\t1\n");
}

}  // namespace
}  // namespace tunemeadow
