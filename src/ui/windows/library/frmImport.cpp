// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/library/frmImport.h"

#include "library/import_options.h"
#include "ui/kit/help_pages.h"
#include "ui/kit/path_field.h"
#include "ui/kit/preference_controls.h"
#include "ui_frmImport.h"

namespace tunemeadow {

frmImport::frmImport(Session& session, Interaction& interaction, ShellOpener& shell,
                     QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmImport>()),
      session_(session),
      interaction_(interaction) {
  ui_->setupUi(this);
  FillControls(*this, session_.preferences);
  connect(ui_->Command2, &QPushButton::clicked, this,
          [this] { ChooseFolderFor(*ui_->lblScan, interaction_, "Import files from"); });
  connect(ui_->Command1, &QPushButton::clicked, this,
          [this] { ChooseFolderFor(*ui_->lblPreviewPath, interaction_, "Save previews in"); });
  connect(ui_->Command3, &QPushButton::clicked, this,
          [this, &shell] { OpenHelpPage(session_, "import.html", shell, interaction_); });
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmImport::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  ui_->lblScan->setFocus();
}

frmImport::~frmImport() = default;

void frmImport::cmdOK_Click() {
  Preferences controls = session_.preferences;
  ReadControls(*this, controls);
  if (SaveImportOptions(session_, interaction_, controls)) accept();
}

}  // namespace tunemeadow
