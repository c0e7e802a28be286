// SPDX-License-Identifier: GPL-3.0-or-later
// What mouse, keyboard and drags do to the list: the selection rules and the files that go in and
// out.
#include <QDrag>
#include <QDragEnterEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "platform/file_urls.h"
#include "ui/panes/list_selection.h"
#include "ui/panes/result_view.h"

namespace tunemeadow {
namespace {

constexpr char kUriListType[] = "text/uri-list";
constexpr int kDragIconPixels = 32;
constexpr int kPlaceLinePixels = 2;
constexpr char kRowsType[] = "application/x-tunemeadow-rows";

using Flags = QItemSelectionModel::SelectionFlags;

constexpr Flags kKeep = QItemSelectionModel::NoUpdate;
constexpr Flags kOnlyThis = QItemSelectionModel::ClearAndSelect;
constexpr Flags kAddThis = QItemSelectionModel::Select;
constexpr Flags kTakeThisOut = QItemSelectionModel::Deselect;
/// "Current" makes the view select from the row where the range began.
constexpr Flags kAddRange = QItemSelectionModel::SelectCurrent;
constexpr Flags kOnlyRange = QItemSelectionModel::Clear | QItemSelectionModel::SelectCurrent;

bool HasShift(const QInputEvent& event) { return event.modifiers().testFlag(Qt::ShiftModifier); }
bool HasCtrl(const QInputEvent& event) { return event.modifiers().testFlag(Qt::ControlModifier); }

std::string BytesOfMime(const QMimeData* mime) {
  if (mime == nullptr || !mime->hasFormat(QLatin1String(kUriListType))) return {};
  const QByteArray bytes = mime->data(QLatin1String(kUriListType));
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

}  // namespace

/// Never "Toggle": what a row is the list knows, and Qt's copy of the selection may not.
Flags ResultView::selectionCommand(const QModelIndex& index, const QEvent* event) const {
  if (event == nullptr) return kOnlyThis;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:  // a press in all but name, or it does not come here
      return CommandOfPress(index, *static_cast<const QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
      return CommandOfRelease(index, *static_cast<const QMouseEvent*>(event));
    case QEvent::MouseMove:
      return HasCtrl(*static_cast<const QMouseEvent*>(event)) ? kAddRange : kOnlyRange;
    case QEvent::KeyPress:
      return CommandOfKey(*static_cast<const QKeyEvent*>(event));
    default:
      return kKeep;
  }
}

Flags ResultView::CommandOfPress(const QModelIndex& index, const QMouseEvent& event) const {
  const bool held = HasShift(event) || HasCtrl(event);
  const bool right = event.button() == Qt::RightButton;
  if (!index.isValid()) return kKeep;
  if (right) return held || pressed_on_selected_ ? kKeep : kOnlyThis;
  if (HasShift(event)) return HasCtrl(event) ? kAddRange : kOnlyRange;
  // A press on a selected row may begin a drag of all of them; the release decides.
  if (pressed_on_selected_) return kKeep;
  return HasCtrl(event) ? kAddThis : kOnlyThis;
}

Flags ResultView::CommandOfRelease(const QModelIndex& index, const QMouseEvent& event) const {
  if (event.button() != Qt::LeftButton || HasShift(event) || state() == DragSelectingState ||
      index.row() != pressed_row_) {
    return kKeep;
  }
  if (!index.isValid()) return HasCtrl(event) ? kKeep : Flags(QItemSelectionModel::Clear);
  if (!pressed_on_selected_) return kKeep;
  return HasCtrl(event) ? kTakeThisOut : kOnlyThis;
}

Flags ResultView::CommandOfKey(const QKeyEvent& event) const {
  if (event.key() == Qt::Key_Space) {
    const int row = currentIndex().row();
    const bool selected = row >= 0 && list_.IsSelected(static_cast<std::size_t>(row));
    return HasCtrl(event) && selected ? kTakeThisOut : kAddThis;
  }
  if (HasShift(event)) return HasCtrl(event) ? kAddRange : kOnlyRange;
  return HasCtrl(event) ? kKeep : kOnlyThis;
}

std::unique_ptr<QMimeData> ResultView::DragData() const {
  std::vector<std::string> paths;
  for (const std::size_t row : list_.SelectedRows()) {
    paths.push_back(path_of_row_ ? path_of_row_(row)
                                 : std::string(list_.Cell(row, TrackField::location)));
  }
  const std::string uris = UriList(paths);
  if (uris.empty()) return nullptr;
  auto mime = std::make_unique<QMimeData>();
  mime->setData(QLatin1String(kUriListType),
                QByteArray(uris.data(), static_cast<qsizetype>(uris.size())));
  return mime;
}

/// As a copy and nothing else: a file manager that is offered a move would take the files away.
void ResultView::startDrag(Qt::DropActions /*actions*/) {
  if (list_.SelectedCount() > 0) {
    // Rows without a file of their own can still go to another place, or into a playlist.
    std::unique_ptr<QMimeData> mime = DragData();
    if (mime == nullptr) mime = std::make_unique<QMimeData>();
    mime->setData(QLatin1String(kRowsType), {});
    auto* drag = new QDrag(this);  // Qt deletes it
    drag->setMimeData(mime.release());
    drag->setPixmap(QIcon::fromTheme("audio-file").pixmap(kDragIconPixels));
    if (drag->exec(Qt::CopyAction) == Qt::CopyAction) emit DragCompleted();
  }
  Announce(false);
}

bool ResultView::IsReorder(const QDropEvent& event) const {
  return reorders_ && isEnabled() && event.source() == this;
}

int ResultView::PlaceAt(const QPoint& where) const {
  const QModelIndex index = indexAt(where);
  if (!index.isValid()) return model()->rowCount();
  const QRect row = visualRect(index);
  return where.y() < row.center().y() ? index.row() : index.row() + 1;
}

void ResultView::MarkPlace(int before) {
  if (marked_place_ == before) return;
  marked_place_ = before;
  viewport()->update();
}

void ResultView::PaintPlace() {
  if (marked_place_ < 0) return;
  const int rows = model()->rowCount();
  const bool behind = marked_place_ >= rows;
  const QRect row = visualRect(model()->index(behind ? rows - 1 : marked_place_, 0));
  const int y = behind ? row.bottom() : std::max(0, row.top() - 1);
  QPainter painter(viewport());
  painter.fillRect(0, y, viewport()->width(), kPlaceLinePixels,
                   palette().color(QPalette::Highlight));
}

bool ResultView::TakesDrop(const QDropEvent& event) const {
  // What has entered before a batch disabled the window can still be dropped. The lists' own rows
  // are in the catalogue already.
  return isEnabled() && qobject_cast<ResultView*>(event.source()) == nullptr;
}

void ResultView::dragEnterEvent(QDragEnterEvent* event) {
  // Anything is taken, so that the person is told when it holds no files.
  if (!TakesDrop(*event) && !IsReorder(*event)) return event->ignore();
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void ResultView::dragMoveEvent(QDragMoveEvent* event) {
  if (IsReorder(*event)) {
    QTreeView::dragMoveEvent(event);  // scrolls near the edges
    MarkPlace(PlaceAt(event->position().toPoint()));
  } else if (!TakesDrop(*event)) {
    return event->ignore();
  }
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void ResultView::dragLeaveEvent(QDragLeaveEvent* event) {
  QTreeView::dragLeaveEvent(event);
  MarkPlace(-1);
  event->accept();
}

void ResultView::dropEvent(QDropEvent* event) {
  if (IsReorder(*event)) {
    stopAutoScroll();
    MarkPlace(-1);
    // Nothing left the window: the rows must not count as handed to a player.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    const int before = PlaceAt(event->position().toPoint());
    QTimer::singleShot(0, this, [this, before] { emit RowsMoved(before); });
    return;
  }
  if (!TakesDrop(*event)) return event->ignore();
  event->setDropAction(Qt::CopyAction);
  event->accept();
  QTimer::singleShot(0, this, [this, paths = PathsOfUriList(BytesOfMime(event->mimeData()))] {
    if (paths.empty()) {
      emit UnsupportedDrop();
    } else {
      emit FilesDropped(paths);
    }
  });
}

}  // namespace tunemeadow
