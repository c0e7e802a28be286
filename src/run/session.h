// SPDX-License-Identifier: GPL-3.0-or-later
// What one run shares: folders, settings, the open catalogue, the cancel flag. There is one, owned
// by main and handed down.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "files/undo_journal.h"
#include "run/ini.h"
#include "run/preferences.h"
#include "store/database.h"

namespace tunemeadow {

class Batch;

struct Session {
  /// `folder` with or without a trailing separator; `executable` is the program's base name, which
  /// the settings file is named after.
  Session(const std::string& folder, const std::string& executable);

  std::string program_folder;  ///< with a trailing separator; holds settings, catalogue, backup
  cINI ini;
  Preferences preferences;

  UndoJournal journal;  ///< of every file that is rewritten in place

  Connection connection;
  std::string connection_string;
  char quote = '"';  ///< the delimiter of texts in statements

  bool CancelRequested = false;  ///< set by the Cancel button of frmLoading
  bool busy = false;             ///< something is at work (run/busy.h): nothing else may begin
  Batch* batch = nullptr;        ///< the innermost one that runs
  bool success_messages = true;  ///< from chkWarnGlobal
  bool first_run = false;        ///< the stored `firstrun` is not "1"

  std::int64_t track_count = 0;  ///< of the whole catalogue, as last counted
  std::string PlayerKind;        ///< "Winamp", "Sonique", "Unknown", or empty if there is none
  std::string help_file;
};

}  // namespace tunemeadow
