// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/sort_menu.h"

#include <QAction>
#include <QHeaderView>
#include <QMenu>
#include <cstddef>

#include "ui/panes/result_view.h"
#include "ui/shell/command_menus.h"
#include "ui/shell/gestures.h"
#include "ui/shell/windows.h"

namespace tunemeadow {
namespace {

void AddColumn(QMenu& menu, const ResultView& view, int column, CommandContext& context) {
  const QVariant caption = view.model()->headerData(column, Qt::Horizontal);
  QAction* const action = menu.addAction(caption.toString().replace('&', "&&"));
  action->setCheckable(true);
  const ResultList& list = context.bench.ListInView();
  action->setChecked(list.SortColumn() == static_cast<std::size_t>(column));
  QObject::connect(action, &QAction::triggered, &context.frame,
                   [column, &context] { Run(kHeaderClicked, context, column); });
}

void FillSortMenu(QMenu& menu, CommandContext& context) {
  menu.clear();
  const ResultView& view = context.windows.ViewInView(context.bench);
  const QHeaderView& header = *view.header();
  for (int place = 0; place < header.count(); ++place) {
    const int column = header.logicalIndex(place);
    if (!header.isSectionHidden(column)) AddColumn(menu, view, column, context);
  }
}

}  // namespace

void ConnectSortMenu(CommandContext& context) {
  QMenu& menu = MenuOf(context.frame, Menu::kSortBy);
  // With the menu that it stands in: an empty one does not open.
  QObject::connect(&MenuOf(context.frame, Menu::kView), &QMenu::aboutToShow, &context.frame,
                   [&menu, &context] { FillSortMenu(menu, context); });
}

}  // namespace tunemeadow
