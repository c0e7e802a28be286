// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/process_posix.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "platform/program_path.h"

namespace tunemeadow {
namespace {

/// What the new process does; never returns. Between fork and exec only calls that are safe in a
/// signal handler are allowed, so nothing here may allocate.
[[noreturn]] void BecomeProgram(const char* path, char* const* words, int report) {
  const int nothing = open("/dev/null", O_RDWR);
  if (nothing >= 0) {
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, standard);
    if (nothing > STDERR_FILENO) close(nothing);
  }
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  signal(SIGPIPE, SIG_DFL);
  execv(path, words);
  const char failed = 1;
  // The reader takes a report that cannot be written for a start.
  _exit(write(report, &failed, 1) == 1 ? 127 : 126);
}

/// Forks twice, so that the program's parent ends at once and the system inherits it. False where a
/// fork failed.
bool ForkProgram(const char* path, char* const* words, int report) {
  const pid_t parent = fork();
  if (parent == 0) {
    setsid();
    const pid_t program = fork();
    if (program == 0) BecomeProgram(path, words, report);
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

}  // namespace

bool PosixProcessStarter::Start(const std::string& program,
                                const std::vector<std::string>& arguments) {
  const std::string path = ProgramPath(program);
  if (path.empty()) return false;
  std::vector<std::string> texts = {path};
  texts.insert(texts.end(), arguments.begin(), arguments.end());
  std::vector<char*> words;
  for (std::string& text : texts) words.push_back(text.data());
  words.push_back(nullptr);

  std::array<int, 2> report{};
  if (pipe2(report.data(), O_CLOEXEC) != 0) return false;
  const bool forked = ForkProgram(path.c_str(), words.data(), report[1]);
  close(report[1]);
  // The other end closes by itself when the program runs, and brings a byte when it does not.
  char failed = 0;
  ssize_t got = 0;
  while ((got = read(report[0], &failed, 1)) < 0 && errno == EINTR) {
  }
  close(report[0]);
  return forked && got == 0;
}

}  // namespace tunemeadow
