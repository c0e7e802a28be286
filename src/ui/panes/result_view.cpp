// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/result_view.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include "ui/kit/qt_text.h"
#include "ui/panes/list_delegate.h"
#include "ui/panes/list_model.h"
#include "ui/panes/list_selection.h"
#include "ui/panes/list_style.h"

namespace tunemeadow {
namespace {

constexpr int kHintDelayMs = 300;
constexpr int kHintMargin = 24;
constexpr int kIconPixels = 16;
constexpr int kSmallestSection = 24;

}  // namespace

ResultView::ResultView(ResultList& list, const QString& name, Clipboard& clipboard, QWidget* parent)
    : QTreeView(parent),
      list_(list),
      clipboard_(clipboard),
      stored_layout_(StandardColumnLayout()) {
  const bool playlist = name == QLatin1String("ListView3");
  setObjectName(name);
  name_for_reader_ = playlist ? "Tracks of the playlist" : "Tracks";
  setAccessibleName(name_for_reader_);
  model_ = new ListModel(list, playlist ? ListKind::kPlaylist : ListKind::kTracks, this);
  setModel(model_);
  QItemSelectionModel* const standard_selection = selectionModel();
  selection_ = new ListSelection(list, *model_, this);
  setSelectionModel(selection_);
  delete standard_selection;
  setItemDelegate(new ListDelegate(list, this));
  auto* const list_style = new ListStyle;
  list_style->setParent(this);
  setStyle(list_style);
  header()->setStyle(list_style);
  connect(selection_, &ListSelection::Changed, this, [this] {
    untold_ = true;
    viewport()->update();
  });
  connect(this, &QTreeView::doubleClicked, this,
          [this](const QModelIndex& index) { emit ItemDoubleClicked(index.row()); });
  hint_timer_.setSingleShot(true);
  connect(&hint_timer_, &QTimer::timeout, this, &ResultView::ShowHint);
  SetUpBehaviour();
  SetUpHeader();
  SetLayout(stored_layout_);
  ShowHintLater();
}

void ResultView::SetUpBehaviour() {
  setUniformRowHeights(true);
  setRootIsDecorated(false);
  setIndentation(0);
  setItemsExpandable(false);
  setExpandsOnDoubleClick(false);
  setAllColumnsShowFocus(true);
  setAlternatingRowColors(true);
  setIconSize(QSize(kIconPixels, kIconPixels));
  setSelectionMode(ExtendedSelection);
  setSelectionBehavior(SelectRows);
  setEditTriggers(NoEditTriggers);
  setHorizontalScrollMode(ScrollPerPixel);
  setDragEnabled(true);
  setAcceptDrops(true);
  setDropIndicatorShown(false);
}

void ResultView::SetUpHeader() {
  QHeaderView& columns = *header();
  columns.setSectionsMovable(true);
  columns.setFirstSectionMovable(true);
  columns.setSectionsClickable(true);
  columns.setStretchLastSection(false);
  columns.setMinimumSectionSize(kSmallestSection);
  columns.setSortIndicatorShown(true);
  columns.setContextMenuPolicy(Qt::CustomContextMenu);
  KeepHeaderHeight();
  ShowSortMark();
  connect(&columns, &QHeaderView::sectionClicked, this, [this](int column) {
    emit HeaderClicked(column);
    ShowSortMark();  // the header has turned its arrow by itself, whether or not anybody has sorted
  });
  connect(&columns, &QHeaderView::customContextMenuRequested, this, [this](const QPoint& where) {
    emit HeaderContextMenuRequested(header()->mapToGlobal(where));
  });
  connect(&columns, &QHeaderView::sectionHandleDoubleClicked, this,
          [this](int column) { AutoSizeColumns({column}); });
  const auto changed = [this] {
    if (!laying_out_) emit ColumnsChanged();
  };
  connect(&columns, &QHeaderView::sectionResized, this, changed);
  connect(&columns, &QHeaderView::sectionMoved, this, changed);
}

/// A header whose sections are all hidden would shrink to nothing, and with it the way back.
void ResultView::KeepHeaderHeight() {
  QStyleOptionHeader option;
  option.initFrom(header());
  option.text = QStringLiteral("X");
  header()->setMinimumHeight(
      style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), header()).height());
}

void ResultView::Freeze() {
  frozen_ = true;
  setUpdatesEnabled(false);
}

void ResultView::Thaw() {
  model_->ShowRows();
  untold_ = false;
  focus_is_chosen_ = false;
  pressed_row_ = -1;
  verticalScrollBar()->setValue(0);
  ShowSortMark();
  ShowSelection();
  setAccessibleName(QStringLiteral("%1, %2").arg(name_for_reader_).arg(list_.RowCount()));
  ShowHintLater();
  if (frozen_) setUpdatesEnabled(true);
  frozen_ = false;
}

void ResultView::ShowSelection() {
  selection_->ShowList(FirstVisibleColumn());
  untold_ = false;
  viewport()->update();
}

void ResultView::RowChanged(int row) { model_->RowChanged(row); }

void ResultView::Sort(int column) {
  const QString caption = model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  mLVSort(list_, column + 1, static_cast<int>(SortKindOf(FromQt(caption))));
  ShowOrder();
}

void ResultView::ShowOrder() {
  const QRect focused = visualRect(currentIndex());
  const bool follow =
      focus_is_chosen_ && focused.isValid() && viewport()->rect().intersects(focused);
  const int place = verticalScrollBar()->value();
  selection_->reset();  // else Qt would take note of each selected row
  model_->RowsReordered();
  ShowSortMark();
  ShowSelection();
  if (!follow) verticalScrollBar()->setValue(place);
}

void ResultView::ShowSortMark() {
  const auto column = list_.SortColumn();
  header()->setSortIndicator(column ? static_cast<int>(*column) : -1,
                             list_.SortAscending() ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void ResultView::SetDragPath(std::function<std::string(std::size_t)> path_of_row) {
  path_of_row_ = std::move(path_of_row);
}

void ResultView::ShowHintLater() {
  hint_shown_ = false;
  if (model_->rowCount() == 0) {
    hint_timer_.start(kHintDelayMs);
  } else {
    hint_timer_.stop();
  }
}

/// Not while the list is empty only because a search has just begun.
void ResultView::ShowHint() {
  if (QApplication::overrideCursor() != nullptr) {
    hint_timer_.start(kHintDelayMs);
    return;
  }
  hint_shown_ = true;
  viewport()->update();
}

void ResultView::scrollTo(const QModelIndex& index, ScrollHint hint) {
  // Rows are what the person moves through: the columns in sight stay.
  const int place = horizontalScrollBar()->value();
  QTreeView::scrollTo(index, hint);
  horizontalScrollBar()->setValue(place);
}

void ResultView::selectAll() {
  const int rows = model_->rowCount();
  if (rows == 0) return;
  const QItemSelection all(model_->index(0, 0), model_->index(rows - 1, model_->columnCount() - 1));
  selection_->select(all, QItemSelectionModel::ClearAndSelect);
}

void ResultView::Announce(bool always) {
  if (!untold_ && !always) return;
  untold_ = false;
  focus_is_chosen_ = true;
  // A click beside the rows only takes the selection away: nobody clicked the focused row.
  if (list_.SelectedCount() == 0) {
    emit SelectionTakenAway();
    return;
  }
  if (!currentIndex().isValid()) return;
  int row = currentIndex().row();
  // Ctrl may have taken the focused row out of the selection, or moved the focus alone.
  if (list_.SelectedCount() == 1 && !list_.IsSelected(static_cast<std::size_t>(row))) {
    row = static_cast<int>(list_.SelectedRows().front());
  }
  emit ItemClicked(row);
}

/// The row with the focus, as if it were clicked. A selection of many rows stays what it is.
void ResultView::ChooseCurrentRow() {
  if (list_.SelectedCount() == 0 && currentIndex().isValid()) {
    selection_->select(currentIndex(), QItemSelectionModel::ClearAndSelect);
  }
  Announce(true);
}

void ResultView::mousePressEvent(QMouseEvent* event) {
  pressed_row_ = indexAt(event->position().toPoint()).row();
  pressed_on_selected_ =
      pressed_row_ >= 0 && list_.IsSelected(static_cast<std::size_t>(pressed_row_));
  QTreeView::mousePressEvent(event);
}

void ResultView::mouseReleaseEvent(QMouseEvent* event) {
  const int row = indexAt(event->position().toPoint()).row();
  const bool click = event->button() == Qt::LeftButton && row >= 0 && row == pressed_row_;
  QTreeView::mouseReleaseEvent(event);
  pressed_row_ = -1;  // the release after a double click is no click
  Announce(click);
}

void ResultView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    QTreeView::mouseDoubleClickEvent(event);  // a press, where the first click met another cell
  } else {
    mousePressEvent(event);
  }
}

void ResultView::keyPressEvent(QKeyEvent* event) {
  const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (event->matches(QKeySequence::Copy)) {
    CopySelection();
  } else if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
    ChooseCurrentRow();
    emit ReturnPressed();
  } else if (plain && event->key() == Qt::Key_Delete) {
    emit DeletePressed();
  } else if (plain && event->key() == Qt::Key_Escape && state() == NoState) {
    emit EscapePressed();
  } else {
    QTreeView::keyPressEvent(event);
    return;
  }
  event->accept();
}

void ResultView::keyReleaseEvent(QKeyEvent* event) {
  QTreeView::keyReleaseEvent(event);
  // A key that is held moves through the list without reading each file on the way.
  if (event->isAutoRepeat()) return;
  const bool goes_to_end = event->key() == Qt::Key_Home || event->key() == Qt::Key_End;
  if (goes_to_end && event->modifiers() == Qt::NoModifier) {
    ChooseCurrentRow();  // the first or the last row may be the current one already
  } else {
    Announce(false);
  }
}

void ResultView::contextMenuEvent(QContextMenuEvent* event) {
  Announce(false);
  QPoint where = event->globalPos();
  if (event->reason() == QContextMenuEvent::Keyboard) {
    const QRect row = visualRect(currentIndex()).intersected(viewport()->rect());
    where = viewport()->mapToGlobal(row.isValid() ? row.center() : QPoint(0, 0));
  }
  event->accept();
  emit ContextMenuRequested(where);
}

void ResultView::CopySelection() const {
  const std::vector<int> columns = VisibleColumns();
  QString text;
  for (const std::size_t row : list_.SelectedRows()) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (i > 0) text += QLatin1Char('\t');
      text += model_->LineText(static_cast<int>(row), columns[i]);
    }
    text += QLatin1Char('\n');
  }
  if (!text.isEmpty()) clipboard_.SetText(FromQt(text));
}

void ResultView::paintEvent(QPaintEvent* event) {
  QTreeView::paintEvent(event);
  PaintPlace();
  if (!hint_shown_ || !hint_) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  const QRect room = viewport()->rect().adjusted(kHintMargin, 0, -kHintMargin, 0);
  painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, ToQt(hint_()));
}

void ResultView::changeEvent(QEvent* event) {
  QTreeView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    KeepHeaderHeight();
  }
}

}  // namespace tunemeadow
