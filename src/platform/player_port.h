// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tunemeadow {

/// The players that run, and how one of them is given files.
class PlayerPort {
 public:
  virtual ~PlayerPort() = default;

  /// A running player of the program at the path `player`, by a name that Send understands; empty
  /// where none runs that could be given a file. Answers at once for one that runs; where there is
  /// none it may take some milliseconds, so that whoever asks again and again is no drain.
  [[nodiscard]] virtual std::string Find(const std::string& player) = 0;

  /// Gives a running player a list file (absolute path) that takes the place of its list, and lets
  /// it play, without starting a program. False for a player that is started with its list instead,
  /// or where none runs that could be reached so.
  virtual bool Replace(const std::string& player, const std::string& list) = 0;

  /// Appends one file to the list of the running player `window`, which Find has told for `player`;
  /// what it plays goes on. `path`: absolute, bytes. False if the player does not take it. Waits
  /// for two seconds at most.
  virtual bool Send(const std::string& window, const std::string& player,
                    const std::string& path) = 0;
};

}  // namespace tunemeadow
