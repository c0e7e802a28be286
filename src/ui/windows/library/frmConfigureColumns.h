// SPDX-License-Identifier: GPL-3.0-or-later
// Which columns the result list shows.
#pragma once

#include <QDialog>
#include <memory>

#include "platform/shell_open.h"
#include "run/interaction.h"
#include "run/session.h"
#include "views/column_layout.h"

namespace Ui {
class frmConfigureColumns;
}

namespace tunemeadow {

class frmConfigureColumns : public QDialog {
  Q_OBJECT

 public:
  /// Shows the columns of `layout`, the visible ones checked. `session`, and `shell` and
  /// `interaction` for the help, must outlive the window.
  frmConfigureColumns(const Session& session, ShellOpener& shell, Interaction& interaction,
                      const ColumnLayout& layout, QWidget* parent = nullptr);
  ~frmConfigureColumns() override;

  /// The layout after OK: checked columns that were hidden are visible again, those not checked
  /// have the width 0. Before OK the layout as it came.
  [[nodiscard]] const ColumnLayout& Layout() const noexcept { return layout_; }

 private:
  void FillList();
  void cmdOK_Click();
  void cmdCheck_Click();

  std::unique_ptr<Ui::frmConfigureColumns> ui_;
  ColumnLayout layout_;
};

}  // namespace tunemeadow
