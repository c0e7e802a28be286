// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/start_up.h"

#include <cstdint>

#include "core/numbers.h"
#include "core/paths.h"
#include "core/text.h"
#include "files/file_facts.h"
#include "library/catalogue_care.h"
#include "platform/player_detection.h"
#include "run/catalogue.h"
#include "views/quick_search.h"
#include "views/search_items.h"

namespace tunemeadow {
namespace {

/// The tool's arguments have come in one line since ever, so blanks in a path are encoded.
std::string WithoutBlanks(const std::string& path) { return ReplaceEach(path, " ", "%20"); }

TreeKind StoredTreeKind(const StoredValues& stored) {
  const auto kind = ParseWhole(StoredValue(stored, "cboTreeSelector")).value_or(0);
  const bool known = kind >= 0 && kind < static_cast<std::int64_t>(kTreeKinds.size());
  return known ? static_cast<TreeKind>(kind) : TreeKind::kLocation;
}

void LoadProperties(Workbench& bench, StartWindow& window) {
  Session& session = bench.session;
  const StoredValues stored = session.ini.ReadSection(kConfigSection);
  session.preferences = ReadPreferences(session.ini);
  session.success_messages = session.preferences.chkWarnGlobal;
  session.first_run = StoredValue(stored, "firstrun") != "1";
  bench.show_picture = StoredValue(stored, "chkPicShow") != "0";
  bench.try_preview = StoredValue(stored, "chkPlayPreview") == "1";
  bench.track_selection = StoredValue(stored, "chkTrackSelection") != "0";
  bench.tree.kind = StoredTreeKind(stored);
  window.ApplyProperties(stored);
}

void FindCdDrive(Workbench& bench) {
  std::string& drive = bench.session.preferences.lblConfigCDROM;
  if (drive.empty()) drive = StoredDrive(bench.world.drives.FirstOptical());
}

/// Whether the person takes the catalogue of the program's folder for one that has gone.
bool TakesStandardCatalogue(Workbench& bench) {
  const std::string& gone = bench.session.preferences.lblConfigDB;
  const std::string standard = StandardCatalogue(bench.session);
  if (gone == kOtherDatabase || MyFileExists(gone) || !MyFileExists(standard)) return false;
  return bench.interaction.ShowMessage(
             {.text = "The database is not there any more: " + DisplayPath(gone) +
                      "\n\nThere is one in the program's folder: " + DisplayPath(standard) +
                      "\n\nShall that one be opened, from now on?",
              .title = "Question",
              .icon = Icon::kQuestion,
              .buttons = Buttons::kYesNo}) == Answer::kYes;
}

/// After a catalogue could not be opened: `lblConfigDB` is another one. False if there is none.
bool ChooseAnother(Workbench& bench, StartWindow& window, const DatabaseError& error) {
  Session& session = bench.session;
  std::string& database = session.preferences.lblConfigDB;
  const bool standard = TakesStandardCatalogue(bench);
  if (!standard) bench.interaction.ShowMessage(OpenFailedBox(database, error));
  database.clear();
  if (!standard && !window.ChooseDatabase()) return false;
  session.preferences.sConnString.clear();
  DetermineConnection(session);
  session.ini.SaveString(kConfigSection, "lblConfigDB", StoredCatalogue(session, database));
  return true;
}

bool OpenCatalogue(Workbench& bench, StartWindow& window) {
  Session& session = bench.session;
  for (;;) {
    try {
      session.connection.Open(session.connection_string);
      return true;
    } catch (const DatabaseError& error) {
      bench.interaction.HideLoading();
      if (!ChooseAnother(bench, window, error)) return false;
      bench.interaction.ShowLoading("Loading Database...");
    }
  }
}

void LoadData(Workbench& bench) {
  Session& session = bench.session;
  CheckDatabase(session.connection, bench.interaction);
  // The first search reads every track: the lists can be filled from its rows.
  if (!session.preferences.chkAlleEinlesen) RefreshAllSearchitems(bench);
  if (session.first_run) {
    RefreshDemonstrationRow(session, JoinPath(session.program_folder, "monster.mp3"));
  }
}

void FillList(Workbench& bench) {
  if (bench.session.preferences.chkAlleEinlesen) {
    cmdSuchen(bench);
  } else {
    bench.current_view = "Database";
    bench.interaction.SetStatus("Ready.");
    bench.tree.selected = {NodeKind::kRoot, "MYMP3S", {}};
  }
  UpdateTrackCount(bench);
  if (!bench.session.preferences.chkAlleEinlesen) return;
  if (static_cast<std::int64_t>(bench.ListView1.RowCount()) == bench.session.track_count) {
    TakeSearchitemsOfList(bench);
  } else {
    RefreshAllSearchitems(bench);
  }
}

void WelcomePerson(Workbench& bench, StartWindow& window) {
  if (const auto row = bench.ListView1.RowOfUid(1)) {
    bench.ListView1.SelectOnly(*row);
    bench.ListView1.SetFocusedRow(*row);
    bench.Watcher().SelectionSet();
    ListView1_ItemClick(bench, *row);
  }
  bench.session.preferences.lblScan = window.FolderOfMusic();
  window.ShowWelcome();
  bench.interaction.SetStatus("Now it's recommended to scan your disk for mp3 files");
}

}  // namespace

bool StartUp(Workbench& bench, StartWindow& window, const std::string& shipped_folder) {
  Session& session = bench.session;
  Interaction& interaction = bench.interaction;
  interaction.ShowLoading("Loading Properties...");
  LoadProperties(bench, window);
  FindCdDrive(bench);
  DetectPlayer(session, bench.world.player_finder, interaction);
  DetermineConnection(session);
  window.BuildLists();
  interaction.ShowLoading("Loading Database...");
  const std::string rolled_back = RollBackSentence(session.journal.RollBack());
  CareForCatalogue(bench, window, shipped_folder);
  interaction.ShowLoading("Loading Database...");
  if (!OpenCatalogue(bench, window)) return false;
  interaction.ShowLoading("Loading Genres...");
  window.LoadGenresNEU();
  interaction.ShowLoading("Loading Data...");
  LoadData(bench);
  interaction.HideLoading();
  window.ShowWindow();
  interaction.SetStatus("Ready.");
  FillList(bench);
  if (session.first_run) WelcomePerson(bench, window);
  if (!rolled_back.empty()) interaction.SetStatus(rolled_back);
  return true;
}

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
