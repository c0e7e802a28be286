// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/playback/frmChooseCDArchive.h"

#include "ui/kit/pick_list.h"
#include "ui/kit/qt_text.h"
#include "ui_frmChooseCDArchive.h"

namespace tunemeadow {

frmChooseCDArchive::frmChooseCDArchive(const std::vector<std::string>& names, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmChooseCDArchive>()) {
  ui_->setupUi(this);
  for (const std::string& name : names) {
    AddPick(*ui_->List1, ToQt(name), name, QIcon::fromTheme("archives"));
  }
  SetUpPickList({*this, *ui_->List1, *ui_->cmdOK, *ui_->cmdCancel, /*needs_choice=*/false});
}

frmChooseCDArchive::~frmChooseCDArchive() = default;

std::string frmChooseCDArchive::Chosen() const {
  return result() == Accepted ? PickedValue(*ui_->List1) : std::string();
}

}  // namespace tunemeadow
