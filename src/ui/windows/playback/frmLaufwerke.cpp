// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/playback/frmLaufwerke.h"

#include "ui/kit/pick_list.h"
#include "ui/kit/qt_text.h"
#include "ui_frmLaufwerke.h"

namespace tunemeadow {
namespace {

QIcon IconOfDrive(DriveType type) {
  return QIcon::fromTheme(type == DriveType::kOptical ? "archives" : "drive-harddisk");
}

}  // namespace

frmLaufwerke::frmLaufwerke(const std::vector<Drive>& drives, const std::string& present,
                           Interaction& interaction, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmLaufwerke>()), interaction_(interaction) {
  ui_->setupUi(this);
  for (const Drive& drive : drives) {
    const std::string stored = StoredDrive(drive.root);
    AddPick(*ui_->List1,
            QStringLiteral("%1   (%2)").arg(PathForEye(stored), ToQt(DriveTypeText(drive.type))),
            stored, IconOfDrive(drive.type));
  }
  SelectPick(*ui_->List1, StoredDrive(present));
  SetUpPickList({*this, *ui_->List1, *ui_->cmdOK, *ui_->cmdCancel});
  connect(ui_->cmdFolder, &QPushButton::clicked, this, &frmLaufwerke::cmdFolder_Click);
}

frmLaufwerke::~frmLaufwerke() = default;

std::string frmLaufwerke::Chosen() const { return PickedValue(*ui_->List1); }

void frmLaufwerke::cmdFolder_Click() {
  const auto folder = interaction_.ChooseFolder("Choose CDROM", Chosen());
  if (!folder || folder->empty()) return;
  const std::string stored = StoredDrive(*folder);
  AddPick(*ui_->List1, PathForEye(stored), stored, QIcon::fromTheme("folder"));
  SelectPick(*ui_->List1, stored);
  ui_->cmdOK->setFocus();
}

}  // namespace tunemeadow
