// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/run_identity.h"

#include <unistd.h>

#include <sstream>

#include "files/durable_file.h"

namespace tunemeadow {
namespace {

/// When the process was started, in clock ticks since the machine's start. 0 if there is none,
/// or only the remains of one that nobody has asked about yet.
std::int64_t BeginningOf(std::int64_t process) {
  const std::string text =
      ReadWholeFile("/proc/" + std::to_string(process) + "/stat").value_or(std::string());
  const std::size_t name_end = text.rfind(')');  // the name before it may hold anything
  if (name_end == std::string::npos) return 0;
  std::istringstream fields(text.substr(name_end + 1));
  std::string state;
  fields >> state;
  if (state == "Z" || state == "X") return 0;
  std::string skipped;
  constexpr int kBetweenStateAndBeginning = 18;
  for (int i = 0; i < kBetweenStateAndBeginning; ++i) fields >> skipped;
  std::int64_t began = 0;
  fields >> began;
  return began;
}

}  // namespace

bool RunIdentity::SameMachineRun(const RunIdentity& other) const noexcept {
  return !machine_run.empty() && machine_run == other.machine_run;
}

bool RunIdentity::OtherMachineRun(const RunIdentity& other) const noexcept {
  return !machine_run.empty() && !other.machine_run.empty() && machine_run != other.machine_run;
}

bool RunIdentity::Covers(const struct timespec& time) const noexcept {
  struct timespec now {};
  clock_gettime(CLOCK_REALTIME, &now);
  return time.tv_sec > machine_began && time.tv_sec <= now.tv_sec;
}

RunIdentity ThisRun() {
  const std::string run = ReadWholeFile("/proc/sys/kernel/random/boot_id").value_or(std::string());
  struct timespec now {
  }, since_start{};
  clock_gettime(CLOCK_REALTIME, &now);
  clock_gettime(CLOCK_BOOTTIME, &since_start);
  return {.machine_run = run.substr(0, run.find('\n')),
          .machine_began = now.tv_sec - since_start.tv_sec,
          .process = getpid(),
          .process_began = BeginningOf(getpid())};
}

bool RunsBeside(const RunIdentity& identity, const RunIdentity& own) {
  if (!identity.SameMachineRun(own) || identity.process == 0 || identity.process_began == 0) {
    return false;
  }
  if (identity.process == own.process && identity.process_began == own.process_began) return false;
  return BeginningOf(identity.process) == identity.process_began;
}

}  // namespace tunemeadow
