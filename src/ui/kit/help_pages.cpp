// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/help_pages.h"

#include <array>
#include <string>

#include "core/paths.h"
#include "files/file_facts.h"
#include "run/program_folder.h"

namespace tunemeadow {
namespace {

MessageBox NoBrowserBox(const std::string& path) {
  return {
      .text = "No program was found that shows the help. This is its page:\n\n" + DisplayPath(path),
      .icon = Icon::kInformation};
}

}  // namespace

void OpenHelpPage(const Session& session, std::string_view page, ShellOpener& shell,
                  Interaction& interaction) {
  const std::string beside = ExecutableFolder();
  const std::array folders{JoinPath(session.program_folder, "help"), JoinPath(beside, "help"),
                           JoinPath(beside, "../share/tunemeadow/help")};
  for (const std::string& folder : folders) {
    const std::string path = JoinPath(folder, page);
    if (!MyFileExists(path)) continue;
    if (!shell.Open(path)) interaction.ShowMessage(NoBrowserBox(path));
    return;
  }
}

void OpenWebPage(std::string_view url, ShellOpener& shell) { (void)shell.Open(std::string(url)); }

}  // namespace tunemeadow
