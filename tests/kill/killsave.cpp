// SPDX-License-Identifier: GPL-3.0-or-later
// killsave MP3 [--short] [WRITER...]: cuts the save of each writer short in every way and looks
// what is left. For each call that changes a file: killed before it, after it and in the middle of
// it; ENOSPC and EIO from it, once and for good; each failure with a kill at a later call; the same
// within the recovery; the power cut anywhere; and a disk that is full. The file must be the old
// one or the new one, byte for byte, nothing may be left in the program's folder, and the next save
// must work.
//
// MP3 gives the audio. --short takes a fixed sample. Ends with 1 where anything went wrong.
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <map>
#include <random>

#include "files/durable_file.h"
#include "kill/full_disk.h"
#include "kill/inquest.h"
#include "kill/interpose.h"
#include "kill/power_cut.h"
#include "kill/scenario.h"
#include "kill/stage.h"
#include "support/mp3_builder.h"

namespace tunemeadow::kill {
namespace {

/// How much is tried.
struct Measure {
  std::size_t audio_bytes;
  std::size_t kills;         ///< at least so many for each scenario
  std::size_t struck_saves;  ///< whose recoveries are struck as well
  std::size_t recovery_kills;
  int power_cuts;
  int recovery_power_cuts;
  int full_disks;
  std::size_t kills_after_failure;  ///< at most so many for each failure
  bool every_failure;
};
constexpr Measure kLong = {2'000'000, 200, 4, 40, 200, 60, 24, 10, true};
constexpr Measure kShort = {150'000, 26, 1, 8, 10, 6, 4, 1, false};

/// Of so few calls a sample has each one fail.
constexpr std::size_t kFewCalls = 24;

constexpr std::size_t kTapeBytes = std::size_t{256} << 20;

std::string Describe(const Blow& blow, const std::vector<Operation>& calls) {
  std::string text = blow.kind == Blow::Kind::kKill ? "killed at call " : "failure of call ";
  text += std::to_string(blow.call);
  if (blow.call < calls.size()) {
    const Operation& call = calls[blow.call];
    text += " (" + std::string(NameOf(call.call)) + ' ' +
            std::string(call.path.substr(call.path.rfind('/') + 1)) + ')';
  }
  if (blow.part != 0) text += " part " + std::to_string(blow.part);
  if (blow.kind == Blow::Kind::kFail) {
    text += ' ' + std::string(strerrorname_np(blow.error)) + " extent " +
            std::to_string(static_cast<int>(blow.extent));
    if (blow.kill_at != 0) text += ", killed at call " + std::to_string(blow.kill_at);
  }
  return text;
}

std::int64_t SizeOf(const Operation& call) {
  if (call.call == Call::kWrite) return call.length;
  return call.call == Call::kReserve ? call.length - call.offset : 0;
}

/// Before, after and in the middle of each call, in as many places as it takes for `least` kills.
std::vector<Blow> Kills(const std::vector<Operation>& calls, std::size_t least,
                        std::mt19937& random) {
  std::vector<Blow> blows;
  std::size_t long_calls = 0;
  for (std::uint32_t i = 0; i < calls.size(); ++i) {
    blows.push_back({.kind = Blow::Kind::kKill, .call = i, .part = 0});
    blows.push_back({.kind = Blow::Kind::kKill, .call = i, .part = Blow::kWhole});
    if (SizeOf(calls[i]) > 1) ++long_calls;
  }
  const std::size_t missing = least > blows.size() ? least - blows.size() : 0;
  const std::size_t parts = long_calls == 0 ? 0 : missing / long_calls + 1;
  for (std::uint32_t i = 0; i < calls.size(); ++i) {
    const std::int64_t size = SizeOf(calls[i]);
    if (size <= 1) continue;
    for (std::size_t part = 0; part < parts; ++part) {
      std::int64_t bytes = part == 0 ? size / 2 : part == 1 ? 1 : size - 1;
      if (part > 2) bytes = 1 + static_cast<std::int64_t>(random()) % (size - 1);
      if (part > 2 && part % 2 == 0) bytes = std::max<std::int64_t>(1, bytes / 4096 * 4096);
      blows.push_back({.kind = Blow::Kind::kKill, .call = i, .part = bytes});
    }
  }
  return blows;
}

std::vector<Blow> Failures(const std::vector<Operation>& calls, bool every) {
  using Extent = Blow::Extent;
  std::vector<Blow> blows;
  for (std::uint32_t i = 0; i < calls.size(); ++i) {
    const auto add = [&](int error, Extent extent, std::int64_t part) {
      blows.push_back({Blow::Kind::kFail, i, part, error, extent});
    };
    add(ENOSPC, Extent::kRoomLater, 0);
    add(EIO, Extent::kOneCall, 0);
    if (every || i % 3 == 0) add(EIO, Extent::kAllLater, 0);
    if (every) add(ENOSPC, Extent::kOneCall, 0);
    const std::int64_t half = SizeOf(calls[i]) / 2;
    if (half > 0) add(ENOSPC, Extent::kNextToo, half);
    if (half > 0 && every) add(EIO, Extent::kNextToo, 1);
  }
  return blows;
}

/// `count` of the blows, spread over all of them.
std::vector<Blow> Some(const std::vector<Blow>& blows, std::size_t count) {
  if (blows.size() <= count) return blows;
  std::vector<Blow> some;
  for (std::size_t i = 0; i < count; ++i) some.push_back(blows[i * blows.size() / count]);
  return some;
}

class Ordeal {
 public:
  Ordeal(const Stage& stage, const Scenario& scenario, const Measure& measure, Tally& tally)
      : stage_(stage),
        scenario_(scenario),
        measure_(measure),
        tally_(tally),
        inquest_(stage, scenario, tally) {
    begin_ = Stage::Begin(scenario);
    stage_.Set(begin_);
    tape_.Clear(true);
    stage_.Run(scenario_, {}, &tape_);
    calls_ = tape_.Operations();
    if (AllDone(begin_, calls_, stage.Folder()) != stage_.Get()) {
      tally_.faults.emplace_back("files were changed by calls that are not counted");
    }
  }

  void Run() {
    const std::vector<Blow> kills = Kills(calls_, measure_.kills, random_);
    for (const Blow& blow : measure_.every_failure ? kills : Some(kills, measure_.kills)) {
      inquest_.AfterKill(inquest_.Obliged(Struck(blow)), Describe(blow, calls_));
    }
    for (const Blow& blow : Failures(calls_, measure_.every_failure)) {
      inquest_.AfterFailure(Struck(blow), Describe(blow, calls_));
    }
    FailAndKill();
    CutThePower(begin_, calls_, measure_.power_cuts, true);
    StrikeRecoveries(kills);
  }

  /// On a disk that is full but for some bytes, a few more each time.
  void FillTheDisk() {
    std::int64_t growth = 8 * 4096;  // what is begun takes whole pages
    for (const Operation& call : calls_) growth += SizeOf(call);
    const std::string filler = stage_.Folder() + "/filler";
    for (int i = 0; i <= measure_.full_disks; ++i) {
      stage_.Set(begin_);
      const std::int64_t room = growth * i / measure_.full_disks;
      if (!FillDisk(filler, room)) tally_.faults.emplace_back("the disk could not be filled");
      const Report report = stage_.Run(scenario_);
      std::filesystem::remove(filler);
      inquest_.AfterFailure(report, "full disk with " + std::to_string(room) + " bytes left");
    }
  }

 private:
  /// The saves from the beginning, with this blow.
  Report Struck(const Blow& blow) {
    scratch_.Clear(false);
    stage_.Set(begin_);
    return stage_.Run(scenario_, blow, &scratch_);
  }

  /// One call fails, or each that needs room from one on, and a later one is killed in its middle.
  void FailAndKill() {
    using Extent = Blow::Extent;
    const bool sampled = !measure_.every_failure && calls_.size() > kFewCalls;
    const std::uint32_t step = sampled ? 5 : 1;
    for (std::uint32_t call = 0; call < calls_.size(); call += step) {
      for (Blow blow : {Blow{Blow::Kind::kFail, call, 0, ENOSPC, Extent::kRoomLater},
                        Blow{Blow::Kind::kFail, call, 0, EIO, Extent::kOneCall}}) {
        Struck(blow);
        const std::uint32_t later = scratch_.Calls() - std::min(scratch_.Calls(), call + 1);
        const auto kills =
            std::min(later, static_cast<std::uint32_t>(measure_.kills_after_failure));
        for (std::uint32_t i = 0; i < kills; ++i) {
          // The call after a failed write of the journal only cuts it off: begin with the next.
          blow.kill_at = call + 1 + (1 + i * later / kills) % later;
          inquest_.AfterFailureAndKill(Struck(blow), Describe(blow, calls_));
        }
      }
    }
  }

  /// Every second recovery is killed and begun again: what it has written itself since the machine
  /// is up must not look like somebody else's work.
  void CutThePower(const Image& before, const std::vector<Operation>& calls, int times,
                   bool ends_well) {
    const RunIdentity other = {.machine_run = "another run", .machine_began = time(nullptr) - 1800};
    RunIdentity run = std::exchange(stage_.run, other);
    for (int i = 0; i < times; ++i) {
      const PowerCut cut = CutPower(before, calls, stage_.Folder(), random_);
      stage_.Set(cut.left);
      if (i % 2 == 1) {
        scratch_.Clear(false);
        const Blow kill = {.kind = Blow::Kind::kKill,
                           .call = static_cast<std::uint32_t>(random_() % 8),
                           .part = static_cast<std::int64_t>(random_() % 3) - 1};
        (void)stage_.Recover(kill, &scratch_);
      }
      std::array<bool, kMostFiles> done{};
      if (cut.at_the_end && ends_well) done = inquest_.All();
      inquest_.AfterKill(done,
                         "power cut " + std::to_string(i) + (ends_well ? "" : " in recovery"));
    }
    stage_.run = std::move(run);
  }

  /// Kills and failures of the recovery, and power cuts in it.
  void StrikeRecoveries(const std::vector<Blow>& kills) {
    std::vector<Blow> saves;
    std::copy_if(kills.begin(), kills.end(), std::back_inserter(saves), [&](const Blow& blow) {
      return blow.part != 0 && calls_[blow.call].path.find("/music/") != std::string_view::npos;
    });
    for (const Blow& save : Some(saves, measure_.struck_saves)) {
      // The calls of the save, then those of its recovery.
      killed_.Clear(true);
      stage_.Set(begin_);
      const Report report = stage_.Run(scenario_, save, &killed_);
      const Image left = stage_.Get();
      const std::size_t first = killed_.Operations().size();
      stage_.Recover({}, &killed_);
      const std::vector<Operation> all = killed_.Operations();
      const std::vector<Operation> recovery(all.begin() + static_cast<std::ptrdiff_t>(first),
                                            all.end());
      std::vector<Blow> blows =
          Some(Kills(recovery, measure_.recovery_kills, random_), measure_.recovery_kills);
      for (const Blow& blow : Failures(recovery, false)) blows.push_back(blow);
      for (const Blow& blow : blows) {
        scratch_.Clear(false);
        stage_.Set(left);
        (void)stage_.Recover(blow, &scratch_);
        inquest_.AfterKill(inquest_.Obliged(report),
                           Describe(save, calls_) + ", recovery " + Describe(blow, recovery));
      }
      CutThePower(begin_, all, measure_.recovery_power_cuts, false);
    }
  }

  const Stage& stage_;
  const Scenario& scenario_;
  const Measure& measure_;
  Tally& tally_;
  Inquest inquest_;
  Image begin_;
  Tape tape_{kTapeBytes}, killed_{kTapeBytes}, scratch_{kTapeBytes};
  std::vector<Operation> calls_;
  std::mt19937 random_{20040807};
};

void PrintLine(const std::string& writer, const std::string& form, const Tally& tally) {
  std::printf("%-20s %-22s %6d %6d %6d %6d %6zu\n", writer.c_str(), form.c_str(), tally.points,
              tally.old_files, tally.new_files, tally.other_files, tally.faults.size());
  for (std::size_t i = 0; i < std::min<std::size_t>(tally.faults.size(), 5); ++i) {
    std::printf("  %s\n", tally.faults[i].c_str());
  }
  std::fflush(stdout);
}

std::size_t RunAll(const std::string& folder, const std::vector<Scenario>& scenarios,
                   const Measure& measure, const std::vector<std::string>& chosen) {
  std::printf("%-20s %-22s %6s %6s %6s %6s %6s\n", "writer", "form", "points", "old", "new", "told",
              "faults");
  std::size_t faults = 0;
  std::map<std::string, int> points;
  const auto each = [&](const Stage& stage, bool small_disk) {
    for (const Scenario& scenario : scenarios) {
      if (!chosen.empty() &&
          std::find(chosen.begin(), chosen.end(), scenario.writer) == chosen.end())
        continue;
      Tally tally;
      Ordeal ordeal(stage, scenario, measure, tally);
      small_disk ? ordeal.FillTheDisk() : ordeal.Run();
      PrintLine(scenario.writer, scenario.form, tally);
      faults += tally.faults.size();
      points[scenario.writer] += tally.points;
    }
  };
  each(Stage(folder + "/stage"), false);
  std::filesystem::create_directory(folder + "/disk");
  const auto size = static_cast<std::int64_t>(measure.audio_bytes) * 6;
  if (MountSmallDisk(folder + "/disk", size)) {
    std::printf("\nOn a disk that fills up:\n");
    each(Stage(folder + "/disk"), true);
    UnmountSmallDisk(folder + "/disk");
  } else {
    std::printf(
        "\nNo small disk can be mounted here: the full disk stands with the failures above.\n");
  }
  std::printf("\n");
  for (const auto& [writer, count] : points) {
    std::printf("%-20s %6d points\n", writer.c_str(), count);
  }
  return faults;
}

int Main(int count, char** words) {
  std::vector<std::string> arguments(words + 1, words + count);
  const bool shortly = std::erase(arguments, "--short") > 0;
  const std::string mp3 =
      arguments.empty() ? "" : ReadWholeFile(arguments[0]).value_or(std::string());
  const Measure& measure = shortly ? kShort : kLong;
  const std::string audio = AudioOf(mp3, measure.audio_bytes);
  if (audio.empty()) {
    std::fprintf(stderr, "killsave: no MP3 file\n");
    return 2;
  }
  std::string folder = (std::filesystem::temp_directory_path() / "killsave-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) return 2;
  const std::string picture = folder + "/picture.jpg";
  if (!ReplaceFile(picture, FakeJpeg(60'000))) return 2;

  const auto start = std::chrono::steady_clock::now();
  arguments.erase(arguments.begin());
  const std::size_t faults = RunAll(folder, AllScenarios(audio, picture), measure, arguments);
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  std::printf("\n%zu faults, %.0f s\n", faults, time.count());
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
  return faults == 0 ? 0 : 1;
}

}  // namespace
}  // namespace tunemeadow::kill

int main(int count, char** words) { return tunemeadow::kill::Main(count, words); }
