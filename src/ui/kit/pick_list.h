// SPDX-License-Identifier: GPL-3.0-or-later
// What the windows have in common in which a person picks one entry of a list.
#pragma once

#include <QDialog>
#include <QIcon>
#include <QListWidget>
#include <QPushButton>
#include <string>

namespace tunemeadow {

/// The controls of such a window: its list, its two buttons.
struct PickListControls {
  QDialog& window;
  QListWidget& list;
  QPushButton& ok;
  QPushButton& cancel;
  /// The first entry is selected unless another one is; OK is disabled while none is.
  bool needs_choice = true;
};

/// Wires them: OK, Enter and a double click accept, Cancel and Escape reject. The window gets room
/// for its longest entries, within bounds.
void SetUpPickList(const PickListControls& controls);

/// Adds an entry. `value` is bytes, `text` what is shown.
void AddPick(QListWidget& list, const QString& text, const std::string& value, const QIcon& icon);

/// Value of the selected entry; empty if there is none.
[[nodiscard]] std::string PickedValue(const QListWidget& list);

/// Selects the entry of that value; without one the selection stays.
void SelectPick(QListWidget& list, const std::string& value);

}  // namespace tunemeadow
