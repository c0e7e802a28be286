// SPDX-License-Identifier: GPL-3.0-or-later
// importfolder FOLDER CATALOGUE: imports all audio files of a folder, with the default settings and
// without a window, into a catalogue that is there already. Prints the tracks of the catalogue and
// the time used; boxes go to standard error.
#include <sys/resource.h>

#include <filesystem>
#include <iostream>
#include <string>

#include "core/numbers.h"
#include "core/paths.h"
#include "dev/console_interaction.h"
#include "library/import.h"
#include "run/command_run.h"
#include "run/session.h"
#include "support/scripted_world.h"
#include "views/workbench.h"

namespace {

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

void PrintTimes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const double user = Seconds(usage.ru_utime);
  const double system = Seconds(usage.ru_stime);
  std::cout << "cpu " << tunemeadow::FormatFixed(user + system, 3) << " s (user "
            << tunemeadow::FormatFixed(user, 3) << ", system " << tunemeadow::FormatFixed(system, 3)
            << "), memory " << usage.ru_maxrss / 1024 << " MB\n";
}

int ImportFolder(const std::string& folder, const std::string& catalogue) {
  using namespace tunemeadow;
  // Nothing is written beside the catalogue: the settings stay as they are built in.
  Session session(std::filesystem::absolute(catalogue).parent_path().string(), "importfolder");
  ConsoleInteraction interaction;
  ScriptedWorld world;
  Workbench bench(session, interaction, world);
  session.connection.Open(catalogue);
  session.preferences.lblScan = WithTrailingSeparator(folder);
  auto end = ImportEnd::kNothingDone;
  RunAndTell(interaction, [&] { end = Command1_Click(bench); });
  std::cout << session.track_count << " tracks, " << bench.ListView1.RowCount() << " in the list. "
            << interaction.Status() << '\n';
  PrintTimes();
  return end == ImportEnd::kComplete ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "importfolder FOLDER CATALOGUE\n";
    return 2;
  }
  try {
    return ImportFolder(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::cerr << "importfolder: " << argv[2] << ": " << error.what() << '\n';
    return 1;
  }
}
