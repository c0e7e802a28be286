// SPDX-License-Identifier: GPL-3.0-or-later
//
// list_floor [ROWS]: the least that a list of ROWS by 30 texts costs in this toolkit: one byte
// buffer for all cells, a plain model over it, texts made when they are painted. Nothing can be
// edited, sorted as a number or hidden. What the result list takes above this is the program's own.
//
// Prints "rows N fill MS show MS sort MS memory MIB", CPU milliseconds and resident memory added.

#include <time.h>
#include <unistd.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QTreeView>
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

// About as long as the texts of a catalogue are, column by column.
constexpr std::array kLengths{6, 18, 14, 8, 34, 75, 4, 16, 2, 4, 7, 28, 2, 1, 2,
                              1, 1,  1,  1, 3,  20, 1, 6,  8, 8, 6, 14, 1, 1, 22};
constexpr int kColumns = static_cast<int>(kLengths.size());

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

class ByteModel : public QAbstractTableModel {
 public:
  explicit ByteModel(const std::vector<std::string>& cells) {
    ends_.reserve(cells.size() + 1);
    ends_.push_back(0);
    for (const std::string& cell : cells) {
      bytes_.insert(bytes_.end(), cell.begin(), cell.end());
      ends_.push_back(static_cast<std::uint32_t>(bytes_.size()));
    }
    order_.resize(cells.size() / static_cast<std::size_t>(kColumns));
    std::iota(order_.begin(), order_.end(), std::size_t{0});
  }

  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(order_.size());
  }
  int columnCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : kColumns;
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (role != Qt::DisplayRole) return {};
    const std::string_view cell =
        Cell(order_[static_cast<std::size_t>(index.row())], index.column());
    return QString::fromUtf8(cell.data(), static_cast<qsizetype>(cell.size()));
  }

  void SortBy(int column) {
    std::stable_sort(order_.begin(), order_.end(), [&](std::size_t a, std::size_t b) {
      return Cell(a, column) < Cell(b, column);
    });
  }

 private:
  std::string_view Cell(std::size_t row, int column) const {
    const std::size_t cell =
        row * static_cast<std::size_t>(kColumns) + static_cast<std::size_t>(column);
    return {bytes_.data() + ends_[cell], ends_[cell + 1] - ends_[cell]};
  }

  std::vector<char> bytes_;
  std::vector<std::uint32_t> ends_;
  std::vector<std::size_t> order_;
};

std::vector<std::string> RandomCells(std::size_t rows) {
  std::mt19937 random(1);
  std::vector<std::string> cells(rows * static_cast<std::size_t>(kColumns));
  for (std::size_t i = 0; i < cells.size(); ++i) {
    for (int left = kLengths[i % kLengths.size()]; left > 0; --left) {
      cells[i] += static_cast<char>('a' + random() % 26);
    }
  }
  return cells;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const auto rows = static_cast<std::size_t>(argc > 1 ? std::atol(argv[1]) : 100000);
  const std::vector<std::string> cells = RandomCells(rows);

  const long memory_before = ResidentMib();
  double began = CpuMilliseconds();
  ByteModel model(cells);
  QTreeView view;
  view.setUniformRowHeights(true);
  view.setModel(&model);
  const double fill = CpuMilliseconds() - began;

  began = CpuMilliseconds();
  view.resize(1600, 900);
  view.show();
  for (int i = 0; i < 20; ++i) QApplication::processEvents();
  const double show = CpuMilliseconds() - began;
  const long memory = ResidentMib() - memory_before;

  began = CpuMilliseconds();
  model.SortBy(1);
  const double sort = CpuMilliseconds() - began;
  std::printf("rows %zu fill %.0f show %.0f sort %.0f memory %ld\n", rows, fill, show, sort,
              memory);
  return 0;
}
