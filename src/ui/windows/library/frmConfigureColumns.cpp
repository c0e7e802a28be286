// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/library/frmConfigureColumns.h"

#include <QHeaderView>
#include <algorithm>

#include "ui/kit/help_pages.h"
#include "ui/kit/placing.h"
#include "ui/kit/qt_text.h"
#include "ui_frmConfigureColumns.h"

namespace tunemeadow {
namespace {

constexpr int kColumnRole = Qt::UserRole;  // column of the list

/// Sorts as the result list sorts texts: without regard to case.
class FieldItem : public QTreeWidgetItem {
 public:
  using QTreeWidgetItem::QTreeWidgetItem;

  bool operator<(const QTreeWidgetItem& other) const override {
    return text(0).compare(other.text(0), Qt::CaseInsensitive) < 0;
  }
};

const QString& CheckCaption(bool check) {
  static const QString kCheck = QStringLiteral("Check &all");
  static const QString kUncheck = QStringLiteral("Uncheck &all");
  return check ? kCheck : kUncheck;
}

}  // namespace

frmConfigureColumns::frmConfigureColumns(const Session& session, ShellOpener& shell,
                                         Interaction& interaction, const ColumnLayout& layout,
                                         QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmConfigureColumns>()), layout_(layout) {
  ui_->setupUi(this);
  FillList();
  connect(ui_->cmdCheck, &QPushButton::clicked, this, &frmConfigureColumns::cmdCheck_Click);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmConfigureColumns::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->cmdHelp, &QPushButton::clicked, this, [&session, &shell, &interaction] {
    OpenHelpPage(session, "configurecolumns.html", shell, interaction);
  });
  PlaceOverParent(*this);
}

frmConfigureColumns::~frmConfigureColumns() = default;

void frmConfigureColumns::FillList() {
  const auto shown = ShownColumns(layout_);
  for (std::size_t column = 0; column < kListColumns; ++column) {
    auto* item = new FieldItem(ui_->ListView1, {ToQt(ListColumn(column).caption)});
    item->setData(0, kColumnRole, static_cast<int>(column));
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(0, shown[column] ? Qt::Checked : Qt::Unchecked);
  }
  ui_->ListView1->setCurrentItem(ui_->ListView1->topLevelItem(0));
  // The columns stand in their own order until a click on the header sorts them.
  ui_->ListView1->header()->setSortIndicator(-1, Qt::AscendingOrder);
  ui_->ListView1->setSortingEnabled(true);
  const bool none = std::find(shown.begin(), shown.end(), true) == shown.end();
  ui_->cmdCheck->setText(CheckCaption(none));
}

void frmConfigureColumns::cmdOK_Click() {
  std::array<bool, kListColumns> checked{};
  for (int row = 0; row < ui_->ListView1->topLevelItemCount(); ++row) {
    const QTreeWidgetItem* item = ui_->ListView1->topLevelItem(row);
    const auto column = static_cast<std::size_t>(item->data(0, kColumnRole).toInt());
    checked[column] = item->checkState(0) == Qt::Checked;
  }
  ShowColumns(layout_, checked);
  accept();
}

void frmConfigureColumns::cmdCheck_Click() {
  const bool check = ui_->cmdCheck->text() == CheckCaption(true);
  for (int row = 0; row < ui_->ListView1->topLevelItemCount(); ++row) {
    ui_->ListView1->topLevelItem(row)->setCheckState(0, check ? Qt::Checked : Qt::Unchecked);
  }
  ui_->cmdCheck->setText(CheckCaption(!check));
}

}  // namespace tunemeadow
