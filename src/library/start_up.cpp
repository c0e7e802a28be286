// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/start_up.h"

#include "core/paths.h"
#include "core/text.h"
#include "files/file_facts.h"

namespace tunemeadow {
namespace {

/// The tool's arguments have come in one line since ever, so blanks in a path are encoded.
std::string WithoutBlanks(const std::string& path) { return ReplaceEach(path, " ", "%20"); }

}  // namespace

bool StartRepairTool(const Session& session, ProcessStarter& starter,
                     const std::string& shipped_folder) {
  std::string tool = JoinPath(session.program_folder, kRepairTool);
  if (!MyFileExists(tool)) tool = JoinPath(shipped_folder, kRepairTool);
  if (!MyFileExists(tool)) return false;
  starter.Start(tool, {"-i", WithoutBlanks(session.preferences.lblConfigDB), "-o",
                       WithoutBlanks(JoinPath(session.program_folder, "compact.mdb"))});
  return true;
}

MessageBox OpenFailedBox(const std::string& database, const DatabaseError& error) {
  return {.text = "The database can't be opened: " + DisplayPath(database) + "\n\n" +
                  "The errormessage was:\n" + error.what() +
                  "\n\nNothing was changed. Please choose a database.",
          .title = "Error",
          .icon = Icon::kExclamation};
}

}  // namespace tunemeadow
