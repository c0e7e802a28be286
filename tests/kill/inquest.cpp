// SPDX-License-Identifier: GPL-3.0-or-later
#include "kill/inquest.h"

#include <algorithm>
#include <string_view>

namespace tunemeadow::kill {
namespace {

/// The bytes of a scenario's file; nothing for one that is missing.
std::string_view FileOf(const Image& image, std::size_t file) {
  const auto found = image.find(Stage::NameOf(file));
  return found == image.end() ? std::string_view() : std::string_view(found->second);
}

/// Names of the program's folder; only those with something in them, or all.
std::string Journals(const Image& image, bool all) {
  std::string names;
  for (const auto& [name, bytes] : image) {
    if (name.starts_with("program/") && (all || !bytes.empty())) names += ' ' + name;
  }
  return names;
}

}  // namespace

Inquest::Inquest(const Stage& stage, const Scenario& scenario, Tally& tally)
    : stage_(stage), scenario_(scenario), tally_(tally), states_(scenario.files.size()) {
  std::size_t steps = 0;
  for (const File& file : scenario.files) steps = std::max(steps, file.steps.size());
  for (std::uint32_t mask = 0; mask < 1U << steps; ++mask) {
    stage.Set(Stage::Begin(scenario));
    const Report report = stage.Run(scenario, {}, nullptr, mask);
    const Image image = stage.Get();
    for (std::size_t i = 0; i < states_.size(); ++i) {
      const std::uint32_t own = (1U << scenario.files[i].steps.size()) - 1;
      if (mask > own) continue;
      if (report.written[i] != mask) Fault("undisturbed", "a writer failed");
      states_[i].emplace_back(FileOf(image, i));
    }
  }
  for (std::size_t i = 0; i < states_.size(); ++i) {
    if (Old(i) != scenario.files[i].bytes() || New(i) == Old(i)) {
      Fault("undisturbed", "nothing written, or something without a writer");
    }
  }
  stage.Run(scenario);
  const Image image = stage.Get();
  for (std::size_t i = 0; i < states_.size(); ++i) again_.emplace_back(FileOf(image, i));
}

void Inquest::Fault(const std::string& what, const std::string& fault) {
  tally_.faults.push_back(scenario_.writer + ", " + scenario_.form + ", " + what + ": " + fault);
}

std::array<bool, kMostFiles> Inquest::Obliged(const Report& report) const {
  std::array<bool, kMostFiles> done = report.done;
  if (!scenario_.grouped) done[0] = report.written[0] != 0;
  return done;
}

std::array<bool, kMostFiles> Inquest::All() const {
  std::array<bool, kMostFiles> all{};
  all.fill(true);
  return all;
}

Image Inquest::Recovered(const std::string& what) {
  if (!stage_.Recover()) Fault(what, "the recovery ended badly");
  Image image = stage_.Get();
  const std::string left = Journals(image, true);
  if (!left.empty()) Fault(what, "the recovery left" + left);
  return image;
}

void Inquest::AfterFailureAndKill(const Report& report, const std::string& what) {
  std::array<std::uint32_t, kMostFiles> told{};
  for (std::size_t i = 0; i < states_.size(); ++i) {
    const std::uint32_t all = (1U << scenario_.files[i].steps.size()) - 1;
    if ((report.written[i] | report.refused[i]) == all) told[i] = report.written[i];
  }
  AfterKill(scenario_.grouped ? std::array<bool, kMostFiles>{} : Obliged(report), what, told);
}

void Inquest::AfterKill(const std::array<bool, kMostFiles>& done, const std::string& what,
                        const std::array<std::uint32_t, kMostFiles>& told) {
  ++tally_.points;
  const Image image = Recovered(what);
  for (std::size_t i = 0; i < states_.size(); ++i) {
    const std::string name = "file " + std::to_string(i);
    const std::string_view bytes = FileOf(image, i);
    if (bytes == New(i)) {
      ++tally_.new_files;
    } else if (bytes == Old(i)) {
      ++tally_.old_files;
      if (done[i]) Fault(what, name + " is old although it was saved");
    } else if (bytes == states_[i][told[i]]) {
      ++tally_.other_files;
    } else {
      Fault(what, name + " is neither old nor new");
    }
  }
  SaveAgain(image, what);
}

void Inquest::AfterFailure(const Report& report, const std::string& what) {
  ++tally_.points;
  if (!report.finished) Fault(what, "the writer did not come back");
  const Image told = stage_.Get();
  const bool journal = !Journals(told, false).empty();
  const Image image = Recovered(what);
  for (std::size_t i = 0; i < states_.size(); ++i) {
    const std::string name = "file " + std::to_string(i);
    const std::string& expected = states_[i][report.written[i]];
    const bool may_be_old = journal && (scenario_.grouped || report.written[i] == 0);
    if (FileOf(told, i) != expected && !may_be_old) Fault(what, name + " is not what was told");
    const std::string_view bytes = FileOf(image, i);
    if (bytes == Old(i) && (may_be_old || expected == Old(i))) {
      ++tally_.old_files;
    } else if (bytes != expected) {
      Fault(what, name + " is wrong after the recovery");
    } else {
      ++(expected == New(i) ? tally_.new_files : tally_.other_files);
    }
  }
  SaveAgain(image, what);
}

void Inquest::SaveAgain(const Image& before, const std::string& what) {
  const Report report = stage_.Run(scenario_);
  const Image after = stage_.Get();
  const std::string left = Journals(after, true);
  if (!report.finished || report.group_failed || !left.empty()) {
    Fault(what, "the next save did not end well" + left);
  }
  for (std::size_t i = 0; i < states_.size(); ++i) {
    const bool wrong = (FileOf(before, i) == Old(i) && FileOf(after, i) != New(i)) ||
                       (FileOf(before, i) == New(i) && FileOf(after, i) != again_[i]);
    if (wrong) Fault(what, "the next save of file " + std::to_string(i) + " went wrong");
  }
}

}  // namespace tunemeadow::kill
