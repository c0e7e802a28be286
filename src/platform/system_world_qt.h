// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/clipboard_qt.h"
#include "platform/desktop_player_finder.h"
#include "platform/drives.h"
#include "platform/mpris_player_qt.h"
#include "platform/process_posix.h"
#include "platform/shell_open_qt.h"
#include "platform/trash_gio.h"
#include "platform/world.h"

namespace tunemeadow {

/// The World of the machine this runs on. Needs a running QGuiApplication.
class SystemWorld {
  PosixProcessStarter processes_;
  QtShellOpener shell_;
  MprisPlayer players_{processes_};
  DesktopPlayerFinder player_finder_;
  SystemDrives drives_;
  QtClipboard clipboard_;
  GioTrash trash_;

 public:
  SystemWorld() = default;
  SystemWorld(const SystemWorld&) = delete;
  SystemWorld& operator=(const SystemWorld&) = delete;

  World world{processes_, shell_, players_, player_finder_, drives_, clipboard_, trash_};
};

}  // namespace tunemeadow
