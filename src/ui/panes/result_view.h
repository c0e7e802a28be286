// SPDX-License-Identifier: GPL-3.0-or-later
// The result list in the main window: ListView1 and ListView3. Shows a ResultList and tells what
// the person does with it; decides nothing.
#pragma once

#include <QPoint>
#include <QString>
#include <QTimer>
#include <QTreeView>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/clipboard.h"
#include "ui/kit/library_tree.h"
#include "views/column_layout.h"
#include "views/result_list.h"

class QMimeData;

namespace tunemeadow {

class ListModel;
class ListSelection;

/// Rows and columns count from 0. Selection and focus live in the ResultList: a person's go there
/// at once; after a command has changed them, call ShowSelection.
class ResultView : public QTreeView, public RowSource {
  Q_OBJECT

 public:
  /// `name` is ListView1, or ListView3 for the list of a playlist. `list` and `clipboard` must
  /// outlive the view.
  ResultView(ResultList& list, const QString& name, Clipboard& clipboard,
             QWidget* parent = nullptr);

  /// Draws nothing until Thaw: to be called before the rows of the list are exchanged.
  void Freeze();

  /// Shows the rows that the list holds now, from the top, with its selection, focus and sort mark.
  void Thaw();

  /// Shows selection and focus as they are in the list, and scrolls to the focused row.
  void ShowSelection();

  /// Shows the cells of the row again.
  void RowChanged(int row);

  /// Sorts the list by a column, or the other way round where it is the sorted one, and shows it.
  void Sort(int column);

  /// Shows the order that the list has got. The scroll position stays, unless the person's own
  /// focused row was in sight: then it stays in sight.
  void ShowOrder();

  /// Widths and places of the columns. A column of the width 0 is hidden. What a person has moved
  /// or resized is read back; widths that nobody touched come back as they were set.
  void SetLayout(const ColumnLayout& layout);
  [[nodiscard]] ColumnLayout Layout() const;

  /// Sizes every visible column to its content and header, at most 600 pixels. Measures the rows in
  /// sight, a sample of the others and the longest texts.
  void AutoSize();

  /// Puts the visible cells of the selected rows on the clipboard: a line a row, cells separated by
  /// tabs, in the order shown.
  void CopySelection() const;

  /// Which file a row offers to a drag, as a path in bytes; empty if there is none. Without one,
  /// the row's location.
  void SetDragPath(std::function<std::string(std::size_t row)> path_of_row);

  /// Lets the person drag the selected rows to another place of this list.
  void SetReorders(bool reorders) { reorders_ = reorders; }

  /// The selected rows as a list of files; null if no row offers one.
  [[nodiscard]] std::unique_ptr<QMimeData> DragData() const;

  /// Asked for the text in the middle of the list whenever it is painted empty.
  void SetHint(std::function<std::string_view()> hint) { hint_ = std::move(hint); }

  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
  void selectAll() override;

 signals:
  /// The person has clicked on the row, or has moved or selected with the keyboard and let the key
  /// go, or has pressed Enter, Space, Home or End on it. The list tells how many rows are selected;
  /// where it is one, that is the row.
  void ItemClicked(int row);
  void SelectionTakenAway();  ///< the same, where no row is selected any more
  void ItemDoubleClicked(int row);
  void ReturnPressed();
  void DeletePressed();  ///< Delete without a modifier
  void EscapePressed();

  void HeaderClicked(int column);

  /// By the mouse or by the keyboard's menu key. A click of the right button on another row has
  /// been told by ItemClicked before.
  void ContextMenuRequested(const QPoint& global);
  void HeaderContextMenuRequested(const QPoint& global);

  /// Local files and folders were dropped; paths are bytes. Comes when the drop is over, so that
  /// the other program does not wait.
  void FilesDropped(const std::vector<std::string>& paths);
  void UnsupportedDrop();  ///< a drop without a local file

  /// The selected rows were dropped before the row `before`, or after the last one. Comes when the
  /// drop is over.
  void RowsMoved(int before);

  /// The selected files were dragged out and taken.
  void DragCompleted();

  /// The person has moved, resized or auto-sized columns.
  void ColumnsChanged();

 protected:
  [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
      const QModelIndex& index, const QEvent* event = nullptr) const override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void startDrag(Qt::DropActions actions) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void SetUpBehaviour();
  void SetUpHeader();
  void KeepHeaderHeight();
  void ShowSortMark();
  void ShowHintLater();
  void ShowHint();
  void Announce(bool always);
  void ChooseCurrentRow();
  void AutoSizeColumns(const std::vector<int>& columns);
  void ApplyOrder(const ColumnLayout& layout);
  [[nodiscard]] bool TakesDrop(const QDropEvent& event) const;
  [[nodiscard]] bool IsReorder(const QDropEvent& event) const;
  [[nodiscard]] int PlaceAt(const QPoint& where) const;
  void MarkPlace(int before);
  void PaintPlace();
  [[nodiscard]] int FirstVisibleColumn() const;
  [[nodiscard]] std::vector<int> VisibleColumns() const;  ///< from the left
  [[nodiscard]] int ContentWidth(int column, const std::vector<int>& rows) const;
  [[nodiscard]] std::vector<int> SampledRows() const;
  [[nodiscard]] QItemSelectionModel::SelectionFlags CommandOfPress(const QModelIndex& index,
                                                                   const QMouseEvent& event) const;
  [[nodiscard]] QItemSelectionModel::SelectionFlags CommandOfRelease(
      const QModelIndex& index, const QMouseEvent& event) const;
  [[nodiscard]] QItemSelectionModel::SelectionFlags CommandOfKey(const QKeyEvent& event) const;

  ResultList& list_;
  Clipboard& clipboard_;
  ListModel* model_;
  ListSelection* selection_;
  std::function<std::string(std::size_t)> path_of_row_;
  ColumnLayout stored_layout_;
  std::function<std::string_view()> hint_;
  QString name_for_reader_;
  QTimer hint_timer_;
  bool hint_shown_ = false;
  bool frozen_ = false;
  bool laying_out_ = false;       ///< columns change by a command, not by the person
  bool untold_ = false;           ///< the person has changed selection or focus since ItemClicked
  bool focus_is_chosen_ = false;  ///< by the person, since the rows came
  bool pressed_on_selected_ = false;
  bool reorders_ = false;
  int marked_place_ = -1;  ///< the row before which the dragged ones would come; -1: none
  int pressed_row_ = -1;
};

}  // namespace tunemeadow
