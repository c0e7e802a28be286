// SPDX-License-Identifier: GPL-3.0-or-later
// The options of an import. The dialog shows the settings of the same names and brings them back on
// OK; the import itself reads the preferences of the session.
#pragma once

#include <QDialog>
#include <memory>

#include "platform/shell_open.h"
#include "run/interaction.h"
#include "run/session.h"

namespace Ui {
class frmImport;
}

namespace tunemeadow {

class frmImport : public QDialog {
  Q_OBJECT

 public:
  /// `session`, `interaction` and `shell`, which opens the help, must outlive the window.
  frmImport(Session& session, Interaction& interaction, ShellOpener& shell,
            QWidget* parent = nullptr);
  ~frmImport() override;

 private:
  void cmdOK_Click();

  std::unique_ptr<Ui::frmImport> ui_;
  Session& session_;
  Interaction& interaction_;
};

}  // namespace tunemeadow
