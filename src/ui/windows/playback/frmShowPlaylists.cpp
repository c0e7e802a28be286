// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/playback/frmShowPlaylists.h"

#include "ui/kit/pick_list.h"
#include "ui/kit/qt_text.h"
#include "ui_frmShowPlaylists.h"

namespace tunemeadow {

frmShowPlaylists::frmShowPlaylists(const std::vector<std::string>& names, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmShowPlaylists>()) {
  ui_->setupUi(this);
  for (const std::string& name : names) {
    AddPick(*ui_->List1, ToQt(name), name, QIcon::fromTheme("playlists"));
  }
  SetUpPickList({*this, *ui_->List1, *ui_->cmdOK, *ui_->cmdCancel});
}

frmShowPlaylists::~frmShowPlaylists() = default;

std::string frmShowPlaylists::Chosen() const {
  return result() == Accepted ? PickedValue(*ui_->List1) : std::string();
}

}  // namespace tunemeadow
