// SPDX-License-Identifier: GPL-3.0-or-later
// The main window: a frame that holds panels. Its load is the start of the program, its unload the
// end. It owns the workbench that every command is handed.
#pragma once

#include <QMainWindow>
#include <memory>

#include "ui/shell/command_table.h"
#include "ui/shell/window_interaction.h"
#include "ui/shell/windows.h"
#include "views/column_layout.h"
#include "views/workbench.h"

class QHBoxLayout;
class QLabel;
class QProgressBar;
class QPushButton;
class QSplitter;
class QToolButton;

namespace tunemeadow {

class frmStart : public QMainWindow, private WorkbenchWatcher {
  Q_OBJECT

 public:
  /// Both must outlive the window.
  frmStart(Session& session, World& world);
  ~frmStart() override;

  /// The whole start, up to the shown window. False if the program is to end.
  [[nodiscard]] bool Form_Load();

  [[nodiscard]] Workbench& Bench() noexcept { return bench_; }

  /// What its commands are run with.
  [[nodiscard]] CommandContext& Commands() noexcept { return context_; }

 signals:
  /// The window has done its unload; the program may end.
  void Unloaded();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  // Building, each panel by itself.
  void BuildPanes();
  QWidget* BuildSearchRow();
  QWidget* BuildDetailRow();
  QWidget* BuildListRow();
  void BuildDetailButtons(QWidget* frame);
  void BuildSaveButtons(QHBoxLayout& row);
  void BuildStatusBar();
  void AddHistoryMenu();

  struct Starting;
  void Form_Unload();

  // What the workbench tells.
  void ListCleared() override;
  void ListFilled() override;
  void RowChanged(std::size_t row) override;
  void OrderChanged() override;
  void SelectionSet() override;
  void SearchFieldsChanged() override;
  void SearchFieldsWanted() override;
  void HistoryChanged() override;
  void SearchItemsChanged() override;
  void TotalsChanged() override;
  void TreeChanged() override;
  void TreeNodeSelected() override;
  void DetailsChanged() override;
  void PictureChanged() override;
  void ListInViewChanged() override;

  void ApplyPreferences();
  void ShowSaveButton();

  Session& session_;
  WindowInteraction interaction_;
  Workbench bench_;

  Windows windows_;
  CommandContext context_{bench_, windows_, *this};

  QSplitter* list_splitter_ = nullptr;
  QToolButton* next_button_ = nullptr;
  QToolButton* previous_button_ = nullptr;
  QToolButton* seek_button_ = nullptr;
  QPushButton* save_button_ = nullptr;
  QLabel* status_label_ = nullptr;
  QProgressBar* progress_bar_ = nullptr;
  ColumnLayout columns_;
  bool unloaded_ = false;
};

}  // namespace tunemeadow
