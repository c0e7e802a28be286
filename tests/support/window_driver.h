// SPDX-License-Identifier: GPL-3.0-or-later
// A person at the windows, for tests: finds controls by name, presses, types, answers boxes.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

namespace tunemeadow {

/// The control of that name inside `window`. Throws if there is none: the test ends there.
template <typename Control>
Control& Find(const QWidget& window, const char* name) {
  auto* control = window.findChild<Control*>(QString::fromUtf8(name));
  if (control == nullptr) throw std::runtime_error(std::string("no control ") + name);
  return *control;
}

inline void Press(const QWidget& window, const char* button) {
  QTest::mouseClick(&Find<QAbstractButton>(window, button), Qt::LeftButton);
}

/// Chooses the entry of that name, wherever it stands.
inline void Trigger(const QWidget& window, const char* entry) {
  Find<QAction>(window, entry).trigger();
}

/// The shown top-level window of that kind, or null.
template <typename Window>
Window* ShownWindow() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (auto* found = qobject_cast<Window*>(window); found != nullptr && found->isVisible()) {
      return found;
    }
  }
  return nullptr;
}

/// Runs `action` once on the modal window of that kind, as soon as there is one. Make it before the
/// step that opens the window. A window that never comes fails the test.
template <typename Window>
class WhenModal {
 public:
  explicit WhenModal(std::function<void(Window&)> action) : action_(std::move(action)) {
    QObject::connect(&timer_, &QTimer::timeout, [this] {
      auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
      if (window == nullptr || !window->isVisible()) return;
      timer_.stop();
      came_ = true;
      action_(*window);
    });
    timer_.start(2);
  }
  ~WhenModal() { EXPECT_TRUE(came_) << "the window did not come"; }
  WhenModal(const WhenModal&) = delete;
  WhenModal& operator=(const WhenModal&) = delete;

 private:
  std::function<void(Window&)> action_;
  QTimer timer_;
  bool came_ = false;
};

/// Answers the message boxes that come while it lives, in their order. Of several the newest does.
class BoxAnswers {
 public:
  BoxAnswers(std::initializer_list<QMessageBox::StandardButton> answers)
      : answers_(answers), older_(newest) {
    newest = this;
    QObject::connect(&timer_, &QTimer::timeout, [this] { Answer(); });
    timer_.start(2);
  }
  ~BoxAnswers() {
    newest = older_;
    EXPECT_TRUE(answers_.empty()) << "a box that was expected did not come";
  }
  BoxAnswers(const BoxAnswers&) = delete;
  BoxAnswers& operator=(const BoxAnswers&) = delete;

  std::vector<std::string> seen;  ///< "title: text" of each box

 private:
  void Answer() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (newest != this || box == nullptr || !box->isVisible()) return;
    seen.push_back((box->windowTitle() + QStringLiteral(": ") + box->text()).toStdString());
    QAbstractButton* button = answers_.empty() ? nullptr : box->button(answers_.front());
    if (button == nullptr) {
      ADD_FAILURE() << "unexpected box: " << seen.back();
      box->reject();
      return;
    }
    answers_.pop_front();
    QTest::mouseClick(button, Qt::LeftButton);
  }

  inline static BoxAnswers* newest = nullptr;

  std::deque<QMessageBox::StandardButton> answers_;
  BoxAnswers* older_;
  QTimer timer_;
};

}  // namespace tunemeadow
