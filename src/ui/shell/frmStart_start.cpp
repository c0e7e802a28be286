// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the main window in the start of the program, and its end.
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QSplitter>
#include <QStandardPaths>
#include <algorithm>
#include <vector>

#include "core/numbers.h"
#include "core/paths.h"
#include "editing/picture_panel.h"
#include "files/file_facts.h"
#include "library/start_up.h"
#include "run/program_folder.h"
#include "run/window_state.h"
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

constexpr int kFramePixels = 40;  ///< about the height of a title bar, which is not known yet

/// What windows may take of each screen, the primary one first.
std::vector<ScreenArea> ScreenAreas() {
  std::vector<ScreenArea> areas;
  const QScreen* const primary = QGuiApplication::primaryScreen();
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRectF area(screen->availableGeometry());
    const ScreenArea twips{.left = area.left() * kTwipsPerPixel,
                           .top = area.top() * kTwipsPerPixel,
                           .width = area.width() * kTwipsPerPixel,
                           .height = (area.height() - kFramePixels) * kTwipsPerPixel};
    areas.insert(screen == primary ? areas.begin() : areas.end(), twips);
  }
  return areas;
}

int Pixels(double twips) { return static_cast<int>(twips / kTwipsPerPixel); }

}  // namespace

/// What the start asks of the window.
struct frmStart::Starting : StartWindow {
  explicit Starting(frmStart& window_in) : window(window_in) {}

  void ApplyProperties(const StoredValues& stored) override;
  void BuildLists() override {
    window.windows_.list_view->SetLayout(window.columns_);
    window.windows_.playlist_view->SetLayout(StandardColumnLayout());
  }
  void DisableRepair() override { window.windows_.preferences->DisableRepair(); }
  bool ChooseDatabase() override { return window.windows_.preferences->ChooseDatabase(); }
  void LoadGenresNEU() override { window.windows_.detail_panels->SetGenres({}); }
  void ShowWindow() override {
    window.show();
    window.windows_.search_panels->FocusFirst();
  }
  std::string FolderOfMusic() override;
  void ShowWelcome() override;

  void ApplyGeometry(const StoredValues& stored);

  frmStart& window;
};

void frmStart::Starting::ApplyProperties(const StoredValues& stored) {
  Session& session = window.session_;
  Workbench& bench = window.bench_;
  window.windows_.preferences =
      std::make_unique<frmPreferences>(session, window.interaction_, bench.world, &window);
  connect(window.windows_.preferences.get(), &frmPreferences::PreferencesChanged, &window,
          &frmStart::ApplyPreferences);
  window.columns_ = ReadColumnLayout(stored);
  window.windows_.bottom_strip->SetPictureShown(bench.show_picture);
  window.windows_.bottom_strip->SetTryPreview(bench.try_preview);
  window.windows_.bottom_strip->SetTrackSelection(bench.track_selection);
  window.windows_.tree_pane->ShowKind();
  window.windows_.SetPanesVisible(window.bench_,
                                  StoredValue(stored, "mnuHideShowSearchandDetails") != "False");
  // The start rules the other way round than the item click, which takes over at the first one.
  window.windows_.detail_panels->EnableComment(session.preferences.chkAutoComment);
  ApplyGeometry(stored);
}

void frmStart::Starting::ApplyGeometry(const StoredValues& stored) {
  const QSize screen = ScreenPixels();
  WindowState state =
      ReadWindowState(stored, screen.width() * kTwipsPerPixel, screen.height() * kTwipsPerPixel);
  // It will not be smaller than its contents, whatever is stored.
  const QSize least = window.minimumSizeHint();
  state.width = std::max(state.width, static_cast<double>(least.width() * kTwipsPerPixel));
  state.height = std::max(state.height, static_cast<double>(least.height() * kTwipsPerPixel));
  state = BroughtIntoView(state, ScreenAreas());
  window.resize(Pixels(state.width), Pixels(state.height));
  window.move(Pixels(state.left), Pixels(state.top));
  if (state.state == kWindowMaximized) window.setWindowState(Qt::WindowMaximized);
  const auto tree_width = ParseNumber(StoredValue(stored, "TreeView1.Width"));
  const bool fits =
      tree_width && *tree_width > 0 && Pixels(std::min(*tree_width, 1e6)) < window.width();
  const int tree_pixels = fits ? Pixels(*tree_width) : kStandardTreePixels;
  window.list_splitter_->setSizes({tree_pixels, std::max(1, window.width() - tree_pixels)});
  if (StoredValue(stored, "TreeView1.Visible") == "False")
    window.windows_.SetTreeVisible(window.bench_, false);
}

/// The folder of the desktop for music, otherwise home.
std::string frmStart::Starting::FolderOfMusic() {
  for (const auto place : {QStandardPaths::MusicLocation, QStandardPaths::HomeLocation}) {
    const QByteArray folder = QFile::encodeName(QStandardPaths::writableLocation(place));
    if (IsDirectory(folder.toStdString())) return WithTrailingSeparator(folder.toStdString());
  }
  return "/";
}

void frmStart::Starting::ShowWelcome() {
  window.windows_.preferences->ShowPreferences();
  frmStartInfos welcome(window.session_, &window);
  connect(&welcome, &frmStartInfos::PreferencesRequested, &window,
          [this] { Run(CommandNamed("mnuPreferences"), window.context_); });
  welcome.exec();
}

bool frmStart::Form_Load() {
  Starting starting(*this);
  return StartUp(bench_, starting, ExecutableFolder());
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
