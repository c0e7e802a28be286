// SPDX-License-Identifier: GPL-3.0-or-later
// sql_floor CATALOGUE STATEMENT [RUNS]: the least that a select can cost. Runs the statement, which
// must be SQLite's own dialect, on bare SQLite with its defaults, and copies the bytes of every
// cell once. Prints "rows N bytes N cpu_ms N wall_ms N": the medians of the runs, after one to warm
// up.
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <string>
#include <vector>

namespace {

struct FloorRun {
  std::int64_t rows = 0;
  std::size_t bytes = 0;
  double cpu_ms = 0;
  double wall_ms = 0;
};

[[noreturn]] void Fail(sqlite3* store) {
  std::cerr << "sql_floor: " << sqlite3_errmsg(store) << '\n';
  std::exit(1);
}

void CopyRows(sqlite3* store, const char* statement, std::string& arena, FloorRun& run) {
  sqlite3_stmt* select = nullptr;
  if (sqlite3_prepare_v2(store, statement, -1, &select, nullptr) != SQLITE_OK) Fail(store);
  const int columns = sqlite3_column_count(select);
  int result = SQLITE_ROW;
  for (; (result = sqlite3_step(select)) == SQLITE_ROW; ++run.rows) {
    for (int column = 0; column < columns; ++column) {
      const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(select, column));
      const auto size = static_cast<std::size_t>(sqlite3_column_bytes(select, column));
      if (size > 0) arena.append(text, size);
    }
  }
  if (result != SQLITE_DONE) Fail(store);
  sqlite3_finalize(select);
}

FloorRun RunOnce(sqlite3* store, const char* statement, std::string& arena) {
  FloorRun run;
  arena.clear();
  const std::clock_t cpu = std::clock();
  const auto wall = std::chrono::steady_clock::now();
  CopyRows(store, statement, arena, run);
  run.cpu_ms = 1000.0 * static_cast<double>(std::clock() - cpu) / CLOCKS_PER_SEC;
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - wall;
  run.wall_ms = taken.count();
  run.bytes = arena.size();
  return run;
}

double Median(std::vector<FloorRun> runs, double FloorRun::*figure) {
  std::sort(runs.begin(), runs.end(),
            [figure](const FloorRun& a, const FloorRun& b) { return a.*figure < b.*figure; });
  return runs[runs.size() / 2].*figure;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3 || argc > 4) {
    std::cerr << "sql_floor CATALOGUE STATEMENT [RUNS]\n";
    return 2;
  }
  sqlite3* store = nullptr;
  if (sqlite3_open_v2(argv[1], &store, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) Fail(store);
  std::string arena;
  RunOnce(store, argv[2], arena);
  std::vector<FloorRun> runs;
  for (int left = argc == 4 ? std::max(1, std::atoi(argv[3])) : 5; left > 0; --left) {
    runs.push_back(RunOnce(store, argv[2], arena));
  }
  std::cout << "rows " << runs.front().rows << " bytes " << runs.front().bytes << " cpu_ms "
            << Median(runs, &FloorRun::cpu_ms) << " wall_ms " << Median(runs, &FloorRun::wall_ms)
            << '\n';
  sqlite3_close(store);
  return 0;
}
