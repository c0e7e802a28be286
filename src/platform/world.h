// SPDX-License-Identifier: GPL-3.0-or-later
// Everything outside of this process that a command may reach. The program makes one World of the
// system's adapters (system_world_qt.h), a test one that it scripts.
#pragma once

#include "platform/clipboard.h"
#include "platform/drives.h"
#include "platform/player_finder.h"
#include "platform/player_port.h"
#include "platform/process.h"
#include "platform/shell_open.h"
#include "platform/trash.h"

namespace tunemeadow {

/// The ports of one run. They must outlive whatever was handed the World.
struct World {
  ProcessStarter& processes;
  ShellOpener& shell;
  PlayerPort& players;
  PlayerFinder& player_finder;
  Drives& drives;
  Clipboard& clipboard;
  Trash& trash;
};

}  // namespace tunemeadow
