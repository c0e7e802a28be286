// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <functional>
#include <string>

namespace tunemeadow {

/// Runs `work` in a child process. How that ended, as waitpid tells it.
inline int StatusOfChild(const std::function<int()>& work) {
  const pid_t child = fork();
  if (child == 0) _exit(work());
  int status = -1;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return status;
}

/// A child process that does `work`, which says whether it went well, and then waits to be killed.
class WaitingChild {
 public:
  explicit WaitingChild(const std::function<bool()>& work) {
    std::array<int, 2> answer{};
    if (pipe(answer.data()) != 0) ADD_FAILURE() << "no pipe";
    id_ = fork();
    if (id_ == 0) {
      if (write(answer[1], work() ? "y" : "n", 1) == 1) pause();
      _exit(1);
    }
    char well = 0;
    EXPECT_EQ(read(answer[0], &well, 1), 1);
    EXPECT_EQ(well, 'y');
    for (const int end : answer) close(end);
  }
  ~WaitingChild() { Kill(); }
  WaitingChild(const WaitingChild&) = delete;
  WaitingChild& operator=(const WaitingChild&) = delete;

  [[nodiscard]] pid_t Id() const { return id_; }
  void Kill() {
    if (killed_) return;
    killed_ = true;
    kill(id_, SIGKILL);
    EXPECT_EQ(waitpid(id_, nullptr, 0), id_);
  }

 private:
  pid_t id_ = -1;
  bool killed_ = false;
};

/// What `work` returns in a child process, at most a pipe full of it. For libraries that read the
/// environment once in a process.
inline std::string InChildProcess(const std::function<std::string()>& work) {
  std::array<int, 2> answer{};
  if (pipe(answer.data()) != 0) return ADD_FAILURE() << "no pipe", "";
  const pid_t child = fork();
  if (child == 0) {
    const std::string text = work();
    const bool is_told = write(answer[1], text.data(), text.size()) == std::ssize(text);
    _exit(is_told ? 0 : 1);
  }
  close(answer[1]);
  std::string text;
  std::array<char, 4096> bytes{};
  for (ssize_t got = 0; (got = read(answer[0], bytes.data(), bytes.size())) > 0;) {
    text.append(bytes.data(), static_cast<std::size_t>(got));
  }
  close(answer[0]);
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0) << "the child ended early";
  return text;
}

}  // namespace tunemeadow
