// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/window_interaction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QProgressBar>
#include <QVBoxLayout>
#include <filesystem>

#include "run/batch.h"
#include "support/temp_folder.h"
#include "support/window_driver.h"
#include "ui/windows/library/frmLoading.h"

namespace tunemeadow {
namespace {

/// A session and a main window with the parts that an interaction shows things in.
class WindowInteractionTest : public testing::Test {
 public:
  ~WindowInteractionTest() override {
    for (QWidget* part : std::initializer_list<QWidget*>{&field_, &status_, &progress_}) {
      part->setParent(nullptr);
    }
  }

 protected:
  WindowInteractionTest() {
    auto* centre = new QWidget;
    auto* rows = new QVBoxLayout(centre);
    for (QWidget* part : std::initializer_list<QWidget*>{&field_, &status_, &progress_}) {
      rows->addWidget(part);
    }
    main_.setCentralWidget(centre);
    main_.resize(800, 200);
    interaction_.SetMainWindow({&main_, &status_, &progress_});
    main_.show();
  }
  /// A click as the window system delivers it, which a modal window elsewhere swallows.
  static void ClickThroughTheSystem(const QWidget& button) {
    const QPoint where = button.mapTo(button.window(), button.rect().center());
    QTest::mouseClick(button.window()->windowHandle(), Qt::LeftButton, Qt::NoModifier, where);
  }

  TempFolder folder_;
  Session session_{folder_.Path(), "Tunemeadow"};
  QMainWindow main_;
  QLineEdit field_;
  QLabel status_;
  QProgressBar progress_;
  WindowInteraction interaction_{session_};
};

TEST_F(WindowInteractionTest, ABoxCarriesItsTextAsItStandsAndKnowsEnterAndEscape) {
  using enum Answer;
  struct Case {
    Buttons buttons;
    Icon icon;
    QMessageBox::Icon shown_icon;
    const char* captions;
    Answer enter, escape;
  };
  const Case cases[] = {
      {Buttons::kOk, Icon::kNone, QMessageBox::NoIcon, "&OK", kOk, kOk},
      {Buttons::kOkCancel, Icon::kQuestion, QMessageBox::Question, "&Cancel &OK", kOk, kCancel},
      {Buttons::kYesNo, Icon::kExclamation, QMessageBox::Warning, "&No &Yes", kYes, kNo},
      {Buttons::kAbortRetryIgnore, Icon::kCritical, QMessageBox::Critical, "&Abort &Ignore &Retry",
       kRetry, kAbort}};
  for (const Case& expected : cases) {
    for (const auto& [key, answer] :
         {std::pair(Qt::Key_Return, expected.enter), std::pair(Qt::Key_Escape, expected.escape)}) {
      const WhenModal<QMessageBox> person([&, pressed = key](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "R&B");
        EXPECT_EQ(box.text(), "<b>Simon & Garfunkel</b>\n\nagain");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.icon(), expected.shown_icon);
        QStringList captions;
        for (const QAbstractButton* button : box.buttons()) captions << button->text();
        captions.sort();
        EXPECT_EQ(captions.join(" "), expected.captions);
        QTest::keyClick(&box, pressed);
      });
      EXPECT_EQ(interaction_.ShowMessage({.text = "<b>Simon & Garfunkel</b>\n\nagain",
                                          .title = "R&B",
                                          .icon = expected.icon,
                                          .buttons = expected.buttons}),
                answer);
    }
  }
}

TEST_F(WindowInteractionTest, ATextTooLongForTheScreenIsCutAndKeptWholeBehindDetails) {
  const std::string statement =
      "insert into mp3sTabelle values (\"" + std::string(9000, 'x') + "\")";
  const WhenModal<QMessageBox> person([&](QMessageBox& box) {
    EXPECT_LT(box.text().size(), 2000);
    EXPECT_EQ(box.detailedText().toStdString(), statement);
    EXPECT_LT(box.height(), 800);
    QTest::keyClick(&box, Qt::Key_Escape);
  });
  EXPECT_EQ(interaction_.ShowMessage({.text = statement}), Answer::kOk);
}

TEST_F(WindowInteractionTest, CancelWorksDuringABatchThoughTheMainWindowIsDisabled) {
  for (const bool inside_a_dialog : {false, true}) {
    SCOPED_TRACE(inside_a_dialog);
    QDialog tool(&main_);
    if (inside_a_dialog) tool.open();
    Batch batch(session_, interaction_, "importing...", 1000);
    ASSERT_FALSE(main_.isEnabled());
    auto* loading = ShownWindow<frmLoading>();
    ASSERT_NE(loading, nullptr);
    EXPECT_EQ(loading->parentWidget(), nullptr);
    EXPECT_TRUE(loading->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(Find<QLabel>(*loading, "lblInfo").text(), "importing...");
    EXPECT_TRUE(batch.Step(1));
    ClickThroughTheSystem(Find<QAbstractButton>(*loading, "cmdCancel"));
    EXPECT_FALSE(batch.Step(2));
    EXPECT_FALSE(loading->isVisible());
    batch.SetLine("Found: 3 Files.");
    EXPECT_FALSE(loading->isVisible()) << "a window that the person closed came back";
  }
  Batch next(session_, interaction_, "searching files...", 0);
  EXPECT_NE(ShownWindow<frmLoading>(), nullptr);
  QTest::keyClick(ShownWindow<frmLoading>(), Qt::Key_Escape);
  EXPECT_FALSE(next.Step(1));
}

TEST_F(WindowInteractionTest, ABatchThatEndsByAnErrorPutsEverythingBack) {
  field_.setFocus();
  try {
    Batch outer(session_, interaction_, "importing...", 10);
    {
      const Batch inner(session_, interaction_, "saving...", 5);
      interaction_.SetBusyPointer(true);
      interaction_.SetBusyPointer(false);
    }
    EXPECT_FALSE(main_.isEnabled()) << "the inner batch gave the window free";
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    (void)outer.Step(3);
    EXPECT_FALSE(progress_.isVisible());
    throw std::runtime_error("disk gone");
  } catch (const std::runtime_error&) {
  }
  EXPECT_TRUE(main_.isEnabled());
  EXPECT_EQ(main_.focusWidget(), &field_);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_FALSE(progress_.isVisible());
  EXPECT_EQ(ShownWindow<frmLoading>(), nullptr);
  EXPECT_EQ(status_.text(), "Ready.");
  EXPECT_EQ(status_.minimumWidth(), 133);
}

TEST_F(WindowInteractionTest, DuringABatchTextsWaitForAYieldThatMayPaint) {
  interaction_.SetStatus("at once");
  EXPECT_EQ(status_.text(), "at once");
  {
    Batch batch(session_, interaction_, "importing...", 7);
    EXPECT_TRUE(progress_.isVisible());
    interaction_.SetStatus("/music/a.mp3");
    EXPECT_EQ(status_.text(), "at once");
    EXPECT_EQ(interaction_.Status(), "/music/a.mp3");
    EXPECT_TRUE(QTest::qWaitFor([&] {
      (void)batch.Step(4);
      return status_.text() == "/music/a.mp3" && progress_.value() == 4;
    }));
    EXPECT_EQ(status_.minimumWidth(), 800 * 2 / 3) << "the panel may not widen the window";
    interaction_.SetStatus("/music/b.mp3");
    const BoxAnswers person{QMessageBox::Ok};
    (void)interaction_.ShowMessage({.text = "trouble"});
    EXPECT_EQ(status_.text(), "/music/b.mp3");
  }
  EXPECT_EQ(status_.text(), "Ready.");
}

TEST_F(WindowInteractionTest, ABoxSuspendsThePointerAndHidesFrmLoadingForItsTime) {
  Batch batch(session_, interaction_, "importing...", 10);
  const WhenModal<QMessageBox> person([](QMessageBox& box) {
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(ShownWindow<frmLoading>(), nullptr);
    EXPECT_TRUE(box.isEnabled());
    ClickThroughTheSystem(*box.button(QMessageBox::Ignore));
  });
  EXPECT_EQ(interaction_.ShowMessage({.text = "?", .buttons = Buttons::kAbortRetryIgnore}),
            Answer::kIgnore);
  EXPECT_NE(QApplication::overrideCursor(), nullptr);
  EXPECT_NE(ShownWindow<frmLoading>(), nullptr);
}

TEST_F(WindowInteractionTest, FrmLoadingClosesItselfWhenNoBatchIsActive) {
  session_.busy = true;
  interaction_.ShowLoading("Loading Data...");
  auto* loading = ShownWindow<frmLoading>();
  ASSERT_NE(loading, nullptr);
  auto* timer = loading->findChild<QTimer*>(QStringLiteral("Timer1"));
  ASSERT_EQ(timer->interval(), 1000);
  timer->setInterval(1);
  QTest::qWait(20);
  EXPECT_TRUE(loading->isVisible());
  session_.busy = false;
  EXPECT_TRUE(QTest::qWaitFor([&] { return !loading->isVisible(); }));
  EXPECT_FALSE(session_.CancelRequested);
}

TEST_F(WindowInteractionTest, PathsComeBackAsBytesAndTextAsUtf8) {
  const std::string chosen = folder_.Path("Grün & Co");
  std::filesystem::create_directory(chosen);
  const std::string file = folder_.Write("Grün & Co/lied.mp3");
  {
    const WhenModal<QFileDialog> person([](QDialog& dialog) { dialog.accept(); });
    EXPECT_EQ(interaction_.ChooseFolder("Select a drive or folder", chosen + "/"), chosen);
  }
  {
    const WhenModal<QFileDialog> person([&](QFileDialog& dialog) {
      EXPECT_EQ(dialog.nameFilters().constFirst(), "MP3-Player (*.exe)");
      Find<QLineEdit>(dialog, "fileNameEdit").setText(QString::fromStdString(file));
      dialog.selectNameFilter(dialog.nameFilters().constLast());
      static_cast<QDialog&>(dialog).accept();
    });
    EXPECT_EQ(interaction_.ChooseFile({.title = "Player", .filter = "MP3-Player (*.exe)"}), file);
  }
  {
    const WhenModal<QInputDialog> person([](QInputDialog& dialog) {
      EXPECT_EQ(dialog.textValue(), "Änne");
      dialog.setTextValue(QString::fromUtf8("Björk"));
      dialog.accept();
    });
    EXPECT_EQ(interaction_.AskText("Name of the playlist:", "Playlist", "Änne"), "Björk");
  }
  const WhenModal<QFileDialog> person([](QFileDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(interaction_.ChooseFile({.title = "Save", .for_saving = true}), std::nullopt);
}

}  // namespace
}  // namespace tunemeadow
