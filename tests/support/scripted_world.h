// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/world.h"

namespace tunemeadow {

/// The world outside, as a test wants it: nothing of this machine is seen or touched. What it is
/// asked for stands in one log, in its order. Unless told otherwise programs start, one player
/// runs, none is associated, and nothing is mounted.
struct ScriptedWorld : ProcessStarter,
                       ShellOpener,
                       PlayerPort,
                       PlayerFinder,
                       Drives,
                       Clipboard,
                       Trash,
                       World {
  ScriptedWorld() : World{*this, *this, *this, *this, *this, *this, *this} {}
  ScriptedWorld(const ScriptedWorld&) = delete;
  ScriptedWorld& operator=(const ScriptedWorld&) = delete;

  std::vector<std::string> log;

  // The script.
  std::function<void()> before_start;
  bool starts = true;
  bool opens = true;
  bool throws = false;
  int finds_until_there = 0;  ///< so often is a player looked for in vain
  std::string associated;     ///< the command for MP3 files
  EntryWords entry;           ///< of any player
  bool takes_lists = false;   ///< the player that runs plays a list that it is given
  std::vector<Drive> mounted;
  std::string optical;  ///< root of the first optical drive
  TrashAnswer trash_answer{
      .outcome = TrashOutcome::kMoved};  ///< to each file; the files stay where they are

  // What came.
  int finds = 0;
  int associations_asked = 0;
  std::string clipboard_text;

  bool Start(const std::string& program, const std::vector<std::string>& arguments) override {
    if (before_start) before_start();
    if (throws) throw std::runtime_error("start");
    std::string line = "start " + program;
    for (const std::string& argument : arguments) line += " [" + argument + "]";
    log.push_back(line);
    return starts;
  }
  Ended StartAndWait(const std::string& program, const std::vector<std::string>& arguments,
                     int /*milliseconds*/) override {
    return Start(program, arguments) ? Ended::kEnded : Ended::kNotStarted;
  }
  bool Open(const std::string& path_or_url) override {
    log.push_back("open " + path_or_url);
    return opens;
  }
  std::string Find(const std::string& /*player*/) override {
    return finds++ < finds_until_there ? "" : "window";
  }
  bool Send(const std::string& window, const std::string& /*player*/,
            const std::string& path) override {
    log.push_back("send " + window + " " + path);
    return false;
  }
  bool Replace(const std::string& /*player*/, const std::string& list) override {
    if (takes_lists) log.push_back("replace " + list);
    return takes_lists;
  }
  EntryWords WordsOf(const std::string& /*player*/) override { return entry; }
  std::string AssociatedCommand() override {
    ++associations_asked;
    return associated;
  }
  std::vector<Drive> Mounted() override { return mounted; }
  std::string FirstOptical() override { return optical; }
  TrashAnswer MoveToTrash(const std::string& path) override {
    log.push_back("trash " + path);
    return trash_answer;
  }
  void SetText(const std::string& text) override { clipboard_text = text; }
};

}  // namespace tunemeadow
