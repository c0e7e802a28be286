// SPDX-License-Identifier: GPL-3.0-or-later
// The selection of a result list, at the seam to Qt. The ResultList holds it; whatever Qt's views
// or a screen reader select arrives here and goes there by ranges of rows.
#pragma once

#include <QItemSelectionModel>

#include "views/result_list.h"

namespace tunemeadow {

class ListModel;

/// Qt's own book of the selection is a copy for screen readers, kept while the selection is made of
/// few runs of rows; its cost grows with the square of their number, and a sort breaks a selection
/// into as many runs as it has rows. So nothing here asks isSelected(): ask the ResultList.
class ListSelection : public QItemSelectionModel {
  Q_OBJECT

 public:
  /// `list` must outlive the object.
  ListSelection(ResultList& list, ListModel& model, QObject* parent = nullptr);

  /// Takes over selection and focus from the list, which a command has changed. The current index
  /// gets the column given.
  void ShowList(int current_column);

  using QItemSelectionModel::select;
  void select(const QItemSelection& selection, SelectionFlags command) override;
  void setCurrentIndex(const QModelIndex& index, SelectionFlags command) override;

  /// Selects nothing. The focus stays where it is.
  void clear() override;

  /// Forgets the copy; the list keeps its selection. Called when the model is reset.
  void reset() override;

 signals:
  /// The view or a screen reader has changed the list's selection or its focused row.
  void Changed();

 private:
  void Apply(const QItemSelection& selection, SelectionFlags command);
  void CopyFromList();
  [[nodiscard]] QItemSelection RunsOfList() const;

  ResultList& list_;
  ListModel& model_;
  bool copying_ = false;  ///< what happens now is between Qt and its copy
};

}  // namespace tunemeadow
