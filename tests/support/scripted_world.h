// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/player_port.h"
#include "platform/process.h"
#include "platform/shell_open.h"

namespace tunemeadow {

/// The world outside, as one log of what was asked of it, in its order.
struct ScriptedWorld : ProcessStarter, ShellOpener, PlayerPort {
  std::vector<std::string> log;
  std::function<void()> before_start;
  bool starts = true;
  bool throws = false;
  int finds_until_there = 0;
  int finds = 0;

  bool Start(const std::string& program, const std::vector<std::string>& arguments) override {
    if (before_start) before_start();
    if (throws) throw std::runtime_error("start");
    std::string line = "start " + program;
    for (const std::string& argument : arguments) line += " [" + argument + "]";
    log.push_back(line);
    return starts;
  }
  bool Open(const std::string& path) override {
    log.push_back("open " + path);
    return true;
  }
  std::string Find(const std::string& /*player*/) override {
    return finds++ < finds_until_there ? "" : "window";
  }
  bool Send(const std::string& window, const std::string& /*player*/,
            const std::string& path) override {
    log.push_back("send " + window + " " + path);
    return false;
  }
};

}  // namespace tunemeadow
