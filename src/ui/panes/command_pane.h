// SPDX-License-Identifier: GPL-3.0-or-later
// Frame5: the buttons beside the search panels. "Panel 1..3" exchange a search panel and a detail
// panel at once. cmdSuchen and cmdReset are connected by whoever has the commands.
#pragma once

#include <QFrame>
#include <array>

#include "views/quick_search.h"

class QAction;
class QMenu;
class QPushButton;
class QToolButton;

namespace tunemeadow {

class CommandPane : public QFrame {
  Q_OBJECT

 public:
  explicit CommandPane(QWidget* parent = nullptr);

  /// The button that looks pressed.
  void SetPanel(int index);

  /// mnuSuche(1..5); the menu of ButtonEx1, and for the menu bar.
  [[nodiscard]] const std::array<QAction*, SearchHistory::kPlaces>& HistoryActions()
      const noexcept {
    return history_;
  }
  void ShowHistory(const SearchHistory& history);

 signals:
  void PanelRequested(int index);
  void HistoryRequested(int index);  ///< 1 to 5

 private:
  void BuildHistory();
  QPushButton* AddButton(const char* name, const QString& caption, const QString& icon,
                         const QString& tip);

  std::array<QToolButton*, 3> switches_{};
  std::array<QAction*, SearchHistory::kPlaces> history_{};
};

}  // namespace tunemeadow
