// SPDX-License-Identifier: GPL-3.0-or-later
// The small dialogs, and what all dialogs have in common.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTreeWidget>
#include <set>

#include "support/scripted_interaction.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"
#include "support/window_driver.h"
#include "ui/windows/editing/frmEditor.h"
#include "ui/windows/library/frmConfigureColumns.h"
#include "ui/windows/library/frmImport.h"
#include "ui/windows/library/frmLoading.h"
#include "ui/windows/library/frmPreferences.h"
#include "ui/windows/library/frmSplash.h"
#include "ui/windows/library/frmStartInfos.h"

namespace tunemeadow {
namespace {

class Dialogs : public testing::Test {
 protected:
  TempFolder folder_;
  Session session_{folder_.Path(), "Tunemeadow"};
  ScriptedInteraction person_;
  ScriptedWorld world_;
};

/// The mnemonics that a person can press while the window looks as it does.
std::vector<QString> VisibleMnemonics(const QWidget& window) {
  std::vector<QString> keys;
  const auto add = [&](const QString& caption) {
    const QKeySequence key = QKeySequence::mnemonic(caption);
    if (!key.isEmpty()) keys.push_back(key.toString());
  };
  for (const auto* button : window.findChildren<QAbstractButton*>()) {
    if (button->isVisible()) add(button->text());
  }
  for (const auto* label : window.findChildren<QLabel*>()) {
    if (label->isVisible() && label->buddy() != nullptr) add(label->text());
  }
  for (const auto* tabs : window.findChildren<QTabWidget*>()) {
    for (int page = 0; page < tabs->count(); ++page) add(tabs->tabText(page));
  }
  return keys;
}

void ExpectReachable(QWidget& window) {
  SCOPED_TRACE(window.objectName().toStdString());
  const std::vector<QString> keys = VisibleMnemonics(window);
  EXPECT_EQ(std::set<QString>(keys.begin(), keys.end()).size(), keys.size())
      << "two controls share a mnemonic";
  for (const auto* label : window.findChildren<QLabel*>()) {
    EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->objectName().toStdString();
  }
  for (auto* control : window.findChildren<QWidget*>()) {
    const bool input = qobject_cast<QLineEdit*>(control) != nullptr ||
                       qobject_cast<QAbstractButton*>(control) != nullptr ||
                       qobject_cast<QComboBox*>(control) != nullptr ||
                       qobject_cast<QTreeWidget*>(control) != nullptr ||
                       qobject_cast<QPlainTextEdit*>(control) != nullptr;
    if (!input || control->objectName().isEmpty() || control->objectName().startsWith("qt_")) {
      continue;
    }
    SCOPED_TRACE(control->objectName().toStdString());
    EXPECT_NE(control->focusPolicy() & Qt::TabFocus, 0);
    const auto* reader = QAccessible::queryAccessibleInterface(control);
    ASSERT_NE(reader, nullptr);
    EXPECT_FALSE(reader->text(QAccessible::Name).isEmpty());
  }
}

TEST_F(Dialogs, EveryControlHasAMnemonicOfItsOwnAndANameForAScreenReader) {
  frmPreferences preferences(session_, person_, world_);
  preferences.show();
  auto& tabs = Find<QTabWidget>(preferences, "TabStrip1");
  for (int page = 0; page < tabs.count(); ++page) {
    tabs.setCurrentIndex(page);
    ExpectReachable(preferences);
  }
  frmImport import(session_, person_, world_);
  frmStartInfos welcome(session_);
  frmConfigureColumns columns(session_, world_, person_, StandardColumnLayout());
  frmEditor editor;
  frmLoading loading(session_);
  for (QWidget* window :
       std::initializer_list<QWidget*>{&import, &welcome, &columns, &editor, &loading}) {
    window->show();
    ExpectReachable(*window);
  }
}

TEST_F(Dialogs, TabGoesThroughThePagesAndThenToTheButtons) {
  const frmPreferences window(session_, person_, world_);
  std::vector<std::string> order;
  const QWidget* last = &window;
  for (const QWidget* next = window.nextInFocusChain(); next != &window;
       next = next->nextInFocusChain()) {
    const bool named = next->focusPolicy() != Qt::NoFocus && !next->objectName().startsWith("qt_");
    if (named && !next->objectName().isEmpty()) order.push_back(next->objectName().toStdString());
    last = next;
  }
  EXPECT_EQ(last->window(), &window);
  EXPECT_EQ(order.front(), "TabStrip1");
  EXPECT_THAT(std::vector(order.end() - 3, order.end()),
              testing::ElementsAre("cdmOK", "cmdCancel", "cmdHelp"));
  const auto at = [&](const char* name) { return std::find(order.begin(), order.end(), name); };
  EXPECT_LT(at("txtPattern"), at("chkRekursiv"));
  EXPECT_LT(at("chkWarnGlobal"), at("lblScan"));
  EXPECT_LT(at("Label16"), at("cdmOK"));
}

TEST_F(Dialogs, TheWelcomeShowsWhatWasDetectedAndOkEndsTheFirstRun) {
  session_.preferences.lblConfigWinamp = "/usr/bin/qmmp";
  frmStartInfos window(session_);
  EXPECT_EQ(window.windowTitle(), "Welcome!");
  const auto& tree = Find<QTreeWidget>(window, "TreeView1");
  EXPECT_EQ(tree.headerItem()->text(0), "Detected configuration:");
  EXPECT_EQ(tree.topLevelItem(0)->text(0), "Primary MP3 Player");
  EXPECT_EQ(tree.topLevelItem(0)->child(0)->text(0), "/usr/bin/qmmp");
  EXPECT_EQ(tree.topLevelItem(1)->text(0), "CDROM");
  const auto& warning = Find<QLabel>(window, "lblAutoComment");
  EXPECT_FALSE(warning.isHidden());
  EXPECT_TRUE(warning.text().contains("\"https://tunemeadow.example/\""));
  QObject::connect(&window, &frmStartInfos::PreferencesRequested, [&] {
    session_.preferences.lblConfigWinamp = "/usr/bin/audacious";
    session_.preferences.chkAutoComment = false;
  });
  Press(window, "cmdGoPref");
  EXPECT_EQ(tree.topLevelItem(0)->child(0)->text(0), "/usr/bin/audacious");
  EXPECT_TRUE(warning.isHidden());
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_EQ(session_.ini.GetString(kConfigSection, "firstrun", "", 0), "");
  Press(window, "cmdOK");
  EXPECT_EQ(session_.ini.GetString(kConfigSection, "firstrun", "", 0), "1");
  EXPECT_EQ(session_.ini.GetString(kConfigSection, "lblConfigWinamp", "", 0), "/usr/bin/audacious");
}

TEST_F(Dialogs, TheEditorOpensOverItsWindowAndGivesTheTextBackOnOkOnly) {
  QWidget main;
  main.setGeometry(40, 60, 700, 500);
  main.show();
  const auto run = [&](const char* button) {
    frmEditor editor(&main);
    const WhenModal<frmEditor> person([&](frmEditor& window) {
      EXPECT_EQ(window.geometry(), main.geometry());
      EXPECT_EQ(window.windowTitle(), "Bios");
      auto& field = Find<QPlainTextEdit>(window, "txtEditor");
      EXPECT_EQ(field.toPlainText(), "<b>one</b>");
      field.moveCursor(QTextCursor::End);
      QTest::keyClicks(&field, " two");
      Press(window, button);
    });
    return editor.EditText("Bios", "<b>one</b>");
  };
  EXPECT_EQ(run("cmdOK"), "<b>one</b> two");
  EXPECT_EQ(run("cmdCancel"), std::nullopt);
  frmEditor reader(&main);
  const WhenModal<frmEditor> person([](frmEditor& window) {
    EXPECT_TRUE(Find<QPlainTextEdit>(window, "txtEditor").isReadOnly());
    EXPECT_FALSE(Find<QAbstractButton>(window, "cmdOK").isVisible());
    Press(window, "cmdCancel");
  });
  reader.ShowText("Lyrics", "la");
}

TEST_F(Dialogs, ColumnsAreHiddenAndShownAlsoWhenTheListIsSorted) {
  ColumnLayout layout = StandardColumnLayout();
  layout[4].width = 0;  // Quality
  frmConfigureColumns window(session_, world_, person_, layout);
  auto& list = Find<QTreeWidget>(window, "ListView1");
  ASSERT_EQ(list.topLevelItemCount(), 30);
  EXPECT_EQ(list.topLevelItem(0)->text(0), "UID");
  EXPECT_EQ(list.topLevelItem(4)->checkState(0), Qt::Unchecked);
  window.show();
  QTest::mouseClick(list.header()->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 5));
  EXPECT_EQ(list.topLevelItem(0)->text(0), "Album");
  const auto check = [&](const char* header, Qt::CheckState state) {
    list.findItems(header, Qt::MatchExactly).constFirst()->setCheckState(0, state);
  };
  EXPECT_EQ(Find<QAbstractButton>(window, "cmdCheck").text(), "Uncheck &all");
  Press(window, "cmdCheck");
  EXPECT_EQ(Find<QAbstractButton>(window, "cmdCheck").text(), "Check &all");
  check("Quality", Qt::Checked);
  check("has ID3v1?", Qt::Checked);
  EXPECT_EQ(window.Layout(), layout);
  folder_.Write("help/configurecolumns.html");
  Press(window, "cmdHelp");
  EXPECT_EQ(world_.log.size(), 1U);
  world_.opens = false;
  person_.WillAnswer(Answer::kOk);
  Press(window, "cmdHelp");
  EXPECT_THAT(person_.BoxTexts().back(), testing::EndsWith("/help/configurecolumns.html"));
  Press(window, "cmdOK");
  EXPECT_EQ(window.result(), QDialog::Accepted);
  for (std::size_t column = 0; column < kListColumns; ++column) {
    EXPECT_EQ(window.Layout()[column].width > 0, column == 4 || column == 27) << column;
  }
}

TEST_F(Dialogs, ColumnsThatAreAllHiddenCanBeCheckedAgain) {
  ColumnLayout layout = StandardColumnLayout();
  for (ColumnPlace& place : layout) place.width = 0;
  frmConfigureColumns window(session_, world_, person_, layout);
  EXPECT_EQ(Find<QAbstractButton>(window, "cmdCheck").text(), "Check &all");
  Press(window, "cmdCheck");
  Press(window, "cmdOK");
  EXPECT_EQ(window.Layout(), StandardColumnLayout());
}

TEST_F(Dialogs, TheSplashHasAPictureAndNoBorder) {
  frmSplash splash;
  splash.show();
  EXPECT_TRUE(splash.isVisible());
  EXPECT_EQ(splash.windowTitle(), "Loading...");
  EXPECT_FALSE(Find<QLabel>(splash, "Image1").pixmap().isNull());
  EXPECT_TRUE(splash.windowFlags().testFlag(Qt::FramelessWindowHint));
}

}  // namespace
}  // namespace tunemeadow
