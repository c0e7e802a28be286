// SPDX-License-Identifier: GPL-3.0-or-later
// An Interaction that answers from a script and keeps what it was told. A box without a prepared
// answer, an answer that the box has no button for, and anything left open at the end of the object
// (busy pointer, progress, frmLoading, disabled window, unused answers) fail the test.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "run/interaction.h"

namespace tunemeadow {

class ScriptedInteraction : public Interaction {
 public:
  ScriptedInteraction() = default;
  ScriptedInteraction(std::initializer_list<Answer> answers) : answers_(answers) {}

  ~ScriptedInteraction() override {
    ExpectPutBack();
    EXPECT_TRUE(answers_.empty()) << answers_.size() << " boxes that were expected did not come";
    EXPECT_TRUE(texts_.empty()) << "a question for text that was expected did not come";
    EXPECT_TRUE(choices_.empty()) << "a choice that was expected did not come";
  }

  ScriptedInteraction(const ScriptedInteraction&) = delete;
  ScriptedInteraction& operator=(const ScriptedInteraction&) = delete;

  // The script, each in the order of the calls.
  void WillAnswer(Answer answer) { answers_.push_back(answer); }
  void WillAnswerText(std::optional<std::string> text) { texts_.push_back(std::move(text)); }
  void WillChoose(std::optional<std::string> path) { choices_.push_back(std::move(path)); }

  /// Called inside each yield, with its number from 1 on: `session.CancelRequested = n == 3`.
  std::function<void(std::size_t)> on_yield;
  /// Called inside each box, before its answer.
  std::function<void(const MessageBox&)> on_box;

  // What came.
  std::vector<MessageBox> boxes;
  std::vector<std::string> prompts;        ///< of AskText
  std::vector<std::string> choosers;       ///< titles of folder and file dialogs
  std::vector<std::string> offered;        ///< what AskText and ChooseFile began with
  std::vector<std::string> statuses;       ///< every text of panel 1
  std::vector<std::string> loading_lines;  ///< every line of frmLoading
  std::vector<std::int64_t> progress;      ///< every value of the bar
  std::vector<std::string> job_titles;
  std::vector<std::string> job_lines;
  std::size_t yields = 0;
  std::size_t paints = 0;
  std::size_t layouts = 0;  ///< calls of ResizeForm

  // How things stand.
  int busy_depth = 0;
  int panel_width = kPanelWidth;
  std::optional<std::int64_t> progress_maximum;  ///< none: the bar is hidden
  bool loading_shown = false;
  int disabled_depth = 0;
  bool main_window_enabled = true;
  bool job_running = false;

  /// "title: text" of each box.
  [[nodiscard]] std::vector<std::string> BoxTexts() const {
    std::vector<std::string> texts;
    for (const MessageBox& box : boxes) texts.push_back(box.title + ": " + box.text);
    return texts;
  }

  [[nodiscard]] bool SawStatus(const std::string& text) const {
    return std::find(statuses.begin(), statuses.end(), text) != statuses.end();
  }

  /// Whatever a command began, it has ended.
  void ExpectPutBack() const {
    EXPECT_EQ(busy_depth, 0) << "the pointer is still busy";
    EXPECT_EQ(panel_width, kPanelWidth);
    EXPECT_FALSE(progress_maximum.has_value()) << "the progress bar still stands";
    EXPECT_FALSE(loading_shown) << "frmLoading is still there";
    EXPECT_FALSE(job_running) << "the job window waits for more";
    EXPECT_TRUE(main_window_enabled) << "the main window is still disabled";
  }

  Answer ShowMessage(const MessageBox& box) override {
    boxes.push_back(box);
    if (on_box) on_box(box);
    const std::vector<Answer> buttons = ButtonsOf(box.buttons);
    if (answers_.empty()) {
      ADD_FAILURE() << "unexpected box \"" << box.title << "\": " << box.text;
      return buttons.front();
    }
    const Answer answer = Take(answers_);
    EXPECT_NE(std::find(buttons.begin(), buttons.end(), answer), buttons.end())
        << "no such button on the box: " << box.text;
    return answer;
  }

  std::optional<std::string> AskText(const std::string& prompt, const std::string& /*title*/,
                                     const std::string& text) override {
    prompts.push_back(prompt);
    offered.push_back(text);
    return TakeOr(texts_, "question for text: " + prompt);
  }

  std::optional<std::string> ChooseFolder(const std::string& title,
                                          const std::string& /*start*/) override {
    choosers.push_back(title);
    return TakeOr(choices_, "choice of a folder: " + title);
  }

  std::optional<std::string> ChooseFile(const FileChoice& choice) override {
    choosers.push_back(choice.title);
    offered.push_back(choice.start);
    return TakeOr(choices_, "choice of a file: " + choice.title);
  }

  void SetStatus(const std::string& text) override { statuses.push_back(text); }
  [[nodiscard]] std::string Status() const override {
    return statuses.empty() ? std::string() : statuses.back();
  }
  void SetPanelWidth(int twips) override { panel_width = twips; }

  void SetBusyPointer(bool busy) override {
    busy_depth += busy ? 1 : -1;
    EXPECT_GE(busy_depth, 0) << "the pointer was released once too often";
  }

  void ShowProgress(std::int64_t maximum) override { progress_maximum = maximum; }
  void SetProgress(std::int64_t value) override {
    EXPECT_TRUE(progress_maximum && value >= 0 && value <= *progress_maximum)
        << "progress " << value << " lies outside the bar";
    progress.push_back(value);
  }
  void HideProgress() override { progress_maximum.reset(); }

  void ShowLoading(const std::string& line) override {
    loading_shown = true;
    loading_lines.push_back(line);
  }
  void HideLoading() override { loading_shown = false; }
  void ShowJob(const std::string& title, std::int64_t maximum) override {
    job_titles.push_back(title);
    job_lines.clear();
    job_running = true;
    job_maximum_ = maximum;
  }
  void SetJobStep(std::int64_t value, const std::string& /*from*/,
                  const std::string& /*to*/) override {
    EXPECT_TRUE(job_running && value >= 0 && value <= job_maximum_) << value;
  }
  void AddJobLine(const std::string& line) override { job_lines.push_back(line); }
  void EndJob() override { job_running = false; }
  void EnableMainWindow(bool enabled) override {
    disabled_depth += enabled ? -1 : 1;
    EXPECT_GE(disabled_depth, 0) << "the main window was enabled once too often";
    main_window_enabled = disabled_depth == 0;
  }
  void ResizeForm() override { ++layouts; }

  void Yield() override {
    ++yields;
    if (on_yield) on_yield(yields);
  }
  void KeepPainting() override { ++paints; }

 private:
  template <typename Item>
  static Item Take(std::deque<Item>& queue) {
    Item item = std::move(queue.front());
    queue.pop_front();
    return item;
  }

  static std::optional<std::string> TakeOr(std::deque<std::optional<std::string>>& queue,
                                           const std::string& what) {
    if (!queue.empty()) return Take(queue);
    ADD_FAILURE() << "unexpected " << what;
    return std::nullopt;
  }

  /// The one that Escape means comes first.
  static std::vector<Answer> ButtonsOf(Buttons buttons) {
    switch (buttons) {
      case Buttons::kOk:
        return {Answer::kOk};
      case Buttons::kOkCancel:
        return {Answer::kCancel, Answer::kOk};
      case Buttons::kYesNo:
        return {Answer::kNo, Answer::kYes};
      case Buttons::kAbortRetryIgnore:
        break;
    }
    return {Answer::kAbort, Answer::kRetry, Answer::kIgnore};
  }

  std::int64_t job_maximum_ = 0;
  std::deque<Answer> answers_;
  std::deque<std::optional<std::string>> texts_;
  std::deque<std::optional<std::string>> choices_;
};

}  // namespace tunemeadow
