// SPDX-License-Identifier: GPL-3.0-or-later
// Paints the cells of a result list in the style's own way. What is selected it asks the list.
#pragma once

#include <QStyledItemDelegate>

#include "views/result_list.h"

namespace tunemeadow {

class ListDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  /// `list` must outlive the object. Its model is a ListModel.
  explicit ListDelegate(const ResultList& list, QObject* parent = nullptr);

  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                               const QModelIndex& index) const override;

  /// A tool tip for a cell that shows less than its text.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  const ResultList& list_;
};

}  // namespace tunemeadow
