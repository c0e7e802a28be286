// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/running_programs.h"

#include <dirent.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdio>
#include <memory>
#include <string_view>

#include "core/numbers.h"
#include "core/paths.h"
#include "platform/program_path.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kKernelNameBytes = 15;

struct CloseFolder {
  void operator()(DIR* folder) const noexcept { closedir(folder); }
};

/// What one line of PID/stat tells: "id (name) state ...", the start as its 22nd word.
struct ProcessLine {
  std::string name;
  char state = 'Z';
  double start = 0;  ///< seconds after the start of the machine
};

std::optional<ProcessLine> ReadProcessLine(const std::string& path) {
  std::array<char, 1024> bytes{};
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "re"),
                                                             &std::fclose);
  if (file == nullptr) return std::nullopt;
  std::string_view line(bytes.data(), std::fread(bytes.data(), 1, bytes.size(), file.get()));
  const std::size_t open = line.find('('), close = line.rfind(')');
  if (open == std::string_view::npos || close == std::string_view::npos || close < open ||
      close + 2 >= line.size()) {
    return std::nullopt;
  }
  ProcessLine result{.name = std::string(line.substr(open + 1, close - open - 1)),
                     .state = line[close + 2]};
  line.remove_prefix(close + 2);
  constexpr int kWordsBeforeStart = 19;  // after the name, the state included
  for (int i = 0; i < kWordsBeforeStart; ++i) {
    const std::size_t blank = line.find(' ');
    if (blank == std::string_view::npos) return std::nullopt;
    line.remove_prefix(blank + 1);
  }
  const std::string_view ticks = line.substr(0, line.find(' '));
  result.start = static_cast<double>(ParseWhole(ticks).value_or(0)) /
                 static_cast<double>(sysconf(_SC_CLK_TCK));
  return result;
}

double SecondsSinceBoot() {
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

std::string LinkTarget(const std::string& path) {
  std::array<char, PATH_MAX> target{};
  const ssize_t length = readlink(path.c_str(), target.data(), target.size());
  return length <= 0 ? std::string() : std::string(target.data(), static_cast<std::size_t>(length));
}

bool IsOfThisUser(const std::string& folder) {
  struct stat status {};
  return stat(folder.c_str(), &status) == 0 && status.st_uid == geteuid();
}

}  // namespace

std::optional<RunningProgram> FindRunningProgram(const std::string& program,
                                                 const std::string& table) {
  const std::unique_ptr<DIR, CloseFolder> folder(opendir(table.c_str()));
  if (folder == nullptr || program.empty()) return std::nullopt;
  const std::string real = RealPath(program);
  const std::string name(FileNamePart(program).substr(0, kKernelNameBytes));
  const double now = SecondsSinceBoot();
  std::optional<RunningProgram> oldest;
  while (const dirent* entry = readdir(folder.get())) {
    const auto id = ParseWhole(entry->d_name);
    if (!id || *id <= 0 || *id == getpid()) continue;
    const std::string process = JoinPath(table, entry->d_name);
    const auto line = ReadProcessLine(process + "/stat");
    if (!line || line->state == 'Z' || line->state == 'X') continue;
    if (line->name != name && LinkTarget(process + "/exe") != real) continue;
    if (!IsOfThisUser(process)) continue;
    const double seconds = now - line->start;
    if (!oldest || seconds > oldest->seconds) {
      oldest = RunningProgram{.id = static_cast<pid_t>(*id), .seconds = seconds};
    }
  }
  return oldest;
}

}  // namespace tunemeadow
