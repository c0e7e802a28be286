// SPDX-License-Identifier: GPL-3.0-or-later
// The menus of the main window, as data. An entry stands here from the day on which its command
// works.
#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QMenuBar>
#include <array>
#include <span>

#include "ui/kit/qt_text.h"
#include "ui/panes/command_pane.h"
#include "ui/shell/frmStart.h"
#include "views/popup_menu.h"

namespace tunemeadow {
namespace {

/// Keeps the usual caption of an action that shows another one at times.
constexpr char kCaptionProperty[] = "usualCaption";

struct MenuEntry {
  const char* name;
  const char* caption;
  void (frmStart::*command)();  ///< null: a separator
  const char* icon = "";
  const char* shortcut = "";
};

constexpr std::array kFileMenu{
    MenuEntry{"mnuFileImport", "&Import files...", &frmStart::mnuFileImport_Click, "import",
              "Ctrl+I"},
    MenuEntry{"", "", nullptr},
    MenuEntry{"mnuPreferences", "&Preferences...", &frmStart::mnuPreferences_Click, "preferences",
              "Ctrl+,"},
    MenuEntry{"", "", nullptr},
    MenuEntry{"mnuExit", "E&xit", &frmStart::mnuExit_Click, "exit", "Ctrl+Q"},
};
constexpr std::array kExportMenu{
    MenuEntry{"mnuExporttoPlaylist", "to M3U &Playlist...", &frmStart::mnuExporttoPlaylist_Click},
    MenuEntry{"mnuExporttoplsPlaylist", "to P&LS Playlist...",
              &frmStart::mnuExporttoplsPlaylist_Click},
};
constexpr std::array kRemoveTagsMenu{
    MenuEntry{"mnuKillAllTags", "&All tags", &frmStart::mnuKillAllTags_Click},
    MenuEntry{"mnuKillID3v11Tag", "ID3v&1.x tag", &frmStart::mnuKillID3v11Tag_Click},
    MenuEntry{"mnuKillID3v2xTag", "ID3v&2.x tag", &frmStart::mnuKillID3v2xTag_Click},
    MenuEntry{"mnuKillLyrics3", "&LYRICS3 tag", &frmStart::mnuKillLyrics3_Click},
};
constexpr std::array kEditMenu{
    MenuEntry{"mnuAddImagetoFile", "Add &selected image to file(s)",
              &frmStart::mnuAddImagetoFile_Click, "picture"},
    MenuEntry{"mnuRemoveImagefromfile", "Remove &image from file(s)",
              &frmStart::mnuRemoveImagefromfile_Click},
    MenuEntry{"", "", nullptr},
    MenuEntry{"mnuDelete", "&Delete from database (Del)", &frmStart::mnuDelete_Click, "delete"},
};
constexpr std::array kSearchMenu{
    MenuEntry{"mnuSuchen", "Search &now", &frmStart::cmdSuchenExternClick, "search", "F5"},
    MenuEntry{"mnuReset", "&Clear fields", &frmStart::cmdResetExternalClick, "reset", "Ctrl+R"},
    MenuEntry{"", "", nullptr},
    MenuEntry{"mnuExtrasTreeviewSearch", "&Treeview Filter...",
              &frmStart::mnuExtrasTreeviewSearch_Click, "database", "Ctrl+Shift+T"},
    MenuEntry{"", "", nullptr},
};
constexpr std::array kViewMenu{
    MenuEntry{"mnuHideShowSearchandDetails", "&Hide/Show Search and Details",
              &frmStart::mnuHideShowSearchandDetails_Click, "", "F11"},
    MenuEntry{"mnuViewFields", "&Configure columns...", &frmStart::mnuViewFields_Click, "columns"},
    MenuEntry{"mnuAutoSize", "&Autosize columns", &frmStart::mnuAutoSize_Click, "", "Ctrl+Shift+A"},
};
constexpr std::array kPlayMenu{
    MenuEntry{"mnuPlay", "&Play", &frmStart::mnuPlay_Click, "play", "Ctrl+P"},
    MenuEntry{"mnuAddToWinampsplaylist", "&Add to player's playlist",
              &frmStart::mnuAddToWinampsplaylist_Click},
};
constexpr std::array kWebMenu{
    MenuEntry{"mnuAmazoncom", "Search &Amazon", &frmStart::mnuAmazoncom_Click},
    MenuEntry{"mnucddbcom", "Search &CDDB", &frmStart::mnucddbcom_Click},
    MenuEntry{"mnuSearchCovers", "Search c&overs", &frmStart::mnuSearchCovers_Click},
    MenuEntry{"mnusonicnet", "Search &music guide", &frmStart::mnusonicnet_Click},
};
constexpr std::array kPlaylistsMenu{
    MenuEntry{"mnuPlaylistSave", "&Save to playlist...", &frmStart::mnuPlaylistSave_Click,
              "playlists"},
    MenuEntry{"mnuPlaylistAddItems", "&Add to existing playlist...",
              &frmStart::mnuPlaylistAddItems_Click, "add"},
    MenuEntry{"mnuToolsRandomPlaylist", "&Random playlist...",
              &frmStart::mnuToolsRandomPlaylist_Click},
};
constexpr std::array kPlaylistNodeMenu{
    MenuEntry{"mnuPlaylistPlayAll", "&Play all", &frmStart::mnuPlaylistPlayAll_Click, "play"},
    MenuEntry{"mnuPlaylistUmbenennen", "&Rename...", &frmStart::mnuPlaylistUmbenennen_Click,
              "edit"},
    MenuEntry{"mnuPlaylistDelete", "&Delete...", &frmStart::mnuPlaylistDelete_Click, "delete"},
};
constexpr std::array kArchiveNodeMenu{
    MenuEntry{"mnuItem3GesamtesArchivabspielen", "&Play whole archive",
              &frmStart::mnuItem3GesamtesArchivabspielen_Click, "play"},
    MenuEntry{"mnuItem3CDArchivlöschen", "&Delete CD archive...",
              &frmStart::mnuItem3CDArchivloeschen_Click, "delete"},
};
constexpr std::array kToolsMenu{
    MenuEntry{"mnuExtrasDisk2CD", "&Move items to CD Archive...", &frmStart::mnuExtrasDisk2CD_Click,
              "archives"},
    MenuEntry{"mnuAudiogalaxy", "Audiogalaxy scrambler", &frmStart::Command2_Click},
};
constexpr std::array kHelpMenu{
    MenuEntry{"mnuHelpContents", "&Contents", &frmStart::mnuHelpContents_Click, "help", "F1"},
    MenuEntry{"mnuAbout", "&About...", &frmStart::mnuAbout_Click, "tunemeadow"},
};

void FillMenu(frmStart& window, QMenu& menu, std::span<const MenuEntry> entries) {
  for (const MenuEntry& entry : entries) {
    if (entry.command == nullptr) {
      menu.addSeparator();
      continue;
    }
    auto* action =
        new QAction(QIcon::fromTheme(entry.icon), QString::fromUtf8(entry.caption), &window);
    action->setObjectName(QString::fromUtf8(entry.name));
    action->setProperty(kCaptionProperty, action->text());
    action->setShortcut(QKeySequence(QLatin1String(entry.shortcut)));
    QObject::connect(action, &QAction::triggered, &window,
                     [&window, command = entry.command] { (window.*command)(); });
    menu.addAction(action);
  }
}

QMenu* AddMenu(frmStart& window, const char* name, const QString& caption,
               std::span<const MenuEntry> entries) {
  QMenu* menu = window.menuBar()->addMenu(caption);
  menu->setObjectName(QLatin1String(name));
  FillMenu(window, *menu, entries);
  return menu;
}

}  // namespace

void frmStart::BuildMenus() {
  AddMenu(*this, "mnuFile", QStringLiteral("&File"), kFileMenu);
  BuildExportMenu();
  BuildEditMenu();
  BuildHistoryMenu(*AddMenu(*this, "mnuSearch", QStringLiteral("Sea&rch"), kSearchMenu));
  AddMenu(*this, "mnuView", QStringLiteral("&View"), kViewMenu);
  for (QMenu* menu : {AddMenu(*this, "mnuPlayback", QStringLiteral("&Play"), kPlayMenu),
                      AddMenu(*this, "mnuPlaylists", QStringLiteral("Play&lists"), kPlaylistsMenu),
                      AddMenu(*this, "mnuTools", QStringLiteral("&Tools"), kToolsMenu)}) {
    connect(menu, &QMenu::aboutToShow, this, &frmStart::PrepareListMenu);
  }
  AddMenu(*this, "mnuWeb", QStringLiteral("&Web"), kWebMenu);
  AddMenu(*this, "mnuHelp", QStringLiteral("&Help"), kHelpMenu);
  list_menu_ = new QMenu(this);
  list_menu_->setObjectName("mnuItem1");
  tree_menu_ = new QMenu(this);
  tree_menu_->setObjectName("mnuItem2");
  BuildTreeMenus();
  tree_menu_->addAction(findChild<QAction*>("mnuExtrasTreeviewSearch"));
}

void frmStart::BuildExportMenu() {
  auto* menu = new QMenu(QStringLiteral("&Export"), this);
  menu->setObjectName("mnuExport");
  FillMenu(*this, *menu, kExportMenu);
  connect(menu, &QMenu::aboutToShow, this, &frmStart::PrepareListMenu);
  findChild<QMenu*>("mnuFile")->insertMenu(findChild<QAction*>("mnuPreferences"), menu);
}

void frmStart::BuildTreeMenus() {
  archive_menu_ = new QMenu(this);
  archive_menu_->setObjectName("mnuItem3");
  FillMenu(*this, *archive_menu_, kArchiveNodeMenu);
  playlist_menu_ = new QMenu(this);
  playlist_menu_->setObjectName("mnuItem4");
  FillMenu(*this, *playlist_menu_, kPlaylistNodeMenu);
}

void frmStart::BuildEditMenu() {
  QMenu* menu = AddMenu(*this, "mnuEdit", QStringLiteral("&Edit"), {});
  QMenu* removers = menu->addMenu(QIcon::fromTheme("remove"), QStringLiteral("Remove &tags"));
  removers->setObjectName("mnuRemoveTags");
  FillMenu(*this, *removers, kRemoveTagsMenu);
  FillMenu(*this, *menu, kEditMenu);
  // The context menu shares its entries: they stand for the selection in both.
  connect(menu, &QMenu::aboutToShow, this, &frmStart::PrepareListMenu);
}

void frmStart::PrepareListMenu() {
  list_menu_->clear();
  for (const PopupEntry& entry : PreparePopupMenu(bench_)) {
    if (entry.name.empty()) {
      list_menu_->addSeparator();
      continue;
    }
    const QString name = ToQt(entry.name);
    const auto* submenu = findChild<QMenu*>(name);
    auto* action = submenu != nullptr ? submenu->menuAction() : findChild<QAction*>(name);
    action->setEnabled(entry.enabled);
    if (entry.name == "mnuDelete") action->setVisible(entry.visible);  // in the menu bar as well
    if (const QVariant usual = action->property(kCaptionProperty); usual.isValid()) {
      action->setText(entry.caption.empty() ? usual.toString() : ToQt(entry.caption));
    }
    if (entry.visible) list_menu_->addAction(action);
  }
}

void frmStart::BuildHistoryMenu(QMenu& menu) {
  for (QAction* action : command_pane_->HistoryActions()) menu.addAction(action);
}

}  // namespace tunemeadow
