// SPDX-License-Identifier: GPL-3.0-or-later
// The folder in which saves are cut short, and the processes that run them.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "kill/interpose.h"
#include "kill/scenario.h"

namespace tunemeadow::kill {

inline constexpr std::size_t kMostFiles = 8;

/// What a child says of itself, as far as it came.
struct Report {
  bool finished = false;                            ///< the child came to its end
  std::array<std::uint32_t, kMostFiles> written{};  ///< a bit for each step that said so
  std::array<std::uint32_t, kMostFiles> refused{};  ///< a bit for each step that failed
  std::array<bool, kMostFiles> done{};              ///< its row would have been updated
  bool group_failed = false;                        ///< EndGroup had something to say
};

/// Whole files by their names below the stage.
using Image = std::map<std::string, std::string, std::less<>>;

class Stage {
 public:
  /// `folder` exists and belongs to the stage alone.
  explicit Stage(std::string folder);

  /// The name of a scenario's file below the folder.
  [[nodiscard]] static std::string NameOf(std::size_t file);

  /// Makes the folder hold these files and no others, last written an hour ago.
  void Set(const Image& image) const;
  [[nodiscard]] Image Get() const;

  /// The bytes that the scenario begins with.
  [[nodiscard]] static Image Begin(const Scenario& scenario);

  /// Runs the steps whose bits are set in `mask` in a process of its own. With a tape, the calls
  /// are counted and struck.
  Report Run(const Scenario& scenario, const Blow& blow = {}, Tape* tape = nullptr,
             std::uint32_t mask = ~0U) const;

  /// Rolls back in a process of its own. False if that was killed.
  bool Recover(const Blow& blow = {}, Tape* tape = nullptr) const;

  /// The run in which recoveries take place: another one of the machine after a power cut.
  mutable RunIdentity run = ThisRun();

  [[nodiscard]] const std::string& Folder() const { return folder_; }

 private:
  void Play(const Scenario& scenario, std::uint32_t mask, Report& report) const;

  std::string folder_;
};

}  // namespace tunemeadow::kill
