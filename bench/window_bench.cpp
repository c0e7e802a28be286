// SPDX-License-Identifier: GPL-3.0-or-later
// The real main window, driven by itself for bench/run; offscreen, in the program folder that
// TUNEMEADOW_FOLDER names, which holds a catalogue and settings that are not a first run.
//
//   window_bench import FOLDER   one import of the folder through the window
//   window_bench list            searches and sorts; one JSON object a line: figure, ms, rows
//   window_bench save ARTIST     sets the artist of every track: "Save all" with one box ticked
//   window_bench tree            the tree of folders: filled, renewed after a search, a node
//   clicked window_bench start           starts to the usable window and ends
#include <malloc.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <string_view>

#include "editing/mass_save.h"
#include "library/import.h"
#include "platform/system_world_qt.h"
#include "run/program_folder.h"
#include "run/session.h"
#include "ui/kit/theme.h"
#include "ui/panes/result_view.h"
#include "ui/shell/frmStart.h"
#include "views/tree.h"

namespace {

using namespace tunemeadow;

double CpuMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double ResidentMib() {
  std::ifstream statm("/proc/self/statm");
  long size = 0;
  long resident = 0;
  statm >> size >> resident;
  return static_cast<double>(resident) * 4 / 1024;
}

/// Answers every message box with Yes or OK, as soon as it is up; one about a fault ends the run.
class BoxAnswerer : public QTimer {
 public:
  BoxAnswerer() {
    connect(this, &QTimer::timeout, this, [] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      QAbstractButton* button = box->button(QMessageBox::Yes);
      if (button == nullptr) button = box->button(QMessageBox::Ok);
      if (button == nullptr) {
        std::fprintf(stderr, "%s\n", qPrintable(box->text()));
        std::_Exit(1);
      }
      button->click();
    });
    start(10);
  }
};

void Settle(const QWidget& window) {
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
  const_cast<QWidget&>(window).repaint();
}

void Print(const char* figure, double ms, std::size_t rows, const std::string& statement = {}) {
  std::string escaped;
  for (const char c : statement) {
    if (c == '"' || c == '\\') escaped += '\\';
    escaped += c;
  }
  std::printf("{\"figure\": \"%s\", \"ms\": %.2f, \"rows\": %zu, \"statement\": \"%s\"}\n", figure,
              ms, rows, escaped.c_str());
}

/// From the press to the painted list.
void Search(frmStart& window, const char* figure, const SearchFields& fields) {
  Workbench& bench = window.Bench();
  bench.search = fields;
  bench.Watcher().SearchFieldsChanged();
  const double before = CpuMilliseconds();
  Run(CommandNamed("mnuSuchen"), window.Commands());
  Settle(window);
  Print(figure, CpuMilliseconds() - before, bench.ListInView().RowCount(),
        bench.history.Entries().back().statement.text);
}

void Sort(frmStart& window, const char* figure, int column) {
  auto* view = window.findChild<ResultView*>("ListView1");
  const double before = CpuMilliseconds();
  view->Sort(column);
  Settle(window);
  Print(figure, CpuMilliseconds() - before, window.Bench().ListInView().RowCount());
}

void MeasureList(frmStart& window) {
  SearchFields none;
  none.texts[TrackField::Songname] = "no such title anywhere";
  Search(window, "nothing", none);
  malloc_trim(0);
  const double before = ResidentMib();
  Search(window, "everything", {});
  malloc_trim(0);
  std::printf("{\"figure\": \"memory\", \"mib\": %.1f}\n", ResidentMib() - before);
  Sort(window, "sort_title", 1);
  Sort(window, "sort_artist", 2);
  Sort(window, "sort_quality", 4);
  Sort(window, "sort_location", 5);
  Sort(window, "sort_playtime", 9);
  Sort(window, "sort_size", 10);
  Sort(window, "sort_date", 14);
  SearchFields some;
  some.texts[TrackField::Artist] = "umbo";
  Search(window, "search", some);
}

/// The tree of kind "Location", filled and painted as after a write; renewed as after a search that
/// wrote nothing; and a click on a folder, against the same search from the fields.
void MeasureTree(frmStart& window) {
  Workbench& bench = window.Bench();
  Settle(window);
  bench.tree.nodes_read_at.reset();
  double before = CpuMilliseconds();
  updatetreeview(bench);
  Settle(window);
  Print("tree", CpuMilliseconds() - before, bench.tree.nodes->size(),
        "SELECT location FROM mp3sTabelle not indexed where substr(location,1,6)<>'MP3-CD' and "
        "location<>'' group by location order by location");
  before = CpuMilliseconds();
  updatetreeview(bench);
  Settle(window);
  Print("tree_again", CpuMilliseconds() - before, bench.tree.nodes->size());
  const TreeNode folder = bench.tree.nodes->back();
  before = CpuMilliseconds();
  TreeView1_NodeClick(bench, {folder.kind, folder.key, folder.name});
  Settle(window);
  const double click = CpuMilliseconds() - before;
  const SearchFields fields = bench.search;
  Search(window, "tree_search", {});  // another result in between
  before = CpuMilliseconds();
  bench.search = fields;
  bench.Watcher().SearchFieldsChanged();
  cmdSuchen(bench);
  Settle(window);
  Print("tree_click", click - (CpuMilliseconds() - before), bench.ListInView().RowCount());
}

void SaveAll(frmStart& window, const char* artist) {
  Workbench& bench = window.Bench();
  ResultList& list = bench.ListView1;
  list.SetSelected(0, list.RowCount() - 1, true);
  bench.Watcher().SelectionSet();
  ListView1_ItemClick(bench, 0);
  bench.details.chosen[IndexOf(TrackField::Artist)] = true;
  bench.details.texts[TrackField::Artist] = artist;
  const std::size_t rows = list.RowCount();
  const auto began = std::chrono::steady_clock::now();
  const double before = CpuMilliseconds();
  SpezialSpeichern(bench);
  const double cpu = CpuMilliseconds() - before;
  const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - began;
  Print("save", cpu, rows);
  Print("save_wall", wall.count(), rows);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  PrepareApplication();
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  ApplyTheme();
  const std::string_view mode = argc > 1 ? argv[1] : "";
  Session session(ProgramFolder(), "tunemeadow");
  BoxAnswerer answerer;
  SystemWorld system;
  frmStart window(session, system.world);
  if (!window.Form_Load()) return 1;
  Settle(window);
  if (mode == "import" && argc > 2) {
    session.preferences.lblScan = std::string(argv[2]) + "/";
    if (Command1_Click(window.Bench()) != ImportEnd::kComplete) return 1;
    Settle(window);
  } else if (mode == "save" && argc > 2) {
    SaveAll(window, argv[2]);
  } else if (mode == "list") {
    MeasureList(window);
  } else if (mode == "tree") {
    MeasureTree(window);
  } else if (mode == "start") {
    Print("start", CpuMilliseconds(), window.Bench().ListInView().RowCount(),
          window.Bench().history.Entries().back().statement.text);
  } else {
    std::fprintf(stderr, "window_bench import FOLDER | save ARTIST | list | tree | start\n");
    return 2;
  }
  window.close();
  return 0;
}
