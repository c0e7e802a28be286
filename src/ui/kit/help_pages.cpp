// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/help_pages.h"

#include <array>
#include <string>

#include "core/paths.h"
#include "files/file_facts.h"
#include "platform/shell_open_qt.h"
#include "run/program_folder.h"

namespace tunemeadow {
namespace {

void OpenWith(ShellOpener* shell, const std::string& path_or_url) {
  QtShellOpener desktop;
  (void)(shell != nullptr ? *shell : desktop).Open(path_or_url);
}

}  // namespace

void OpenHelpPage(const Session& session, std::string_view page, ShellOpener* shell) {
  const std::string beside = ExecutableFolder();
  const std::array folders{JoinPath(session.program_folder, "help"), JoinPath(beside, "help"),
                           JoinPath(beside, "../share/tunemeadow/help")};
  for (const std::string& folder : folders) {
    const std::string path = JoinPath(folder, page);
    if (!MyFileExists(path)) continue;
    OpenWith(shell, path);
    return;
  }
}

void OpenWebPage(std::string_view url, ShellOpener* shell) { OpenWith(shell, std::string(url)); }

}  // namespace tunemeadow
