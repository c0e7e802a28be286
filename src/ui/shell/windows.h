// SPDX-License-Identifier: GPL-3.0-or-later
// The panes of the main window and the windows that live on beside it, for the commands.
#pragma once

#include <memory>

#include "views/workbench.h"

class QWidget;

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

struct Windows {
  Windows();
  ~Windows();
  Windows(const Windows&) = delete;
  Windows& operator=(const Windows&) = delete;

  // Children of the main window, there from its construction on.
  SearchPanels* search_panels = nullptr;
  CommandPane* command_pane = nullptr;
  DetailPanels* detail_panels = nullptr;
  PicturePane* picture_pane = nullptr;
  TreePane* tree_pane = nullptr;
  ResultView* list_view = nullptr;      ///< ListView1
  ResultView* playlist_view = nullptr;  ///< ListView3
  OrderBar* order_bar = nullptr;
  BottomStrip* bottom_strip = nullptr;
  QWidget* search_frame = nullptr;  ///< Frame1
  QWidget* detail_frame = nullptr;  ///< Frame2

  std::unique_ptr<frmPreferences> preferences;         ///< from the start to the end
  std::unique_ptr<frmTreeviewFilter> treeview_filter;  ///< made when it is first opened

  bool order_matters = false;  ///< the list of the playlist shows all of it

  [[nodiscard]] ResultView& ViewInView(const Workbench& bench) const noexcept;

  /// Search, details and picture, shown or hidden together.
  void SetPanesVisible(const Workbench& bench, bool visible);

  /// The tree; a shown one is renewed.
  void SetTreeVisible(Workbench& bench, bool visible);

  /// The place of the selected row of the playlist, in the order bar.
  void ShowOrderPlace(const Workbench& bench);
};

}  // namespace tunemeadow
