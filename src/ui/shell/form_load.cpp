// SPDX-License-Identifier: GPL-3.0-or-later
// The start and the end of the run, step by step in their order.
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QSplitter>
#include <QStandardPaths>
#include <algorithm>

#include "core/numbers.h"
#include "core/paths.h"
#include "editing/picture_panel.h"
#include "files/file_facts.h"
#include "library/start_up.h"
#include "platform/drives.h"
#include "playback/player_detection.h"
#include "run/catalogue.h"
#include "run/program_folder.h"
#include "run/window_state.h"
#include "store/backup.h"
#include "store/compact_copy.h"
#include "ui/kit/qt_text.h"
#include "ui/panes/bottom_strip.h"
#include "ui/panes/detail_panels.h"
#include "ui/panes/picture_pane.h"
#include "ui/panes/result_view.h"
#include "ui/panes/search_panels.h"
#include "ui/panes/tree_pane.h"
#include "ui/shell/frmStart.h"
#include "ui/windows/library/frmPreferences.h"
#include "ui/windows/library/frmStartInfos.h"
#include "ui/windows/library/frmTreeviewFilter.h"

namespace tunemeadow {
namespace {

constexpr int kStandardTreePixels = 230;

QSize ScreenPixels() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  return screen != nullptr ? screen->availableSize() : QSize(1024, 768);
}

/// Where a person's music is likely to lie: the folder of the desktop for it, else home.
std::string FolderOfMusic() {
  for (const auto place : {QStandardPaths::MusicLocation, QStandardPaths::HomeLocation}) {
    const QByteArray folder = QFile::encodeName(QStandardPaths::writableLocation(place));
    if (IsDirectory(folder.toStdString())) return WithTrailingSeparator(folder.toStdString());
  }
  return "/";
}

int Pixels(double twips) { return static_cast<int>(twips / kTwipsPerPixel); }

}  // namespace

bool frmStart::Form_Load() {
  interaction_.ShowLoading("Loading Properties...");
  LoadProperties();
  ApplyGeometry();
  FindCdDrive();
  FindPlayer();
  DetermineConnection(session_);
  BuildLists();
  interaction_.ShowLoading("Loading Database...");
  const std::string rolled_back = RollBackSentence(session_.journal.RollBack());
  CompactAndRepair();
  if (session_.preferences.lblConfigDB != kOtherDatabase && session_.preferences.chkBackup) {
    (void)MakeBackup(session_.preferences.lblConfigDB, session_.program_folder);
  }
  if (!OpenCatalogue()) return false;
  interaction_.ShowLoading("Loading Genres...");
  LoadGenresNEU();
  interaction_.ShowLoading("Loading Data...");
  CheckDatabase(session_.connection, interaction_);
  RefreshAllSearchitems(bench_);
  if (session_.first_run) {
    RefreshDemonstrationRow(session_, JoinPath(session_.program_folder, "monster.mp3"));
  }
  interaction_.HideLoading();
  show();
  windows_.search_panels->FocusFirst();
  interaction_.SetStatus("Ready.");
  FillList();
  if (session_.first_run) ShowFirstRun();
  if (!rolled_back.empty()) interaction_.SetStatus(rolled_back);
  return true;
}

void frmStart::LoadProperties() {
  const StoredValues stored = session_.ini.ReadSection(kConfigSection);
  session_.preferences = ReadPreferences(session_.ini);
  session_.success_messages = session_.preferences.chkWarnGlobal;
  session_.first_run = StoredValue(stored, "firstrun") != "1";
  windows_.preferences =
      std::make_unique<frmPreferences>(session_, interaction_, bench_.world, this);
  connect(windows_.preferences.get(), &frmPreferences::PreferencesChanged, this,
          &frmStart::ApplyPreferences);
  columns_ = ReadColumnLayout(stored);
  bench_.show_picture = StoredValue(stored, "chkPicShow") != "0";
  windows_.bottom_strip->SetPictureShown(bench_.show_picture);
  bench_.try_preview = StoredValue(stored, "chkPlayPreview") == "1";
  windows_.bottom_strip->SetTryPreview(bench_.try_preview);
  bench_.track_selection = StoredValue(stored, "chkTrackSelection") != "0";
  windows_.bottom_strip->SetTrackSelection(bench_.track_selection);
  const auto kind = ParseWhole(StoredValue(stored, "cboTreeSelector")).value_or(0);
  const bool known = kind >= 0 && kind < static_cast<std::int64_t>(kTreeKinds.size());
  bench_.tree.kind = known ? static_cast<TreeKind>(kind) : TreeKind::kLocation;
  windows_.tree_pane->ShowKind();
  windows_.SetPanesVisible(bench_, StoredValue(stored, "mnuHideShowSearchandDetails") != "False");
  // The start rules the other way round than the item click, which takes over at the first one.
  windows_.detail_panels->EnableComment(session_.preferences.chkAutoComment);
}

void frmStart::ApplyGeometry() {
  const StoredValues stored = session_.ini.ReadSection(kConfigSection);
  const QSize screen = ScreenPixels();
  const WindowState window =
      ReadWindowState(stored, screen.width() * kTwipsPerPixel, screen.height() * kTwipsPerPixel);
  resize(Pixels(window.width), Pixels(window.height));
  move(Pixels(window.left), Pixels(window.top));
  if (window.state == kWindowMaximized) setWindowState(Qt::WindowMaximized);
  const auto tree_width = ParseNumber(StoredValue(stored, "TreeView1.Width"));
  const bool fits = tree_width && *tree_width > 0 && Pixels(std::min(*tree_width, 1e6)) < width();
  const int tree_pixels = fits ? Pixels(*tree_width) : kStandardTreePixels;
  list_splitter_->setSizes({tree_pixels, std::max(1, width() - tree_pixels)});
  if (StoredValue(stored, "TreeView1.Visible") == "False") windows_.SetTreeVisible(bench_, false);
}

void frmStart::FindCdDrive() {
  if (session_.preferences.lblConfigCDROM.empty()) {
    session_.preferences.lblConfigCDROM = StoredDrive(bench_.world.drives.FirstOptical());
  }
}

void frmStart::FindPlayer() { DetectPlayer(session_, bench_.world.player_finder, interaction_); }

void frmStart::BuildLists() {
  windows_.list_view->SetLayout(columns_);
  windows_.playlist_view->SetLayout(StandardColumnLayout());
}

void frmStart::CompactAndRepair() {
  Preferences& preferences = session_.preferences;
  if (preferences.lblConfigDB == kOtherDatabase || !preferences.chkRepair) return;
  // What the tool left at the start before is taken over first: the tool that starts now writes to
  // the same name.
  TakeOverCompactCopy(preferences.lblConfigDB, session_.program_folder);
  if (!StartRepairTool(session_, bench_.world.processes, ExecutableFolder()))
    windows_.preferences->DisableRepair();
}

bool frmStart::OpenCatalogue() {
  for (;;) {
    try {
      session_.connection.Open(session_.connection_string);
      return true;
    } catch (const DatabaseError& error) {
      interaction_.HideLoading();
      interaction_.ShowMessage(OpenFailedBox(session_.preferences.lblConfigDB, error));
      session_.preferences.lblConfigDB.clear();
      if (!windows_.preferences->ChooseDatabase()) return false;
      session_.preferences.sConnString.clear();
      DetermineConnection(session_);
      session_.ini.SaveString(kConfigSection, "lblConfigDB", session_.preferences.lblConfigDB);
      interaction_.ShowLoading("Loading Database...");
    }
  }
}

void frmStart::LoadGenresNEU() { windows_.detail_panels->SetGenres({}); }

void frmStart::FillList() {
  if (session_.preferences.chkAlleEinlesen) {
    cmdSuchen(bench_);
  } else {
    bench_.current_view = "Database";
    interaction_.SetStatus("Ready.");
    bench_.tree.selected = {NodeKind::kRoot, "MYMP3S", {}};
  }
  UpdateTrackCount(bench_);
}

void frmStart::ShowFirstRun() {
  if (const auto row = bench_.ListView1.RowOfUid(1)) {
    bench_.ListView1.SelectOnly(*row);
    bench_.ListView1.SetFocusedRow(*row);
    windows_.list_view->ShowSelection();
    ListView1_ItemClick(bench_, *row);
  }
  session_.preferences.lblScan = FolderOfMusic();
  windows_.preferences->ShowPreferences();
  frmStartInfos welcome(session_, this);
  connect(&welcome, &frmStartInfos::PreferencesRequested, this,
          [this] { Run(CommandNamed("mnuPreferences"), context_); });
  welcome.exec();
  interaction_.SetStatus("Now it's recommended to scan your disk for mp3 files");
}

void frmStart::ApplyPreferences() {
  bench_.details.comment_enabled = !session_.preferences.chkAutoComment;
  if (bench_.details.enabled || bench_.details.save_all) {
    windows_.detail_panels->Show();
  } else {
    windows_.detail_panels->EnableComment(bench_.details.comment_enabled);
  }
  // Which tracks are archived, and so no locations of the tree, hangs on the tag.
  if (bench_.tree.nodes_tag != session_.preferences.txtCDTag) updatetreeview(bench_);
}

void frmStart::Form_Unload() {
  if (unloaded_) return;
  unloaded_ = true;
  RemovePictureFile(bench_);
  WindowState window;
  window.width = width() * kTwipsPerPixel;
  window.height = height() * kTwipsPerPixel;
  // With the frame, as it is moved at the start: else the window would wander at each of them.
  window.top = y() * kTwipsPerPixel;
  window.left = x() * kTwipsPerPixel;
  window.state = isMaximized()   ? kWindowMaximized
                 : isMinimized() ? kWindowMinimized
                                 : kWindowNormal;
  StoredValues values = WindowStateValues(window);
  if (QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
    // There, a window does not know its place: what is stored stays.
    std::erase_if(values,
                  [](const auto& value) { return value.first == "Top" || value.first == "Left"; });
  }
  values.emplace_back("chkTrackSelection", bench_.track_selection ? "1" : "0");
  values.emplace_back("cboTreeSelector", std::to_string(static_cast<int>(bench_.tree.kind)));
  if (!windows_.tree_pane->isHidden()) {
    values.emplace_back("TreeView1.Width",
                        std::to_string(windows_.tree_pane->width() * kTwipsPerPixel));
  }
  values.emplace_back("TreeView1.Visible", windows_.tree_pane->isHidden() ? "False" : "True");
  values.emplace_back("chkPlayPreview", bench_.try_preview ? "1" : "0");
  for (auto& value : ColumnLayoutPairs(windows_.list_view->Layout()))
    values.push_back(std::move(value));
  session_.ini.SaveStrings(kConfigSection, values);
  windows_.preferences.reset();
  if (windows_.treeview_filter != nullptr) windows_.treeview_filter->close();
  session_.connection.Close();
  emit Unloaded();
}

}  // namespace tunemeadow
