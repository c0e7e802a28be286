// SPDX-License-Identifier: GPL-3.0-or-later
// The store against bare SQLite, in one run: statements taken apart, rows inserted as SQL text, a
// search that finds some hundred rows, the whole catalogue. TUNEMEADOW_BENCH_CATALOGUE names a file
// of bench/make_catalogue.py for the selects; the inserts go into fresh copies of the template.
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <stdlib.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "core/cell_table.h"
#include "store/database.h"
#include "store/like_pattern.h"
#include "store/statement.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kSelect =
    "SELECT "
    "mp3sTabelle.uid,Songname,Artist,genrereal,quality,location,[year],album,trackno,Playtime,"
    "Filesize,Comment,BPM,preview,lasttimeplayed,Situation,preference,tempo,Mood,bios,Lyrics,"
    "haspic ,"
    "composer,copyright,encodedby,originalartist,url,hasid3v1,hasid3v2  FROM mp3sTabelle ";
constexpr std::string_view kOrder = " order by mp3sTabelle.location";

std::string Search(std::string_view column, std::string_view part, char quote) {
  std::string condition(" where ");
  condition.append(column).append(" like ") += quote;
  condition.append("%").append(part).append("%") += quote;
  return std::string(kSelect) + condition + " " + std::string(kOrder);
}

/// The insert of an import, about 700 bytes.
std::string InsertStatement(std::int64_t number, char quote) {
  const std::string n = std::to_string(number);
  std::string statement =
      "insert into mp3sTabelle (genrereal,Preference,Situation,[Mood],Tempo,BIOS,LYRICS,haspic,"
      "HasID3V1,HasID3V2,trackno,bpm,location,Songname,Artist,genre,[year],album,playtime,"
      "playtimereal,filesize,filesizereal,comment,quality,datetimeofdbinsert,datetimeofdbupdate,"
      "datetimeoffile,composer,originalartist,url,copyright,encodedby)  values (";
  const auto add = [&](std::string_view text) {
    ((statement += quote).append(text) += quote) += ',';
  };
  for (const char* text : {"Rock", "", "", "", "", "", ""}) add(text);
  statement += "0,1,1,";
  add("7");
  add("120");
  add("/music/Blenda Troast " + std::to_string(number / 40) + "/Stri Gra/07 - Vesea " + n + ".mp3");
  for (const char* text :
       {"Vesea Drokai Tund", "Blenda Troast", "17", "1998", "Stri Gra", "3:45", "225", "4.51 MB",
        "4729216", "plouk vio nastrai", "192 kbps / 44.1 khz / Stereo", "2024-05-06 07:08:09",
        "2024-05-06 07:08:09", "2004-11-09 11:33:20", "Grai Tound", "", "", "1998 Blenda Troast"}) {
    add(text);
  }
  (statement += quote).append("brun 1.22") += quote;
  return statement += ")";
}

/// A catalogue of its own, gone at the end.
class ScratchCatalogue {
 public:
  ScratchCatalogue()
      : folder_((std::filesystem::temp_directory_path() / "tunemeadow-bench-XXXXXX").string()) {
    if (::mkdtemp(folder_.data()) == nullptr) std::abort();
    std::filesystem::copy_file(TM_BINARY_DIR "/data/mp3s.mdb", Path());
  }
  ~ScratchCatalogue() { std::filesystem::remove_all(folder_); }
  ScratchCatalogue(const ScratchCatalogue&) = delete;
  ScratchCatalogue& operator=(const ScratchCatalogue&) = delete;

  [[nodiscard]] std::string Path() const { return folder_ + "/mp3s.mdb"; }

 private:
  std::string folder_;
};

void BM_TranslateInsert(benchmark::State& state) {
  const std::string statement = InsertStatement(4711, '"');
  for (auto _ : state) benchmark::DoNotOptimize(TranslateStatement(statement));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(statement.size()));
}
BENCHMARK(BM_TranslateInsert);

void BM_LikePattern(benchmark::State& state, const char* pattern, const char* text) {
  LikePattern prepared(pattern);
  const std::string_view value(text);
  for (auto _ : state) benchmark::DoNotOptimize(prepared.Matches(value));
}
BENCHMARK_CAPTURE(BM_LikePattern, ascii, "%istt%", "Blenda Troast Gr");
BENCHMARK_CAPTURE(BM_LikePattern, accented, "%istt%", "Blénda Tröast Gr");
BENCHMARK_CAPTURE(BM_LikePattern, accented_pattern, "%ïstt%", "Blénda Tröast Gr");
BENCHMARK_CAPTURE(BM_LikePattern, hostile, "%a%a%a%a%a%a%a%a%b",
                  "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa");

void BM_Insert(benchmark::State& state) {
  const ScratchCatalogue scratch;
  Connection connection;
  connection.Open(scratch.Path());
  connection.SetDurability(Durability::kBatch);
  std::int64_t number = 0;
  for (auto _ : state) connection.Execute(InsertStatement(++number, '"'));
}
BENCHMARK(BM_Insert)->Iterations(20000);

/// The same texts as SQLite's own literals, each prepared again. `plain`: a table without trigger,
/// index and AUTOINCREMENT, in pages of the usual size.
void InsertBare(benchmark::State& state, bool plain) {
  const ScratchCatalogue scratch;
  if (plain) std::filesystem::remove(scratch.Path());
  sqlite3* store = nullptr;
  sqlite3_open(scratch.Path().c_str(), &store);
  sqlite3_exec(store, "pragma journal_mode=wal; pragma synchronous=normal", nullptr, nullptr,
               nullptr);
  if (plain) {
    sqlite3_exec(store,
                 "create table mp3sTabelle (uid integer primary key, Songname, Artist, genre, "
                 "genrereal, quality, location, [year], album, trackno, Playtime, playtimereal, "
                 "Filesize, filesizereal, Comment, BPM, preview, lasttimeplayed, Situation, "
                 "preference, tempo, Mood, bios, Lyrics, haspic, composer, copyright, encodedby, "
                 "originalartist, url, hasid3v1, hasid3v2, datetimeofdbinsert, datetimeofdbupdate, "
                 "datetimeoffile)",
                 nullptr, nullptr, nullptr);
  }
  std::int64_t number = 0;
  for (auto _ : state) {
    const std::string statement = InsertStatement(++number, '\'');
    if (sqlite3_exec(store, statement.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      state.SkipWithError(sqlite3_errmsg(store));
      break;
    }
  }
  sqlite3_close(store);
}
void BM_InsertBareTable(benchmark::State& state) { InsertBare(state, true); }
BENCHMARK(BM_InsertBareTable)->Iterations(20000);
void BM_InsertBareCatalogue(benchmark::State& state) { InsertBare(state, false); }
BENCHMARK(BM_InsertBareCatalogue)->Iterations(20000);

const char* BenchCatalogue(benchmark::State& state) {
  const char* const path = std::getenv("TUNEMEADOW_BENCH_CATALOGUE");
  if (path == nullptr) state.SkipWithError("TUNEMEADOW_BENCH_CATALOGUE names no catalogue");
  return path;
}

void BM_Select(benchmark::State& state, const std::string& statement) {
  const char* const path = BenchCatalogue(state);
  if (path == nullptr) return;
  Connection connection;
  connection.Open(path);
  std::size_t rows = 0;
  for (auto _ : state) rows = connection.Execute(statement).GetRows().RowCount();
  state.counters["rows"] = static_cast<double>(rows);
}

void BM_SelectBare(benchmark::State& state, const std::string& statement) {
  const char* const path = BenchCatalogue(state);
  if (path == nullptr) return;
  sqlite3* store = nullptr;
  sqlite3_open(path, &store);
  std::string arena;
  double rows = 0;
  for (auto _ : state) {
    sqlite3_stmt* select = nullptr;
    if (sqlite3_prepare_v2(store, statement.c_str(), -1, &select, nullptr) != SQLITE_OK) {
      state.SkipWithError(sqlite3_errmsg(store));
      break;
    }
    arena.clear();
    const int columns = sqlite3_column_count(select);
    for (rows = 0; sqlite3_step(select) == SQLITE_ROW; ++rows) {
      for (int column = 0; column < columns; ++column) {
        const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(select, column));
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(select, column));
        if (size > 0) arena.append(text, size);
      }
    }
    sqlite3_finalize(select);
  }
  sqlite3_close(store);
  state.counters["rows"] = rows;
}

void RegisterSelects() {
  struct Figure {
    const char* name;
    std::string ours;
    std::string bare;
  };
  const std::string everything = std::string(kSelect) + std::string(kOrder);
  const Figure figures[] = {
      {"artist", Search("Artist", "istt", '"'), Search("Artist", "istt", '\'')},
      {"location", Search("Location", "strou", '"'), Search("Location", "strou", '\'')},
      {"lyrics", Search("Lyrics", "strou", '"'), Search("Lyrics", "strou", '\'')},
      {"everything", everything, everything},
  };
  for (const Figure& figure : figures) {
    const std::string name = std::string("Select/") + figure.name;
    const auto settle = [](benchmark::internal::Benchmark* select) {
      select->Unit(benchmark::kMillisecond)->MinWarmUpTime(0.2);
    };
    settle(benchmark::RegisterBenchmark((name + "/ours").c_str(), BM_Select, figure.ours));
    settle(benchmark::RegisterBenchmark((name + "/bare").c_str(), BM_SelectBare, figure.bare));
  }
}

}  // namespace
}  // namespace tunemeadow

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  tunemeadow::RegisterSelects();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
