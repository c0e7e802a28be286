// SPDX-License-Identifier: GPL-3.0-or-later
//
// list_bench [ROWS]: the result list with ROWS rows of 30 columns, on the texts of list_floor and
// with the same first line: "rows N fill MS show MS sort MS memory MIB", CPU milliseconds and
// resident memory added. Then a line for each thing that a person does with many rows.

#include <time.h>
#include <unistd.h>

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTest>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/scripted_world.h"
#include "ui/kit/theme.h"
#include "ui/panes/result_view.h"

namespace {

using tunemeadow::CellTable;
using tunemeadow::kSelectedFields;
using tunemeadow::ResultList;
using tunemeadow::ResultView;
using tunemeadow::TrackField;

constexpr std::array kLengths{6, 18, 14, 8, 34, 75, 4, 16, 2, 4, 7, 28, 2, 1, 2,
                              1, 1,  1,  1, 3,  20, 1, 6,  8, 8, 6, 14, 1, 1, 22};
constexpr int kRepaints = 50;

double CpuMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

long ResidentMib() {
  std::ifstream statm("/proc/self/statm");
  long size = 0;
  long resident = 0;
  statm >> size >> resident;
  return resident * (sysconf(_SC_PAGESIZE) / 1024) / 1024;
}

std::vector<std::string> RandomCells(std::size_t rows) {
  std::mt19937 random(1);
  std::vector<std::string> cells(rows * kLengths.size());
  for (std::size_t i = 0; i < cells.size(); ++i) {
    for (int left = kLengths[i % kLengths.size()]; left > 0; --left) {
      cells[i] += static_cast<char>('a' + random() % 26);
    }
  }
  return cells;
}

CellTable TableOf(const std::vector<std::string>& cells) {
  CellTable table(kSelectedFields);
  std::array<std::string_view, kSelectedFields> row;
  for (std::size_t i = 0; i < cells.size(); i += kLengths.size()) {
    for (std::size_t column = 0; column < row.size(); ++column) row[column] = cells[i + column];
    table.AppendRow(row);
  }
  return table;
}

void ProcessEvents() {
  for (int i = 0; i < 20; ++i) QApplication::processEvents();
}

/// CPU milliseconds of the action and of what the window does because of it.
template <typename Action>
double Measure(Action action) {
  const double began = CpuMilliseconds();
  action();
  ProcessEvents();
  return CpuMilliseconds() - began;
}

void Report(const char* what, double milliseconds) {
  std::printf("%-48s %8.1f ms\n", what, milliseconds);
}

void MeasureDeeds(ResultList& list, ResultView& view) {
  const auto rows = list.RowCount();
  QScrollBar& bar = *view.verticalScrollBar();
  const double repaints = Measure([&] {
    for (int i = 0; i < kRepaints; ++i) {
      bar.setValue(static_cast<int>(static_cast<double>(bar.maximum()) * i / kRepaints));
      view.viewport()->repaint();
    }
  });
  Report("repaint after a jump", repaints / kRepaints);
  Report("show the first search anew", Measure([&] {
           view.Freeze();
           view.Thaw();
         }));
  Report("select all", Measure([&] { QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier); }));
  Report("sort and show", Measure([&] { view.Sort(2); }));
  Report("sort and show, back", Measure([&] { view.Sort(2); }));
  for (std::size_t row = 0; row < rows; row += 2) list.SetSelected(row, row, false);
  Report("show every second row selected", Measure([&] { view.ShowSelection(); }));
  Report("sort it and show", Measure([&] { view.Sort(3); }));
  const auto click = [&](Qt::KeyboardModifiers held) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, held, QPoint(100, 100));
  };
  Report("add a row to it by Ctrl and a click", Measure([&] { click(Qt::ControlModifier); }));
  Report("click: one row selected", Measure([&] { click({}); }));
  Report("Shift and End: all below it",
         Measure([&] { QTest::keyClick(&view, Qt::Key_End, Qt::ShiftModifier); }));
  Report("auto-size 30 columns", Measure([&] { view.AutoSize(); }));
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  tunemeadow::PrepareApplication();
  QApplication app(argc, argv);
  tunemeadow::ApplyTheme();
  const auto rows = static_cast<std::size_t>(argc > 1 ? std::atol(argv[1]) : 100000);
  const std::vector<std::string> cells = RandomCells(rows);

  const long memory_before = ResidentMib();
  double began = CpuMilliseconds();
  ResultList list;
  tunemeadow::ScriptedWorld world;
  ResultView view(list, "ListView1", world);
  view.Freeze();
  list.Fill(TableOf(cells));
  view.Thaw();
  const double fill = CpuMilliseconds() - began;

  view.resize(1600, 900);
  const double show = Measure([&] { view.show(); });
  const long memory = ResidentMib() - memory_before;

  began = CpuMilliseconds();
  mLVSort(list, 2, 1);
  const double sort = CpuMilliseconds() - began;
  view.ShowOrder();
  std::printf("rows %zu fill %.0f show %.0f sort %.0f memory %ld\n", rows, fill, show, sort,
              memory);
  MeasureDeeds(list, view);
  return 0;
}
