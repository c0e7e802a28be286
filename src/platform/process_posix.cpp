// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/process_posix.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>

#include "platform/program_path.h"

namespace tunemeadow {
namespace {

/// What the new process does; never returns. Between fork and exec only calls that are safe in a
/// signal handler are allowed, so nothing here may allocate.
[[noreturn]] void BecomeProgram(const char* path, char* const* words, int report, int life) {
  const int nothing = open("/dev/null", O_RDWR);
  if (nothing >= 0) {
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, standard);
    if (nothing > STDERR_FILENO) close(nothing);
  }
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  signal(SIGPIPE, SIG_DFL);
  // Stays open in the program and closes with it.
  if (life >= 0) fcntl(life, F_SETFD, 0);
  execv(path, words);
  const char failed = 1;
  // The reader takes a report that cannot be written for a start.
  _exit(write(report, &failed, 1) == 1 ? 127 : 126);
}

/// Forks twice, so that the program's parent ends at once and the system inherits it. False if a
/// fork failed.
bool ForkProgram(const char* path, char* const* words, int report, int life) {
  const pid_t parent = fork();
  if (parent == 0) {
    setsid();
    const pid_t program = fork();
    if (program == 0) BecomeProgram(path, words, report, life);
    _exit(program < 0 ? 1 : 0);
  }
  int status = 0;
  if (parent < 0) return false;
  while (waitpid(parent, &status, 0) < 0) {
    // Somebody in this process may have waited for any child, or asked for none to be kept.
    if (errno != EINTR) return errno == ECHILD;
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// Start, with `life` open in the program until it ends; -1 for none.
bool StartProgram(const std::string& program, const std::vector<std::string>& arguments, int life) {
  const std::string path = ProgramPath(program);
  if (path.empty()) return false;
  std::vector<std::string> texts = {path};
  texts.insert(texts.end(), arguments.begin(), arguments.end());
  std::vector<char*> words;
  for (std::string& text : texts) words.push_back(text.data());
  words.push_back(nullptr);

  std::array<int, 2> report{};
  if (pipe2(report.data(), O_CLOEXEC) != 0) return false;
  const bool forked = ForkProgram(path.c_str(), words.data(), report[1], life);
  close(report[1]);
  // The other end closes by itself when the program runs, and brings a byte when it does not.
  char failed = 0;
  ssize_t got = 0;
  while ((got = read(report[0], &failed, 1)) < 0 && errno == EINTR) {
  }
  close(report[0]);
  return forked && got == 0;
}

/// Whether the other end closes within that time.
bool WaitForClose(int end, int milliseconds) {
  const auto last = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  for (;;) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(last - std::chrono::steady_clock::now());
    pollfd waiting{.fd = end, .events = POLLIN, .revents = 0};
    const int got = poll(&waiting, 1, std::max(0, static_cast<int>(left.count())));
    if (got >= 0 || errno != EINTR) return got > 0;
  }
}

}  // namespace

bool PosixProcessStarter::Start(const std::string& program,
                                const std::vector<std::string>& arguments) {
  return StartProgram(program, arguments, -1);
}

Ended PosixProcessStarter::StartAndWait(const std::string& program,
                                        const std::vector<std::string>& arguments,
                                        int milliseconds) {
  std::array<int, 2> life{};
  if (pipe2(life.data(), O_CLOEXEC) != 0) return Ended::kNotStarted;
  const bool started = StartProgram(program, arguments, life[1]);
  close(life[1]);
  const bool ended = started && WaitForClose(life[0], milliseconds);
  close(life[0]);
  if (!started) return Ended::kNotStarted;
  return ended ? Ended::kEnded : Ended::kRunsOn;
}

}  // namespace tunemeadow
