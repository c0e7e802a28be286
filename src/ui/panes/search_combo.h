// SPDX-License-Identifier: GPL-3.0-or-later
// A search field with a drop-down list that may hold fifty thousand values: nothing is completed
// inline, typed text is never added, texts are decoded only when they are shown.
#pragma once

#include <QComboBox>
#include <string>
#include <vector>

namespace tunemeadow {

class SearchCombo : public QComboBox {
  Q_OBJECT

 public:
  explicit SearchCombo(QWidget* parent = nullptr);

  /// Replaces the list; the text stays.
  void SetValues(std::vector<std::string> values);

 signals:
  /// Enter was pressed in the field.
  void SearchRequested();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace tunemeadow
