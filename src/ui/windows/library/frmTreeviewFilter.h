// SPDX-License-Identifier: GPL-3.0-or-later
// A browser over the library beside the main window: each of its lists is read when it is first
// clicked, and a click on an entry searches in the main window.
#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <unordered_set>

#include "views/treeview_filter.h"
#include "views/workbench.h"

namespace Ui {
class frmTreeviewFilter;
}

namespace tunemeadow {

class TreeModel;

class frmTreeviewFilter : public QDialog {
  Q_OBJECT

 public:
  /// `bench` must outlive the window.
  explicit frmTreeviewFilter(Workbench& bench, QWidget* parent = nullptr);
  ~frmTreeviewFilter() override;

  /// Opens the window with empty lists; one that is open comes to the front as it is.
  void ShowFilter();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void reject() override;

 private:
  void cmdClose_Click();
  void Click(const QModelIndex& index);
  void Load(const std::string& key);
  void LoadList(const std::string& key);
  void ShowNodes(const std::string& current);
  void ShowLoading(bool loading);

  Workbench& bench_;
  std::unique_ptr<Ui::frmTreeviewFilter> ui_;
  TreeviewFilter filter_;
  TreeModel* model_;
  std::unordered_set<std::string> expanded_;  ///< keys
};

}  // namespace tunemeadow
