// SPDX-License-Identifier: GPL-3.0-or-later
// The start of the program: its steps, their order and their conditions. What only a window can do
// is asked of a StartWindow.
#pragma once

#include <string>

#include "platform/process.h"
#include "run/interaction.h"
#include "run/session.h"
#include "run/window_state.h"
#include "views/workbench.h"

namespace tunemeadow {

/// The main window, as far as the start needs it. The functions are called in this order, each once
/// at most unless it says otherwise.
class StartWindow {
 public:
  virtual ~StartWindow() = default;

  /// Session and bench hold the settings: brings them into the controls, makes the window of the
  /// preferences, and takes its place on the screen from `stored`, the values of kConfigSection.
  virtual void ApplyProperties(const StoredValues& stored) = 0;

  virtual void BuildLists() = 0;

  /// There is no tool that could repair, so the preference, which is off now, cannot be chosen.
  virtual void DisableRepair() = 0;

  /// Lets the person pick a catalogue after one that could not be opened, however often, into
  /// lblConfigDB of the session. False if nothing was picked.
  [[nodiscard]] virtual bool ChooseDatabase() = 0;

  virtual void LoadGenresNEU() = 0;

  /// Shows the window, with the focus in its first field.
  virtual void ShowWindow() = 0;

  /// Where a person's music is likely to lie, bytes, with a trailing separator. First start only.
  [[nodiscard]] virtual std::string FolderOfMusic() = 0;

  /// The welcome, until the person has left it. First start only.
  virtual void ShowWelcome() = 0;
};

/// The whole start, up to the shown window with its list. `shipped_folder` is where the program's
/// own files lie beside it. False if no catalogue could be opened and the person picked no other
/// one: the program is to end, its window was not shown.
[[nodiscard]] bool StartUp(Workbench& bench, StartWindow& window,
                           const std::string& shipped_folder);

/// The name under which the repair tool is shipped.
inline constexpr const char* kRepairTool = "RepairDB.exe";

/// Starts the repair tool in the background, without waiting: it writes a compacted copy of the
/// catalogue to compact.mdb in the program folder, which a later start takes over. The tool is
/// looked for in the program folder, then in `shipped_folder`. False if there is none; a tool
/// that is there and cannot be started counts as started, as nobody waits for it.
[[nodiscard]] bool StartRepairTool(const Session& session, ProcessStarter& starter,
                                   const std::string& shipped_folder);

/// The box after a catalogue could not be opened, before another one is asked for.
[[nodiscard]] MessageBox OpenFailedBox(const std::string& database, const DatabaseError& error);

}  // namespace tunemeadow
