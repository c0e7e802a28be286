// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/list_selection.h"

#include <QScopedValueRollback>

#include "ui/panes/list_model.h"

namespace tunemeadow {
namespace {

constexpr qsizetype kMostRuns = 100;

}  // namespace

ListSelection::ListSelection(ResultList& list, ListModel& model, QObject* parent)
    : QItemSelectionModel(&model, parent), list_(list), model_(model) {}

/// The runs of selected rows, the first of them if they are too many. Empty only if none is
/// selected.
QItemSelection ListSelection::RunsOfList() const {
  QItemSelection runs;
  const int rows = model_.rowCount();
  const int last_column = model_.columnCount() - 1;
  const auto selected = [&](int row) { return list_.IsSelected(static_cast<std::size_t>(row)); };
  std::size_t left = list_.SelectedCount();
  for (int row = 0; row < rows && left > 0 && runs.size() < kMostRuns; ++row) {
    if (!selected(row)) continue;
    int end = row;
    while (end < rows && selected(end)) ++end;
    runs.append(QItemSelectionRange(model_.index(row, 0), model_.index(end - 1, last_column)));
    left -= static_cast<std::size_t>(end - row);
    row = end;
  }
  return runs;
}

void ListSelection::CopyFromList() {
  const QScopedValueRollback guard(copying_, true);
  QItemSelectionModel::select(RunsOfList(), ClearAndSelect);
}

void ListSelection::ShowList(int current_column) {
  CopyFromList();
  const QScopedValueRollback guard(copying_, true);
  const auto focused = list_.FocusedRow();
  QItemSelectionModel::setCurrentIndex(
      focused ? model_.index(static_cast<int>(*focused), current_column) : QModelIndex(), NoUpdate);
}

void ListSelection::Apply(const QItemSelection& selection, SelectionFlags command) {
  if (command.testFlag(Clear)) list_.ClearSelection();
  for (const QItemSelectionRange& range : selection) {
    if (!range.isValid()) continue;
    const auto first = static_cast<std::size_t>(range.top());
    const auto last = static_cast<std::size_t>(range.bottom());
    if (command.testFlag(Select)) {
      list_.SetSelected(first, last, true);
    } else if (command.testFlag(Deselect)) {
      list_.SetSelected(first, last, false);
    } else if (command.testFlag(Toggle)) {
      for (std::size_t row = first; row <= last; ++row) {
        list_.SetSelected(row, row, !list_.IsSelected(row));
      }
    }
  }
}

void ListSelection::select(const QItemSelection& selection, SelectionFlags command) {
  if (copying_) {
    QItemSelectionModel::select(selection, command);
    return;
  }
  constexpr SelectionFlags kChanges = Clear | Select | Deselect | Toggle;
  if ((command & kChanges) == NoUpdate) return;
  if (selection.isEmpty() && !command.testFlag(Clear)) return;
  Apply(selection, command);
  CopyFromList();
  emit Changed();
}

void ListSelection::clear() {
  if (list_.SelectedCount() > 0) select(QItemSelection(), Clear);
}

void ListSelection::setCurrentIndex(const QModelIndex& index, SelectionFlags command) {
  const int row_before = currentIndex().row();
  QItemSelectionModel::setCurrentIndex(index, command);
  if (copying_ || !index.isValid() || index.row() == row_before) return;
  list_.SetFocusedRow(static_cast<std::size_t>(index.row()));
  emit Changed();
}

void ListSelection::reset() {
  const QScopedValueRollback guard(copying_, true);
  QItemSelectionModel::reset();
}

}  // namespace tunemeadow
