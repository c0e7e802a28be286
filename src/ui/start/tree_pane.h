// SPDX-License-Identifier: GPL-3.0-or-later
// The tree at the left: its root and the database with the count of its files.
#pragma once

#include <QWidget>

class QTreeWidget;
class QTreeWidgetItem;

namespace tunemeadow {

struct TreeData;

class TreePane : public QWidget {
  Q_OBJECT

 public:
  explicit TreePane(QWidget* parent = nullptr);

  void Show(const TreeData& tree);

  /// Selects the first node.
  void SelectFirst();

 signals:
  /// The node of the whole library was clicked, or Enter pressed on it.
  void DatabaseClicked();

 private:
  void Click(QTreeWidgetItem* item);

  QTreeWidget* tree_;
  QTreeWidgetItem* root_;
  QTreeWidgetItem* database_;
};

}  // namespace tunemeadow
