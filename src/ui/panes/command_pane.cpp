// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/command_pane.h"

#include <QAction>
#include <QGridLayout>
#include <QIcon>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

#include "ui/kit/qt_text.h"

namespace tunemeadow {

CommandPane::CommandPane(QWidget* parent) : QFrame(parent) {
  setObjectName("Frame5");
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  const std::array captions = {QStringLiteral("Panel &1"), QStringLiteral("Panel &2"),
                               QStringLiteral("Panel &3")};
  for (int i = 0; i < 3; ++i) {
    auto* button = new QToolButton(this);
    button->setObjectName(QString("cmdSwitch_%1").arg(i));
    button->setText(captions[static_cast<std::size_t>(i)]);
    button->setAccessibleName(QStringLiteral("Panel %1").arg(i + 1));
    button->setToolTip(
        QStringLiteral("Shows panel %1 of the search and of the details").arg(i + 1));
    button->setCheckable(true);
    button->setAutoExclusive(true);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    button->setFocusPolicy(Qt::StrongFocus);
    connect(button, &QToolButton::clicked, this, [this, i] { emit PanelRequested(i); });
    grid->addWidget(button, 0, i);
    switches_[static_cast<std::size_t>(i)] = button;
  }
  switches_[0]->setChecked(true);
  auto* search = AddButton("cmdSuchen", QStringLiteral("Search &now"), "search",
                           QStringLiteral("Finds the tracks that fit every filled field (Enter)"));
  auto* reset = AddButton("cmdReset", QStringLiteral("&Clear fields"), "reset",
                          QStringLiteral("Empties every search field"));
  auto* history = AddButton("ButtonEx1", QStringLiteral("Histor&y"), "history",
                            QStringLiteral("Your last 5 searches"));
  grid->addWidget(search, 1, 0, 1, 3);
  auto* pair = new QHBoxLayout;
  pair->addWidget(reset, 1);
  pair->addWidget(history, 1);
  grid->addLayout(pair, 2, 0, 1, 3);
  BuildHistory();
  auto* menu = new QMenu(history);
  for (QAction* action : history_) menu->addAction(action);
  history->setMenu(menu);
}

QPushButton* CommandPane::AddButton(const char* name, const QString& caption, const QString& icon,
                                    const QString& tip) {
  auto* button = new QPushButton(QIcon::fromTheme(icon), caption, this);
  button->setObjectName(QLatin1String(name));
  button->setAccessibleName(QString(caption).remove(QLatin1Char('&')));
  button->setToolTip(tip);
  button->setAutoDefault(false);
  return button;
}

void CommandPane::BuildHistory() {
  for (std::size_t i = 0; i < history_.size(); ++i) {
    auto* action = new QAction(QStringLiteral("Empty Search"), this);
    action->setObjectName(QString("mnuSuche_%1").arg(i + 1));
    action->setEnabled(false);
    const int index = static_cast<int>(i) + 1;
    connect(action, &QAction::triggered, this, [this, index] { emit HistoryRequested(index); });
    history_[i] = action;
  }
}

void CommandPane::ShowHistory(const SearchHistory& history) {
  for (std::size_t i = 0; i < history_.size(); ++i) {
    history_[i]->setText(CaptionText(history.Caption(i + 1)));
    history_[i]->setEnabled(i < history.Entries().size());
  }
}

void CommandPane::SetPanel(int index) {
  switches_[static_cast<std::size_t>(index)]->setChecked(true);
}

}  // namespace tunemeadow
