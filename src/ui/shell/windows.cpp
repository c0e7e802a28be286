// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/windows.h"

#include <QWidget>

#include "playback/playlists.h"
#include "ui/panes/bottom_strip.h"
#include "ui/panes/order_bar.h"
#include "ui/panes/picture_pane.h"
#include "ui/panes/result_view.h"
#include "ui/panes/tree_pane.h"
#include "ui/windows/library/frmPreferences.h"
#include "ui/windows/library/frmTreeviewFilter.h"

namespace tunemeadow {

Windows::Windows() = default;
Windows::~Windows() = default;

ResultView& Windows::ViewInView(const Workbench& bench) const noexcept {
  return bench.playlist_in_view ? *playlist_view : *list_view;
}

void Windows::SetPanesVisible(const Workbench& bench, bool visible) {
  search_frame->setVisible(visible);
  detail_frame->setVisible(visible);
  picture_pane->setVisible(visible && bench.show_picture);
}

void Windows::SetTreeVisible(Workbench& bench, bool visible) {
  tree_pane->setVisible(visible);
  bench.tree.visible = visible;
  bottom_strip->ShowTreeVisible(visible);
  if (visible) updatetreeview(bench);
}

void Windows::ShowOrderPlace(const Workbench& bench) {
  const ResultList& list = bench.ListView3;
  order_bar->ShowPlace(list.RowCount(), order_matters ? RowToOrder(list) : std::nullopt);
}

}  // namespace tunemeadow
