// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <string>

namespace tunemeadow {

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
