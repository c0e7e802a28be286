// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <map>
#include <string>

#include "platform/player_port.h"
#include "platform/process.h"

namespace tunemeadow {

/// PlayerPort over the session bus and the list of processes. A player is found by its name on the
/// bus (MPRIS 2: org.mpris.MediaPlayer2.NAME) or as a process of its program; one that has only
/// just been started is not ready before it has its name or has run for a second. It is given a
/// file through its track list where it lets others edit that, otherwise by its own program and the
/// words that platform/known_players.h has for it, "-e" for any other. mpv is found and spoken to
/// over its socket alone.
///
/// A session without a bus costs nothing and nothing is printed. Needs a running QCoreApplication.
class MprisPlayer : public PlayerPort {
 public:
  /// `processes` starts the player's own program; it must outlive this.
  explicit MprisPlayer(ProcessStarter& processes);
  ~MprisPlayer() override;
  MprisPlayer(const MprisPlayer&) = delete;
  MprisPlayer& operator=(const MprisPlayer&) = delete;

  [[nodiscard]] std::string Find(const std::string& player) override;
  bool Replace(const std::string& player, const std::string& list) override;
  bool Send(const std::string& window, const std::string& player, const std::string& path) override;

 private:
  bool SendBySwitch(const std::string& player, const std::string& path);

  QString connection_;  ///< name of its connection to the bus
  ProcessStarter& processes_;
  std::map<std::string, bool> edits_;  ///< by name on the bus: takes files into its track list
  bool hangs_ = false;  ///< the player's own program did not come back: do not wait for it again
};

}  // namespace tunemeadow
