// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/list_model.h"

#include <QApplication>
#include <QFont>
#include <QMimeDatabase>
#include <algorithm>
#include <limits>
#include <string_view>

#include "core/text.h"
#include "ui/kit/qt_text.h"
#include "views/row_icons.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kShownCharacters = 300;
constexpr std::size_t kShownBytes = 4 * kShownCharacters;
constexpr qsizetype kToolTipCharacters = 2000;
constexpr QLatin1String kUnwritten("The file could not be written and may hold older texts.");

/// Line breaks and other control characters as blanks; a carriage return before a line feed goes.
QString OnOneLine(QString text) {
  const auto is_control = [](QChar c) { return c.unicode() < 0x20 || c.unicode() == 0x7f; };
  if (std::none_of(text.cbegin(), text.cend(), is_control)) return text;
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  std::replace_if(text.begin(), text.end(), is_control, QLatin1Char(' '));
  return text;
}

/// Qt takes what looks like markup for markup, so all of it is made markup.
QString AsLiteralToolTip(QString text) {
  if (text.size() > kToolTipCharacters) text = text.left(kToolTipCharacters) + QChar(0x2026);
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  text = text.toHtmlEscaped();
  text.replace(QLatin1Char('\n'), QLatin1String("<br>"));
  return QLatin1String("<qt>") + text + QLatin1String("</qt>");
}

QVariant UnwrittenFont() {
  QFont font = QApplication::font("QAbstractItemView");
  font.setItalic(true);
  return font;
}

QIcon IconOfFileType(const std::string& key) {
  if (key == "MP3O") return QIcon::fromTheme("mp3o");
  // The names of file types are those of the desktop's icon theme, where it has them.
  const QMimeType type = QMimeDatabase().mimeTypeForFile(QLatin1String("x.") + ToQt(key).toLower(),
                                                         QMimeDatabase::MatchExtension);
  return QIcon::fromTheme(type.iconName(), QIcon::fromTheme("audio-file"));
}

}  // namespace

ListModel::ListModel(const ResultList& list, ListKind kind, QObject* parent)
    : QAbstractTableModel(parent), list_(list), kind_(kind) {
  ShowRows();
}

void ListModel::ShowRows() {
  beginResetModel();
  rows_ =
      static_cast<int>(std::min<std::size_t>(list_.RowCount(), std::numeric_limits<int>::max()));
  endResetModel();
}

void ListModel::RowsReordered() {
  emit layoutAboutToBeChanged({}, VerticalSortHint);
  emit layoutChanged({}, VerticalSortHint);
}

void ListModel::RowChanged(int row) {
  if (row >= 0 && row < rows_) emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

std::string_view ListModel::CellBytes(int row, int column) const noexcept {
  if (row < 0 || column < 0) return {};
  return list_.Cell(static_cast<std::size_t>(row), static_cast<std::size_t>(column));
}

QString ListModel::ShownText(int row, int column) const {
  const std::string_view cell = CellBytes(row, column);
  if (cell.size() <= kShownCharacters) return OnOneLine(ToQt(cell));
  return OnOneLine(ToQt(Left(cell.substr(0, kShownBytes), kShownCharacters)));
}

QString ListModel::LineText(int row, int column) const { return OnOneLine(WholeText(row, column)); }

QString ListModel::WholeText(int row, int column) const { return ToQt(CellBytes(row, column)); }

bool ListModel::IsWritten(int row) const {
  return row < 0 || list_.IsFileWritten(static_cast<std::size_t>(row));
}

QIcon ListModel::RowIcon(int row) const {
  if (!IsWritten(row)) return QIcon::fromTheme("dialog-warning");
  const std::string key = IconKey(CellBytes(row, static_cast<int>(IndexOf(TrackField::location))));
  const auto known = icons_.find(key);
  if (known != icons_.end()) return known->second;
  return icons_.emplace(key, IconOfFileType(key)).first->second;
}

bool ListModel::IsNumber(int column) noexcept {
  return ListColumn(static_cast<std::size_t>(column)).number;
}

QModelIndex ListModel::index(int row, int column, const QModelIndex& parent) const {
  const bool inside = row >= 0 && row < rows_ && column >= 0 && column < columnCount();
  return inside && !parent.isValid() ? createIndex(row, column) : QModelIndex();
}

int ListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kListColumns);
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  switch (role) {
    case Qt::DisplayRole:
      return ShownText(index.row(), index.column());
    case Qt::DecorationRole:
      return index.column() == 0 ? QVariant(RowIcon(index.row())) : QVariant();
    case Qt::TextAlignmentRole:
      if (!IsNumber(index.column())) return {};
      return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
    case Qt::ToolTipRole:
      if (!IsWritten(index.row())) return QString(kUnwritten);
      return AsLiteralToolTip(WholeText(index.row(), index.column()));
    case Qt::FontRole:
      return IsWritten(index.row()) ? QVariant() : UnwrittenFont();
    case Qt::AccessibleTextRole:
      return WholeText(index.row(), index.column());
    case Qt::AccessibleDescriptionRole:
      return DescriptionOf(index.row());
    default:
      return {};
  }
}

/// "Title, artist, album", as far as the row has them.
QString ListModel::TrackText(int row) const {
  QStringList parts;
  for (const TrackField field : {TrackField::Songname, TrackField::Artist, TrackField::album}) {
    const QString part = LineText(row, static_cast<int>(IndexOf(field)));
    if (!part.isEmpty()) parts.append(part);
  }
  return parts.join(QLatin1String(", "));
}

QString ListModel::DescriptionOf(int row) const {
  if (IsWritten(row)) return TrackText(row);
  return QString(kUnwritten) + QLatin1String(" ") + TrackText(row);
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const auto column = static_cast<std::size_t>(section);
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
      return ToQt(kind_ == ListKind::kPlaylist ? ListColumn(column).playlist_caption
                                               : ListColumn(column).caption);
    case Qt::TextAlignmentRole: {
      const Qt::Alignment side = IsNumber(section) ? Qt::AlignRight : Qt::AlignLeft;
      return QVariant::fromValue(side | Qt::AlignVCenter);
    }
    default:
      return {};
  }
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled |
         Qt::ItemNeverHasChildren;
}

}  // namespace tunemeadow
