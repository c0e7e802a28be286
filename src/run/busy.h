// SPDX-License-Identifier: GPL-3.0-or-later
// One thing is at work: what that changes, put back on every way out. Scopes nest, and none of them
// undoes what the one around it still needs.
#pragma once

#include "run/interaction.h"
#include "run/session.h"

namespace tunemeadow {

/// What a scope changes beside session.busy.
struct BusyWith {
  bool pointer = true;         ///< hourglass
  bool batch = false;          ///< the catalogue is written as a batch and synced at the end
  bool closed_window = false;  ///< the main window takes no input
  bool* flag = nullptr;  ///< true meanwhile; for a command that asks whether it is itself at work
};

class Busy {
 public:
  Busy(Session& session, Interaction& interaction, BusyWith with = {});
  ~Busy();
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  Session& session_;
  Interaction& interaction_;
  BusyWith with_;
  bool busy_before_;
  bool flag_before_;
  Durability durability_before_;
};

}  // namespace tunemeadow
