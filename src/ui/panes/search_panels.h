// SPDX-License-Identifier: GPL-3.0-or-later
// The three search panels, of which one is in view.
#pragma once

#include <QStackedWidget>
#include <memory>
#include <vector>

#include "views/quick_search.h"

class QComboBox;
class QLineEdit;

namespace Ui {
class picSearch;
class picSearch2;
class picSearch3;
}  // namespace Ui

namespace tunemeadow {

class SearchCombo;
struct SearchItems;
struct TreeData;

class SearchPanels : public QStackedWidget {
  Q_OBJECT

 public:
  explicit SearchPanels(QWidget* parent = nullptr);
  ~SearchPanels() override;

  /// Controls to record and back.
  [[nodiscard]] SearchFields Read() const;
  void Show(const SearchFields& fields);

  /// Drop-down lists; texts in the fields stay.
  void SetItems(const SearchItems& items);
  void SetNames(const TreeData& tree);

  /// cboPlaylists and cboCDArchive with their labels, or the location in their room. What a person
  /// types while they are hidden empties them: what is out of sight must not narrow a search.
  void ShowNameCombos(bool shown);

  /// Focus on the first field of the panel in view, its text selected; on panel 1 that is
  /// cboSongname.
  void FocusFirst();

 signals:
  void SearchRequested();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct TextControl;
  void BindPanels();
  void BindEnter();
  void BindTyping();

  std::unique_ptr<Ui::picSearch> first_;
  std::unique_ptr<Ui::picSearch2> second_;
  std::unique_ptr<Ui::picSearch3> third_;
  std::vector<TextControl> controls_;
};

}  // namespace tunemeadow
