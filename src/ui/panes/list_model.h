// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a result list as Qt's views read them. Holds no text: a cell is decoded when it is
// asked for, which is when it is painted.
#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QString>
#include <cstddef>
#include <map>
#include <string>

#include "views/result_list.h"

namespace tunemeadow {

enum class ListKind {
  kTracks,   ///< ListView1
  kPlaylist  ///< ListView3: one caption differs
};

/// Forwards to a ResultList. The list says nothing when it changes: whoever changes it calls one of
/// the functions below. In between, rows that are gone read as empty.
class ListModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// `list` must outlive the model.
  ListModel(const ResultList& list, ListKind kind, QObject* parent = nullptr);

  /// The rows that the list holds now. Selection and current index of the views go.
  void ShowRows();

  /// The same rows in another order. Indexes stay where they are: who keeps one that is to follow
  /// its row finds the row again.
  void RowsReordered();
  void RowChanged(int row);

  /// Text of a cell as it is painted: one line, at most 300 characters.
  [[nodiscard]] QString ShownText(int row, int column) const;

  /// The whole text of a cell on one line, and with its line breaks.
  [[nodiscard]] QString LineText(int row, int column) const;
  [[nodiscard]] QString WholeText(int row, int column) const;

  /// False: the row's file could not be written, and the row does not look like the others.
  [[nodiscard]] bool IsWritten(int row) const;

  /// What a screen reader says of the row: "title, artist, album".
  [[nodiscard]] QString TrackText(int row) const;

  /// The same, behind the warning of a row whose file could not be written.
  [[nodiscard]] QString DescriptionOf(int row) const;

  /// Image of a file of this kind, told by the last three characters of its location; a warning for
  /// one that could not be written.
  [[nodiscard]] QIcon RowIcon(int row) const;

  /// Whether texts of this column stand at the right.
  [[nodiscard]] static bool IsNumber(int column) noexcept;

  [[nodiscard]] QModelIndex index(int row, int column,
                                  const QModelIndex& parent = {}) const override;
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;

  /// Text, image (first column only), alignment, tool tip (the whole text, as rich text that shows
  /// it literally) and the text for screen readers. A row whose file could not be written is italic
  /// and says so in tool tip and description.
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

 private:
  [[nodiscard]] std::string_view CellBytes(int row, int column) const noexcept;

  const ResultList& list_;
  const ListKind kind_;
  int rows_ = 0;
  mutable std::map<std::string, QIcon, std::less<>> icons_;  ///< by key; grows by file type
};

}  // namespace tunemeadow
