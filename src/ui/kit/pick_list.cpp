// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/pick_list.h"

#include <algorithm>

#include "ui/kit/qt_text.h"

namespace tunemeadow {
namespace {

constexpr int kPickRole = Qt::UserRole;
constexpr int kLeastPickColumns = 36;  // characters
constexpr int kMostPickColumns = 80;
constexpr int kPickRowsInSight = 10;

QByteArray PickBytes(const std::string& value) {
  return {value.data(), static_cast<qsizetype>(value.size())};
}

}  // namespace

void SetUpPickList(const PickListControls& controls) {
  QListWidget& list = controls.list;
  QPushButton& ok = controls.ok;
  QDialog& window = controls.window;
  const QFontMetrics metrics = list.fontMetrics();
  const int unit = metrics.averageCharWidth();
  const int widest = list.sizeHintForColumn(0) + 4 * unit;
  list.setMinimumWidth(std::clamp(widest, kLeastPickColumns * unit, kMostPickColumns * unit));
  list.setMinimumHeight(kPickRowsInSight * metrics.lineSpacing());
  list.setTextElideMode(Qt::ElideMiddle);
  list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  QObject::connect(&ok, &QPushButton::clicked, &window, &QDialog::accept);
  QObject::connect(&controls.cancel, &QPushButton::clicked, &window, &QDialog::reject);
  QObject::connect(&list, &QListWidget::itemDoubleClicked, &window, &QDialog::accept);
  if (controls.needs_choice) {
    // The list marks its first entry anyway when it gets the focus, but does not select it.
    if (list.selectedItems().isEmpty()) list.setCurrentRow(0);
    const auto enable = [&list, &ok] { ok.setEnabled(!list.selectedItems().isEmpty()); };
    QObject::connect(&list, &QListWidget::itemSelectionChanged, &window, enable);
    enable();
  }
  list.setFocus();
}

void AddPick(QListWidget& list, const QString& text, const std::string& value, const QIcon& icon) {
  auto* item = new QListWidgetItem(icon, text, &list);
  item->setData(kPickRole, PickBytes(value));
}

std::string PickedValue(const QListWidget& list) {
  const QList<QListWidgetItem*> selected = list.selectedItems();
  if (selected.isEmpty()) return {};
  const QByteArray bytes = selected.front()->data(kPickRole).toByteArray();
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

void SelectPick(QListWidget& list, const std::string& value) {
  for (int row = 0; row < list.count(); ++row) {
    if (list.item(row)->data(kPickRole).toByteArray() == PickBytes(value)) list.setCurrentRow(row);
  }
}

}  // namespace tunemeadow
