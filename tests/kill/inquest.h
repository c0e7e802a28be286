// SPDX-License-Identifier: GPL-3.0-or-later
// What must be true of a scenario after it was cut short.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "kill/scenario.h"
#include "kill/stage.h"

namespace tunemeadow::kill {

struct Tally {
  int points = 0;
  int old_files = 0;
  int new_files = 0;
  int other_files = 0;  ///< of several writers, those that said so have written
  std::vector<std::string> faults;
};

class Inquest {
 public:
  /// Runs the scenario undisturbed, with each choice of its steps, to know what it should do.
  Inquest(const Stage& stage, const Scenario& scenario, Tally& tally);

  /// The stage holds what a kill or a power cut left, and no recovery has been killed or all of its
  /// blows are over: recovers, compares, saves again. Each file must be old or new. `done`: the
  /// files that must be new. `told`: the steps that are known to have written the whole of what a
  /// file may hold besides.
  void AfterKill(const std::array<bool, kMostFiles>& done, const std::string& what,
                 const std::array<std::uint32_t, kMostFiles>& told = {});

  /// The same where a call had failed before the kill: a file whose steps were over may be what
  /// they said. In a group none must be new, since the failure can have cost the mark.
  void AfterFailureAndKill(const Report& report, const std::string& what);

  /// The child came to its end although calls failed. Each file must be what the writers said, now
  /// or, where the journal still stands, after the recovery.
  void AfterFailure(const Report& report, const std::string& what);

  /// The files that a report obliges to be new, where nothing but a process was killed.
  [[nodiscard]] std::array<bool, kMostFiles> Obliged(const Report& report) const;
  [[nodiscard]] std::array<bool, kMostFiles> All() const;

 private:
  [[nodiscard]] const std::string& Old(std::size_t file) const { return states_[file].front(); }
  [[nodiscard]] const std::string& New(std::size_t file) const { return states_[file].back(); }
  /// What the stage holds after a recovery.
  [[nodiscard]] Image Recovered(const std::string& what);
  void SaveAgain(const Image& before, const std::string& what);
  void Fault(const std::string& what, const std::string& fault);

  const Stage& stage_;
  const Scenario& scenario_;
  Tally& tally_;
  std::vector<std::vector<std::string>> states_;  ///< of a file, by the steps that have written
  std::vector<std::string> again_;                ///< of a file, after a second save
};

}  // namespace tunemeadow::kill
