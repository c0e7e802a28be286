// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/command_table.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace tunemeadow {

const std::vector<const CommandRow*>& AllCommands() {
  static const std::vector<const CommandRow*> all = [] {
    std::vector<const CommandRow*> rows;
    for (const auto& commands : {LibraryCommands(), EditingCommands(), ViewCommands(),
                                 PlaybackCommands(), NetCommands(), FocusCommands()}) {
      for (const CommandRow& row : commands) rows.push_back(&row);
    }
    return rows;
  }();
  return all;
}

const CommandRow& CommandNamed(std::string_view name) {
  const auto& all = AllCommands();
  const auto row = std::find_if(all.begin(), all.end(),
                                [&](const CommandRow* each) { return each->name == name; });
  if (row == all.end()) throw std::out_of_range("no command " + std::string(name));
  return **row;
}

void Run(const CommandRow& row, CommandContext& context) {
  Workbench& bench = context.bench;
  if (row.begins == Begins::kAlone && !MayBegin(bench.session)) return;
  RunAndTell(bench.interaction, [&] { row.run(context); });
}

}  // namespace tunemeadow
