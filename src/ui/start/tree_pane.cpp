// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/start/tree_pane.h"

#include <QIcon>
#include <QShortcut>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "ui/support/qt_text.h"
#include "views/workbench.h"

namespace tunemeadow {

TreePane::TreePane(QWidget* parent) : QWidget(parent), tree_(new QTreeWidget(this)) {
  setObjectName("picTree");
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(tree_);
  tree_->setObjectName("TreeView1");
  tree_->setAccessibleName(tr("Library tree"));
  tree_->setHeaderHidden(true);
  tree_->setColumnCount(1);
  tree_->setMinimumWidth(80);
  root_ = new QTreeWidgetItem(tree_, {"MyMP3s"});
  root_->setIcon(0, QIcon::fromTheme("tunemeadow"));
  root_->setData(0, Qt::UserRole, "MYMP3S");
  database_ = new QTreeWidgetItem(root_, {"Database"});
  database_->setIcon(0, QIcon::fromTheme("database"));
  database_->setData(0, Qt::UserRole, "Database");
  root_->setExpanded(true);
  connect(tree_, &QTreeWidget::itemClicked, this, &TreePane::Click);
  auto* enter = new QShortcut(Qt::Key_Return, tree_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(enter, &QShortcut::activated, this, [this] { Click(tree_->currentItem()); });
}

void TreePane::Show(const TreeData& tree) {
  database_->setText(0, ToQt(tree.database_text));
  database_->setToolTip(0, database_->text(0));
}

void TreePane::SelectFirst() { tree_->setCurrentItem(root_); }

void TreePane::Click(QTreeWidgetItem* item) {
  if (item == database_) emit DatabaseClicked();
}

}  // namespace tunemeadow
