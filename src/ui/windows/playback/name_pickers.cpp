// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/playback/name_pickers.h"

#include "ui/kit/pick_list.h"
#include "ui/kit/qt_text.h"
#include "ui_name_pickers.h"

namespace tunemeadow {

NamePicker::NamePicker(const Look& look, const std::vector<std::string>& names, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::NamePicker>()) {
  ui_->setupUi(this);
  setObjectName(QLatin1String(look.object_name));
  setWindowTitle(QLatin1String(look.title));
  ui_->List1->setAccessibleName(QLatin1String(look.list_name));
  const QIcon icon = QIcon::fromTheme(QLatin1String(look.icon));
  for (const std::string& name : names) AddPick(*ui_->List1, ToQt(name), name, icon);
  SetUpPickList({*this, *ui_->List1, *ui_->cmdOK, *ui_->cmdCancel, look.needs_choice});
}

NamePicker::~NamePicker() = default;

std::string NamePicker::Chosen() const {
  return result() == Accepted ? PickedValue(*ui_->List1) : std::string();
}

frmShowPlaylists::frmShowPlaylists(const std::vector<std::string>& names, QWidget* parent)
    : NamePicker({.object_name = "frmShowPlaylists",
                  .title = "Choose a playlist",
                  .list_name = "Playlists",
                  .icon = "playlists",
                  .needs_choice = true},
                 names, parent) {}

frmChooseCDArchive::frmChooseCDArchive(const std::vector<std::string>& names, QWidget* parent)
    : NamePicker({.object_name = "frmChooseCDArchive",
                  .title = "Choose a CD Archive",
                  .list_name = "CD archives",
                  .icon = "archives",
                  .needs_choice = false},
                 names, parent) {}

}  // namespace tunemeadow
