// SPDX-License-Identifier: GPL-3.0-or-later
// Widths and places of the list's columns.
#include <QHeaderView>
#include <QScopedValueRollback>
#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "ui/kit/qt_text.h"
#include "ui/panes/list_model.h"
#include "ui/panes/list_selection.h"
#include "ui/panes/list_style.h"
#include "ui/panes/result_view.h"

namespace tunemeadow {
namespace {

constexpr int kWidestAutoSize = 600;
constexpr int kRowsToMeasure = 300;  ///< spread over the list
constexpr int kMostRowsInSight = 200;
constexpr std::size_t kLongestTexts = 4;
constexpr int kMostRowsToScan = 200'000;  ///< for the longest texts; of more rows, each second, ...
constexpr int kRoomForFractions = 2;      ///< widths are whole pixels, letters are not

int PixelsOfTwips(int twips) {
  return static_cast<int>(std::lround(static_cast<double>(twips) / kTwipsPerPixel));
}

/// The rows with the longest texts (in bytes) of one column.
class LongestRows {
 public:
  void Offer(int row, std::size_t bytes) {
    const auto shortest = std::min_element(entries_.begin(), entries_.end());
    if (bytes > shortest->bytes) *shortest = {bytes, row};
  }
  void AppendTo(std::vector<int>& rows) const {
    for (const Entry& entry : entries_) {
      if (entry.bytes > 0) rows.push_back(entry.row);
    }
  }

 private:
  struct Entry {
    std::size_t bytes = 0;
    int row = 0;
    bool operator<(const Entry& other) const { return bytes < other.bytes; }
  };
  std::array<Entry, kLongestTexts> entries_;
};

}  // namespace

void ResultView::SetLayout(const ColumnLayout& layout) {
  const QScopedValueRollback guard(laying_out_, true);
  stored_layout_ = layout;
  QHeaderView& columns = *header();
  for (std::size_t i = 0; i < layout.size(); ++i) {
    const int column = static_cast<int>(i);
    columns.setSectionHidden(column, layout[i].width <= 0);
    if (layout[i].width > 0) columns.resizeSection(column, PixelsOfTwips(layout[i].width));
  }
  ApplyOrder(layout);
  scheduleDelayedItemsLayout();  // rows without a column had no height
  // An index in a hidden column has no place on the screen: nothing would scroll to it.
  if (currentIndex().isValid()) selection_->ShowList(FirstVisibleColumn());
}

void ResultView::ApplyOrder(const ColumnLayout& layout) {
  std::array<int, kListColumns> order{};
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
    return layout[static_cast<std::size_t>(a)].place < layout[static_cast<std::size_t>(b)].place;
  });
  for (std::size_t place = 0; place < order.size(); ++place) {
    header()->moveSection(header()->visualIndex(order[place]), static_cast<int>(place));
  }
}

ColumnLayout ResultView::Layout() const {
  ColumnLayout layout;
  const QHeaderView& columns = *header();
  for (std::size_t i = 0; i < layout.size(); ++i) {
    const int column = static_cast<int>(i);
    const int pixels = columns.isSectionHidden(column) ? 0 : columns.sectionSize(column);
    const int stored = stored_layout_[i].width;
    // What was not touched keeps its twips: no drift from one run to the next.
    const bool untouched =
        pixels > 0 && pixels == std::max(PixelsOfTwips(stored), columns.minimumSectionSize());
    layout[i].width = untouched ? stored : pixels * kTwipsPerPixel;
    layout[i].place = static_cast<std::size_t>(columns.visualIndex(column));
  }
  return layout;
}

int ResultView::FirstVisibleColumn() const {
  const std::vector<int> columns = VisibleColumns();
  return columns.empty() ? 0 : columns.front();
}

std::vector<int> ResultView::VisibleColumns() const {
  std::vector<int> visible;
  for (int place = 0; place < header()->count(); ++place) {
    const int column = header()->logicalIndex(place);
    if (!header()->isSectionHidden(column)) visible.push_back(column);
  }
  return visible;
}

/// The rows in sight, and a sample spread over the list.
std::vector<int> ResultView::SampledRows() const {
  std::vector<int> rows;
  const int count = model_->rowCount();
  const int top = indexAt(QPoint(1, 1)).row();
  const int bottom = std::min(count, std::max(0, top) + kMostRowsInSight);
  const QRect sight = viewport()->rect();
  for (int row = std::max(0, top); row < bottom; ++row) {
    if (!visualRect(model_->index(row, FirstVisibleColumn())).intersects(sight)) break;
    rows.push_back(row);
  }
  const int step = std::max(1, count / kRowsToMeasure);
  for (int row = 0; row < count; row += step) rows.push_back(row);
  return rows;
}

int ResultView::ContentWidth(int column, const std::vector<int>& rows) const {
  const QFontMetrics metrics(font());
  int widest = 0;
  for (const int row : rows) {
    widest = std::max(widest, metrics.horizontalAdvance(model_->ShownText(row, column)));
    if (widest > kWidestAutoSize) break;
  }
  const int margins = 2 * ListStyle::kTextMargin + kRoomForFractions;
  const int icon = column == 0 ? iconSize().width() + ListStyle::kTextMargin : 0;
  return std::min(kWidestAutoSize,
                  std::max(widest + icon + margins, header()->sectionSizeHint(column)));
}

void ResultView::AutoSize() { AutoSizeColumns(VisibleColumns()); }

void ResultView::AutoSizeColumns(const std::vector<int>& columns) {
  const std::vector<int> sample = SampledRows();
  const int count = model_->rowCount();
  const int step = 1 + count / kMostRowsToScan;
  std::array<LongestRows, kListColumns> longest;
  for (int row = 0; row < count; row += step) {
    for (const int column : columns) {
      const auto i = static_cast<std::size_t>(column);
      longest[i].Offer(row, list_.Cell(static_cast<std::size_t>(row), i).size());
    }
  }
  {
    const QScopedValueRollback guard(laying_out_, true);
    for (const int column : columns) {
      std::vector<int> rows = sample;
      longest[static_cast<std::size_t>(column)].AppendTo(rows);
      header()->resizeSection(column, ContentWidth(column, rows));
    }
  }
  emit ColumnsChanged();
}

}  // namespace tunemeadow
