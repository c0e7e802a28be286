// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/frmStart.h"

#include <QCloseEvent>
#include <QFrame>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QToolButton>

#include "editing/save.h"
#include "ui/kit/combo_names.h"
#include "ui/panes/bottom_strip.h"
#include "ui/panes/command_pane.h"
#include "ui/panes/detail_panels.h"
#include "ui/panes/order_bar.h"
#include "ui/panes/picture_pane.h"
#include "ui/panes/result_view.h"
#include "ui/panes/search_panels.h"
#include "ui/panes/tree_pane.h"
#include "ui/shell/command_menus.h"
#include "ui/shell/connect_panes.h"
#include "ui/shell/sort_menu.h"
#include "ui/windows/library/frmPreferences.h"

namespace tunemeadow {
namespace {

/// Stays readable while the window takes no input: what it says belongs to the box that stands
/// then.
class StatusText : public QLabel {
 public:
  explicit StatusText(QWidget* parent) : QLabel(parent) { KeepReadable(); }

 protected:
  void changeEvent(QEvent* event) override {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) KeepReadable();
  }

 private:
  void KeepReadable() {
    const QColor text = palette().color(QPalette::Active, QPalette::WindowText);
    if (palette().color(QPalette::Disabled, QPalette::WindowText) == text) return;
    QPalette look;
    look.setColor(QPalette::Disabled, QPalette::WindowText, text);
    setPalette(look);
  }
};

QFrame* NamedFrame(const char* name, const QString& reader_name) {
  auto* frame = new QFrame;
  frame->setObjectName(QLatin1String(name));
  frame->setAccessibleName(reader_name);
  return frame;
}

QToolButton* ArrowButton(QWidget* parent, int index, const QString& name, const QString& icon,
                         const QKeySequence& shortcut) {
  auto* button = new QToolButton(parent);
  button->setObjectName(QString("cmdItemBlaetter_%1").arg(index));
  button->setIcon(QIcon::fromTheme(icon));
  button->setAccessibleName(name);
  button->setShortcut(shortcut);
  button->setToolTip(QString("%1 (%2)").arg(name, shortcut.toString(QKeySequence::NativeText)));
  button->setFocusPolicy(Qt::StrongFocus);
  button->setEnabled(false);
  return button;
}

}  // namespace

frmStart::frmStart(Session& session, World& world)
    : session_(session), interaction_(session), bench_(session, interaction_, world) {
  setObjectName("frmStart");
  setWindowTitle("Tunemeadow");
  setWindowIcon(QIcon::fromTheme("tunemeadow"));
  bench_.watcher = this;
  bench_.save_details = [this](Workbench& bench) {
    if (!windows_.detail_panels->FieldsStand()) return;
    RunAndTell(interaction_, [&bench] { SaveChanges(bench); });
  };
  BuildStatusBar();
  BuildPanes();
  BuildMenus(*this, context_);
  AddHistoryMenu();
  ConnectSortMenu(context_);
  ConnectPanes(context_);
  NameInnerFields(*this);
  interaction_.SetMainWindow({this, status_label_, progress_bar_});
}

frmStart::~frmStart() = default;

void frmStart::BuildStatusBar() {
  status_label_ = new StatusText(this);
  status_label_->setObjectName("StatusPanel1");
  status_label_->setTextFormat(Qt::PlainText);
  status_label_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  progress_bar_ = new QProgressBar(this);
  progress_bar_->setObjectName("ProgressBar1");
  progress_bar_->setAccessibleName("Progress");
  progress_bar_->setMaximumWidth(220);
  progress_bar_->hide();
  status_label_->setIndent(style()->pixelMetric(QStyle::PM_LayoutLeftMargin) / 2);
  statusBar()->setObjectName("StatusBar1");
  statusBar()->setAccessibleName("Status");
  statusBar()->addWidget(status_label_, 1);
  statusBar()->addPermanentWidget(progress_bar_);
}

void frmStart::BuildPanes() {
  auto* body = new QWidget(this);
  auto* column = new QVBoxLayout(body);
  column->addWidget(BuildSearchRow());
  column->addWidget(BuildListRow(), 1);
  windows_.bottom_strip = new BottomStrip(body);
  column->addWidget(windows_.bottom_strip);
  column->addWidget(BuildDetailRow());
  setCentralWidget(body);
}

void frmStart::AddHistoryMenu() {
  QMenu& menu = MenuOf(*this, Menu::kSearch);
  menu.addSeparator();
  for (QAction* action : windows_.command_pane->HistoryActions()) menu.addAction(action);
}

QWidget* frmStart::BuildSearchRow() {
  windows_.search_frame = NamedFrame("Frame1", "Search");
  auto* row = new QHBoxLayout(windows_.search_frame);
  row->setContentsMargins(0, 0, 0, 0);
  windows_.search_panels = new SearchPanels(windows_.search_frame);
  windows_.command_pane = new CommandPane(windows_.search_frame);
  row->addWidget(windows_.search_panels, 1, Qt::AlignTop);
  row->addWidget(windows_.command_pane, 0, Qt::AlignTop);
  return windows_.search_frame;
}

QWidget* frmStart::BuildListRow() {
  list_splitter_ = new QSplitter(Qt::Horizontal);
  list_splitter_->setObjectName("splTree");
  list_splitter_->setAccessibleName("Tree and list");
  windows_.tree_pane = new TreePane(bench_.tree, list_splitter_);
  auto* lists = new QWidget(list_splitter_);
  auto* row = new QHBoxLayout(lists);
  row->setContentsMargins(0, 0, 0, 0);
  windows_.list_view = new ResultView(bench_.ListView1, "ListView1", bench_.world.clipboard, lists);
  windows_.playlist_view =
      new ResultView(bench_.ListView3, "ListView3", bench_.world.clipboard, lists);
  windows_.order_bar = new OrderBar(lists);
  windows_.playlist_view->hide();
  windows_.order_bar->hide();
  row->addWidget(windows_.list_view);
  row->addWidget(windows_.playlist_view);
  row->addWidget(windows_.order_bar);
  list_splitter_->setStretchFactor(0, 0);
  list_splitter_->setStretchFactor(1, 1);
  list_splitter_->setChildrenCollapsible(false);
  return list_splitter_;
}

QWidget* frmStart::BuildDetailRow() {
  auto* whole = new QWidget;
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  windows_.detail_frame = NamedFrame("Frame2", "Details");
  auto* column = new QVBoxLayout(windows_.detail_frame);
  column->setContentsMargins(0, 0, 0, 0);
  windows_.detail_panels = new DetailPanels(bench_.details, interaction_, windows_.detail_frame);
  column->addWidget(windows_.detail_panels, 1);
  BuildDetailButtons(windows_.detail_frame);
  windows_.picture_pane = new PicturePane(whole);
  row->addWidget(windows_.detail_frame, 1);
  row->addWidget(windows_.picture_pane);
  return whole;
}

void frmStart::BuildDetailButtons(QWidget* frame) {
  auto* row = new QHBoxLayout;
  previous_button_ = ArrowButton(frame, 1, QStringLiteral("Previous track"), "previous",
                                 QKeySequence(Qt::CTRL | Qt::Key_Up));
  next_button_ = ArrowButton(frame, 0, QStringLiteral("Next track"), "next",
                             QKeySequence(Qt::CTRL | Qt::Key_Down));
  row->addWidget(previous_button_);
  row->addWidget(next_button_);
  seek_button_ = new QToolButton(frame);
  seek_button_->setObjectName("cmdSeekto");
  seek_button_->setIcon(QIcon::fromTheme("location"));
  seek_button_->setAccessibleName("Show in the tree");
  seek_button_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_T));
  seek_button_->setToolTip(QStringLiteral("Selects the track's place in the tree (%1)")
                               .arg(seek_button_->shortcut().toString(QKeySequence::NativeText)));
  seek_button_->setFocusPolicy(Qt::StrongFocus);
  seek_button_->setEnabled(false);
  row->addWidget(seek_button_);
  row->addStretch(1);
  BuildSaveButtons(*row);
  static_cast<QVBoxLayout*>(frame->layout())->addLayout(row);
}

void frmStart::BuildSaveButtons(QHBoxLayout& row) {
  auto* help = new QPushButton(QStringLiteral("?"), windows_.detail_frame);
  help->setObjectName("cmdHelpSave");
  help->setAccessibleName("Help on saving");
  help->setToolTip("Opens the help on saving");
  help->setAutoDefault(false);
  help->setFixedWidth(help->sizeHint().height() + help->fontMetrics().averageCharWidth());
  save_button_ =
      new QPushButton(QIcon::fromTheme("save"), QStringLiteral("&Save all"), windows_.detail_frame);
  save_button_->setObjectName("cmdSpeichern");
  save_button_->setDefault(true);
  save_button_->setMinimumWidth(save_button_->sizeHint().width());
  auto* shortcut = new QShortcut(QKeySequence::Save, this);
  connect(shortcut, &QShortcut::activated, this, [this] { save_button_->click(); });
  row.addWidget(help);
  row.addWidget(save_button_);
  ShowSaveButton();
}

/// A batch runs on this very thread: it must end before the connection goes from under it.
void frmStart::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (!MayBegin(session_)) {
    session_.CancelRequested = true;
    return;
  }
  bool may_go = false;
  RunAndTell(interaction_, [&] { may_go = AskToSaveChanges(bench_); });
  if (!may_go) return;
  Form_Unload();
  event->accept();
}

}  // namespace tunemeadow
