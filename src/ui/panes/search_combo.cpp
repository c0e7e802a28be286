// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/search_combo.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QSignalBlocker>
#include <utility>

#include "ui/kit/qt_text.h"

namespace tunemeadow {
namespace {

class ValueModel : public QAbstractListModel {
 public:
  ValueModel(std::vector<std::string> values, QObject* parent)
      : QAbstractListModel(parent), values_(std::move(values)) {}

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(values_.size());
  }

  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) return {};
    return ToQt(values_[static_cast<std::size_t>(index.row())]);
  }

 private:
  std::vector<std::string> values_;
};

}  // namespace

SearchCombo::SearchCombo(QWidget* parent) : QComboBox(parent) {
  setEditable(true);
  setInsertPolicy(QComboBox::NoInsert);
  setCompleter(nullptr);
  // Measuring every entry of a long list would hold up the start.
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(6);
  auto* list = new QListView(this);
  list->setUniformItemSizes(true);
  list->setLayoutMode(QListView::Batched);
  list->setTextElideMode(Qt::ElideRight);
  setView(list);
  lineEdit()->setClearButtonEnabled(true);
}

void SearchCombo::SetValues(std::vector<std::string> values) {
  const QString kept = currentText();
  const QSignalBlocker quiet(this);
  setModel(new ValueModel(std::move(values), this));  // the old one is the combo's, and goes
  setCurrentIndex(-1);
  setEditText(kept);
}

void SearchCombo::keyPressEvent(QKeyEvent* event) {
  // The combo's own reaction to Enter would pick an entry; here it searches, once.
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    emit SearchRequested();
    event->accept();
    return;
  }
  QComboBox::keyPressEvent(event);
}

}  // namespace tunemeadow
