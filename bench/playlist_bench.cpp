// SPDX-License-Identifier: GPL-3.0-or-later
// playlist_bench CATALOGUE ROWS: puts that many tracks into an empty playlist and stores their
// order twice, as the commands of the window do it. Prints a JSON object for each: figure, ms of
// CPU, ms on the clock. `floor` is bare SQLite in the same file: the same inserts, prepared once,
// each a transaction of its own in the write-ahead log, which is not synced.
#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <string>
#include <vector>

#include "dev/console_interaction.h"
#include "playback/playlists.h"
#include "run/session.h"
#include "support/scripted_world.h"
#include "views/workbench.h"

namespace tunemeadow {
namespace {

template <typename Step>
void Measure(const char* figure, Step step) {
  const std::clock_t cpu = std::clock();
  const auto wall = std::chrono::steady_clock::now();
  step();
  const double cpu_ms = 1000.0 * static_cast<double>(std::clock() - cpu) / CLOCKS_PER_SEC;
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - wall;
  std::cout << R"({"figure": ")" << figure << R"(", "ms": )" << cpu_ms << R"(, "wall_ms": )"
            << taken.count() << "}\n";
}

[[noreturn]] void FailFloor(sqlite3* store) {
  std::cerr << "playlist_bench: " << sqlite3_errmsg(store) << '\n';
  std::exit(1);
}

void InsertBare(sqlite3* store, const std::vector<std::int64_t>& uids) {
  sqlite3_stmt* insert = nullptr;
  if (sqlite3_prepare_v2(store, "insert into playlists (Playlist,uid) values (?,?)", -1, &insert,
                         nullptr) != SQLITE_OK) {
    FailFloor(store);
  }
  for (const std::int64_t uid : uids) {
    sqlite3_bind_text(insert, 1, "Floor", -1, SQLITE_STATIC);
    sqlite3_bind_int64(insert, 2, uid);
    if (sqlite3_step(insert) != SQLITE_DONE) FailFloor(store);
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
}

void RunFloor(const char* path, const std::vector<std::int64_t>& uids) {
  sqlite3* store = nullptr;
  if (sqlite3_open_v2(path, &store, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK ||
      sqlite3_exec(store, "pragma journal_mode=wal; pragma synchronous=normal", nullptr, nullptr,
                   nullptr) != SQLITE_OK) {
    FailFloor(store);
  }
  InsertBare(store, uids);  // warm, as the statements before ours have left the file
  Measure("floor", [&] { InsertBare(store, uids); });
  sqlite3_close(store);
}

int Run(const char* path, std::size_t rows) {
  Session session("/tmp", "playlist_bench");
  session.connection.Open(path);
  ConsoleInteraction interaction;
  ScriptedWorld world;
  Workbench bench(session, interaction, world);
  bench.ListView1.Fill(
      session.connection
          .Execute("SELECT uid FROM mp3sTabelle order by uid limit " + std::to_string(rows))
          .GetRows());
  if (bench.ListView1.RowCount() != rows) return 1;
  bench.ListView1.SetSelected(0, rows - 1, true);
  std::vector<std::int64_t> uids;
  for (std::size_t row = 0; row < rows; ++row) uids.push_back(bench.ListView1.Uid(row));
  const auto save = [&](const char* name) { mnuPlaylistSave_Click(bench, name); };
  save("Warm");
  Measure("add", [&] { save("Bench"); });
  bench.playlist_in_view = true;
  bench.current_playlist = "Bench";
  cmdSuchen(bench);
  if (bench.ListView3.RowCount() != rows) return 1;
  Measure("order", [&] { SavePlaylistOrder(bench); });
  bench.ListView3.MoveRow(0, rows - 1);
  Measure("order_again", [&] { SavePlaylistOrder(bench); });
  session.connection.Close();
  RunFloor(path, uids);
  return 0;
}

}  // namespace
}  // namespace tunemeadow

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "playlist_bench CATALOGUE ROWS\n";
    return 2;
  }
  return tunemeadow::Run(argv[1], static_cast<std::size_t>(std::atoi(argv[2])));
}
