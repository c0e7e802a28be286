// SPDX-License-Identifier: GPL-3.0-or-later
// An Interaction without a window: boxes go to standard error and are answered OK, Yes or Ignore.
#pragma once

#include <iostream>
#include <optional>
#include <string>

#include "run/interaction.h"

namespace tunemeadow {

class ConsoleInteraction : public Interaction {
 public:
  Answer ShowMessage(const MessageBox& box) override {
    std::cerr << box.title << ": " << box.text << '\n';
    switch (box.buttons) {
      case Buttons::kYesNo:
        return Answer::kYes;
      case Buttons::kAbortRetryIgnore:
        return Answer::kIgnore;
      default:
        return Answer::kOk;
    }
  }

  std::optional<std::string> AskText(const std::string& /*prompt*/, const std::string& /*title*/,
                                     const std::string& offered) override {
    return offered;
  }
  std::optional<std::string> ChooseFolder(const std::string& /*title*/,
                                          const std::string& /*start*/) override {
    return std::nullopt;
  }
  std::optional<std::string> ChooseFile(const FileChoice& /*choice*/) override {
    return std::nullopt;
  }

  void SetStatus(const std::string& text) override { status_ = text; }
  [[nodiscard]] std::string Status() const override { return status_; }
  void SetPanelWidth(int /*twips*/) override {}
  void SetBusyPointer(bool /*busy*/) override {}
  void ShowProgress(std::int64_t /*maximum*/) override {}
  void SetProgress(std::int64_t /*value*/) override {}
  void HideProgress() override {}
  void ShowLoading(const std::string& /*line*/) override {}
  void HideLoading() override {}
  void ShowJob(const std::string& /*title*/, std::int64_t /*maximum*/) override {}
  void SetJobStep(std::int64_t /*value*/, const std::string& /*from*/,
                  const std::string& /*to*/) override {}
  void AddJobLine(const std::string& /*line*/) override {}
  void EndJob() override {}
  void EnableMainWindow(bool /*enabled*/) override {}
  void ResizeForm() override {}
  void Yield() override {}
  void KeepPainting() override {}

 private:
  std::string status_;
};

}  // namespace tunemeadow
