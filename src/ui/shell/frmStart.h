// SPDX-License-Identifier: GPL-3.0-or-later
// The main window: a frame that holds panels. Its load is the start of the program, its unload the
// end. It owns the workbench that every command is handed.
#pragma once

#include <QMainWindow>
#include <memory>

#include "ui/shell/window_interaction.h"
#include "views/column_layout.h"
#include "views/workbench.h"

class QAction;
class QFrame;
class QHBoxLayout;
class QLabel;
class QMenu;
class QProgressBar;
class QPushButton;
class QSplitter;
class QToolButton;

namespace tunemeadow {

class BottomStrip;
class CommandPane;
class DetailPanels;
class frmPreferences;
class frmTreeviewFilter;
class OrderBar;
class PicturePane;
class ResultView;
class SearchPanels;
class TreePane;

class frmStart : public QMainWindow, private WorkbenchWatcher {
  Q_OBJECT

 public:
  /// Both must outlive the window.
  frmStart(Session& session, World& world);
  ~frmStart() override;

  /// The whole start, up to the shown window. False where the program is to end.
  [[nodiscard]] bool Form_Load();

  [[nodiscard]] Workbench& Bench() noexcept { return bench_; }

  // Commands of menus and buttons.
  void mnuFileImport_Click();
  void mnuPreferences_Click();
  void mnuExit_Click();
  void mnuExtrasTreeviewSearch_Click();
  void mnuHideShowSearchandDetails_Click();
  void mnuViewFields_Click();
  void mnuAutoSize_Click();
  void mnuKillAllTags_Click();
  void mnuKillID3v11Tag_Click();
  void mnuKillID3v2xTag_Click();
  void mnuKillLyrics3_Click();
  void mnuAddImagetoFile_Click();
  void mnuRemoveImagefromfile_Click();
  void mnuDelete_Click();
  void mnuExporttoPlaylist_Click();
  void mnuExporttoplsPlaylist_Click();
  void mnuPlaylistSave_Click();
  void mnuPlaylistAddItems_Click();
  void mnuToolsRandomPlaylist_Click();
  void mnuPlaylistUmbenennen_Click();
  void mnuPlaylistDelete_Click();
  void mnuExtrasDisk2CD_Click();
  void mnuItem3CDArchivloeschen_Click();
  void mnuPlay_Click();
  void cmdSpielen_Click();
  void cmdPlaySelection_Click();
  void mnuAddToWinampsplaylist_Click();
  void mnuPlaylistPlayAll_Click();
  void mnuItem3GesamtesArchivabspielen_Click();
  void mnuAmazoncom_Click();
  void mnucddbcom_Click();
  void mnuSearchCovers_Click();
  void mnusonicnet_Click();
  void cmdSpeichern_Click();
  void Command2_Click();
  void mnuHelpContents_Click();
  void mnuAbout_Click();
  void cmdSuchenExternClick();
  void cmdResetExternalClick();
  void ShowPanel(int index);

 signals:
  /// The window has done its unload; the program may end.
  void Unloaded();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  // Building, each panel by itself.
  void BuildPanes();
  QWidget* BuildSearchRow();
  QWidget* BuildDetailRow();
  QWidget* BuildListRow();
  void BuildDetailButtons(QWidget* frame);
  void BuildSaveButtons(QHBoxLayout& row);
  void BuildStatusBar();
  void BuildMenus();
  void BuildEditMenu();
  void BuildHistoryMenu(QMenu& menu);
  void BuildExportMenu();
  void BuildTreeMenus();
  void ConnectPanes();
  void ConnectDetails();
  void ConnectTree();
  void ConnectPlaylists();
  void ConnectPlaying();
  void ConnectList(ResultView& view);

  // Steps of the start, in form_load.cpp.
  void LoadProperties();
  void ApplyGeometry();
  void FindCdDrive();
  void FindPlayer();
  void BuildLists();
  void CompactAndRepair();
  [[nodiscard]] bool OpenCatalogue();
  void LoadGenresNEU();
  void FillList();
  void ShowFirstRun();
  void Form_Unload();

  // What the workbench tells.
  void ListCleared() override;
  void ListFilled() override;
  void RowChanged(std::size_t row) override;
  void OrderChanged() override;
  void SelectionSet() override;
  void SearchFieldsChanged() override;
  void SearchFieldsWanted() override;
  void HistoryChanged() override;
  void SearchItemsChanged() override;
  void TotalsChanged() override;
  void TreeChanged() override;
  void TreeNodeSelected() override;
  void DetailsChanged() override;
  void PictureChanged() override;
  void ListInViewChanged() override;

  // What the person does in the list.
  void SortBy(ResultView& view, int column);
  void ShowListMenu(const QPoint& where);
  void PrepareListMenu();
  void RunOnSelection(void (*command)(Workbench& bench));
  void FilesDropped(const std::vector<std::string>& paths);
  void ApplyPreferences();
  void SetTreeVisible(bool visible);
  void SetPanesVisible(bool visible);
  void ShowRecord(std::size_t row);
  void ShowSaveButton();
  void ShowTreeMenu(NodeKind kind, const QPoint& where);
  void RowsDropped(NodeKind kind, const std::string& name);
  void ShowOrderBar();
  void ShowOrderPlace();
  [[nodiscard]] bool MayBecomeMany();
  [[nodiscard]] ResultView& ViewInView() noexcept;

  Session& session_;
  WindowInteraction interaction_;
  Workbench bench_;

  SearchPanels* search_panels_ = nullptr;
  CommandPane* command_pane_ = nullptr;
  DetailPanels* detail_panels_ = nullptr;
  PicturePane* picture_pane_ = nullptr;
  TreePane* tree_pane_ = nullptr;
  ResultView* list_view_ = nullptr;
  ResultView* playlist_view_ = nullptr;
  OrderBar* order_bar_ = nullptr;
  BottomStrip* bottom_strip_ = nullptr;
  QSplitter* list_splitter_ = nullptr;
  QFrame* search_frame_ = nullptr;
  QFrame* detail_frame_ = nullptr;
  QToolButton* next_button_ = nullptr;
  QToolButton* previous_button_ = nullptr;
  QToolButton* seek_button_ = nullptr;
  QPushButton* save_button_ = nullptr;
  QLabel* status_label_ = nullptr;
  QProgressBar* progress_bar_ = nullptr;
  QMenu* list_menu_ = nullptr;
  QMenu* tree_menu_ = nullptr;      ///< mnuItem2
  QMenu* archive_menu_ = nullptr;   ///< mnuItem3
  QMenu* playlist_menu_ = nullptr;  ///< mnuItem4
  QAction* panes_action_ = nullptr;
  std::unique_ptr<frmPreferences> preferences_;
  frmTreeviewFilter* treeview_filter_ = nullptr;  ///< made when it is first opened
  ColumnLayout columns_;
  bool order_matters_ = false;  ///< the list of the playlist shows all of it
  bool unloaded_ = false;
};

}  // namespace tunemeadow
