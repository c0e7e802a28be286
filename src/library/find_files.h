// SPDX-License-Identifier: GPL-3.0-or-later
// The file walk of import and file monitor: the paths of all audio files in a folder tree. Knows
// names only, opens no file.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "run/interaction.h"
#include "run/session.h"

namespace tunemeadow {

/// Where a walk shows the folder that it enters.
enum class StatusMode : int {
  kSilent = 0,
  kMonitor = 1,  ///< in the status bar of frmFileMonitor
  kImport = 2,   ///< in panel 1 of the main window, with the count so far in frmLoading
};

struct WalkOptions {
  std::string extensions;    ///< separated by ";"; only those of three letters ever match
  bool recursive = false;    ///< enter the folders in the folder
  bool read_hidden = false;  ///< enter those whose name begins with a dot; files are never tested
  StatusMode statusMode = StatusMode::kSilent;
  std::function<void(const std::string& folder)> show_in_monitor;  ///< for StatusMode::kMonitor
};

/// What a walk skipped.
struct LeftOut {
  std::int64_t unreadable_folders = 0;        ///< that are there and may not be read
  std::map<std::string, std::int64_t> kinds;  ///< files by their extension, in small letters; ""
                                              ///< for those without one. Not the hidden ones.
};

/// The line that tells it: "1 folder could not be read; left out: ogg 12, jpg 3." Kinds of sound
/// come first, then the more frequent; a few kinds are named. "" where nothing was left out.
[[nodiscard]] std::string LeftOutText(const LeftOut& left_out);

/// Appends the path of each regular file of `folder` that has one of the extensions to `list`: the
/// folder as given, with a trailing separator where it has none, and the name, byte for byte.
/// Symbolic links to regular files count as such; those to folders are entered.
///
/// The entries of a folder come in the order of their bytes, so that two walks give the same list.
/// Each folder is read once, whatever links lead to it. Folders that vanish, may not be read or lie
/// too deep for a path (4096 bytes), and the file systems that the kernel makes up (/proc, /sys),
/// are skipped. Returns what was left out.
///
/// Yields before each folder and stops at once when CancelRequested is set; `list` then holds what
/// was found so far. The flag is not cleared here.
LeftOut FindFilesRecursive(Session& session, Interaction& interaction, const std::string& folder,
                           const WalkOptions& options, std::vector<std::string>& list);

}  // namespace tunemeadow
