// SPDX-License-Identifier: GPL-3.0-or-later
// The result list and the search without a window: what a search adds to its statement, each kind
// of sort beside the plainest one, the drop-down lists in one pass beside nine statements.
// TUNEMEADOW_BENCH_CATALOGUE names a file of bench/make_catalogue.py.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

#include "run/interaction.h"
#include "run/session.h"
#include "support/scripted_world.h"
#include "views/workbench.h"

namespace tunemeadow {
namespace {

/// A window that shows nothing.
class Silence : public Interaction {
 public:
  Answer ShowMessage(const MessageBox& box) override {
    std::fprintf(stderr, "%s\n", box.text.c_str());
    std::abort();
  }
  std::optional<std::string> AskText(const std::string&, const std::string&,
                                     const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> ChooseFolder(const std::string&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> ChooseFile(const FileChoice&) override { return std::nullopt; }
  void SetStatus(const std::string&) override {}
  [[nodiscard]] std::string Status() const override { return {}; }
  void SetPanelWidth(int) override {}
  void SetBusyPointer(bool) override {}
  void ShowProgress(std::int64_t) override {}
  void SetProgress(std::int64_t) override {}
  void HideProgress() override {}
  void ShowLoading(const std::string&) override {}
  void HideLoading() override {}
  void ShowJob(const std::string& /*title*/, std::int64_t /*maximum*/) override {}
  void SetJobStep(std::int64_t /*value*/, const std::string& /*from*/,
                  const std::string& /*to*/) override {}
  void AddJobLine(const std::string& /*line*/) override {}
  void EndJob() override {}
  void EnableMainWindow(bool) override {}
  void ResizeForm() override {}
  void Yield() override {}
  void KeepPainting() override {}
};

/// A workbench over the catalogue of the environment, opened once.
struct OpenBench {
  Session session{"/", "views_bench"};
  Silence silence;
  ScriptedWorld world;
  Workbench bench{session, silence, world};
  bool open = false;

  OpenBench() {
    const char* const path = std::getenv("TUNEMEADOW_BENCH_CATALOGUE");
    if (path == nullptr) return;
    session.connection.Open(path);
    open = true;
  }
};

Workbench* BenchOf(benchmark::State& state) {
  static OpenBench opened;
  if (!opened.open) state.SkipWithError("TUNEMEADOW_BENCH_CATALOGUE names no catalogue");
  return opened.open ? &opened.bench : nullptr;
}

void BM_StatementOfAll(benchmark::State& state) {
  Workbench* const bench = BenchOf(state);
  if (bench == nullptr) return;
  bench->ListView1.Clear();
  const std::string sql = BuildSearch({}).statement.text;
  for (auto _ : state) {
    const CellTable rows = bench->session.connection.Execute(sql).GetRows();
    benchmark::DoNotOptimize(rows.RowCount());
  }
}
BENCHMARK(BM_StatementOfAll)->Unit(benchmark::kMillisecond);

/// The statement, totals, icons, fill, tree.
void BM_SearchAll(benchmark::State& state) {
  Workbench* const bench = BenchOf(state);
  if (bench == nullptr) return;
  bench->search = {};
  for (auto _ : state) {
    cmdSuchen(*bench);
    state.PauseTiming();
    state.counters["rows"] = static_cast<double>(bench->ListView1.RowCount());
    state.counters["MiB"] = static_cast<double>(bench->ListView1.MemoryUsed()) / 1048576;
    bench->ListView1.Clear();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_SearchAll)->Unit(benchmark::kMillisecond);

/// From the order of the keys to that of the column.
void BM_Sort(benchmark::State& state) {
  Workbench* const bench = BenchOf(state);
  if (bench == nullptr) return;
  if (bench->ListView1.RowCount() == 0) cmdSuchen(*bench);
  const auto column = static_cast<std::size_t>(state.range(0));
  state.SetLabel(std::string(ListColumn(column).caption));
  for (auto _ : state) {
    state.PauseTiming();
    bench->ListView1.ClearSortMark();
    bench->ListView1.Sort(0, SortKind::kNumber);
    bench->ListView1.ClearSortMark();
    state.ResumeTiming();
    bench->ListView1.Sort(column, ListColumn(column).kind);
  }
}

/// The same rows in one byte buffer, sorted by the bytes of the cells.
void BM_SortFloor(benchmark::State& state) {
  Workbench* const bench = BenchOf(state);
  if (bench == nullptr) return;
  ResultList& list = bench->ListView1;
  if (list.RowCount() == 0) cmdSuchen(*bench);
  list.ClearSortMark();
  list.Sort(0, SortKind::kNumber);
  std::string bytes;
  std::vector<std::uint32_t> ends{0};
  for (std::size_t row = 0; row < list.RowCount(); ++row) {
    for (std::size_t column = 0; column < kListColumns; ++column) {
      bytes.append(list.Cell(row, column));
      ends.push_back(static_cast<std::uint32_t>(bytes.size()));
    }
  }
  const auto column = static_cast<std::size_t>(state.range(0));
  const auto cell = [&](std::size_t row) {
    const std::size_t at = row * kListColumns + column;
    return std::string_view(bytes).substr(ends[at], ends[at + 1] - ends[at]);
  };
  state.SetLabel(std::string(ListColumn(column).caption));
  std::vector<std::uint32_t> order(list.RowCount());
  for (auto _ : state) {
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return cell(a) < cell(b); });
    benchmark::DoNotOptimize(order.data());
  }
}

/// A column of each kind, and texts with few values, long beginnings in common, and long bodies.
void EachColumn(benchmark::internal::Benchmark* benchmark) {
  for (const TrackField field :
       {TrackField::uid, TrackField::Songname, TrackField::Artist, TrackField::quality,
        TrackField::location, TrackField::trackno, TrackField::Playtime, TrackField::Filesize,
        TrackField::lasttimeplayed, TrackField::Lyrics, TrackField::url}) {
    benchmark->Arg(static_cast<int>(IndexOf(field)));
  }
  benchmark->Arg(static_cast<int>(kFileColumn))->Unit(benchmark::kMillisecond);
}
BENCHMARK(BM_SortFloor)->Apply(EachColumn);
BENCHMARK(BM_Sort)->Apply(EachColumn);

void BM_SearchItemsInOnePass(benchmark::State& state) {
  Workbench* const bench = BenchOf(state);
  if (bench == nullptr) return;
  bench->ListView1.Clear();
  for (auto _ : state) RefreshAllSearchitems(*bench);
}
BENCHMARK(BM_SearchItemsInOnePass)->Unit(benchmark::kMillisecond);

void BM_SearchItemsByNineStatements(benchmark::State& state) {
  Workbench* const bench = BenchOf(state);
  if (bench == nullptr) return;
  for (auto _ : state) {
    for (const SearchItemList& list : bench->search_items.lists) {
      const std::string sql = SearchItemStatement(list.column);
      const CellTable rows = bench->session.connection.Execute(sql).GetRows();
      benchmark::DoNotOptimize(rows.RowCount());
    }
  }
}
BENCHMARK(BM_SearchItemsByNineStatements)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tunemeadow

BENCHMARK_MAIN();
