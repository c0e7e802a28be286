// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/frmStart.h"

#include <QFrame>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QToolButton>

#include "editing/save.h"
#include "ui/kit/help_pages.h"
#include "ui/panes/bottom_strip.h"
#include "ui/panes/command_pane.h"
#include "ui/panes/detail_panels.h"
#include "ui/panes/order_bar.h"
#include "ui/panes/picture_pane.h"
#include "ui/panes/result_view.h"
#include "ui/panes/search_panels.h"
#include "ui/panes/tree_pane.h"
#include "ui/windows/library/frmPreferences.h"

namespace tunemeadow {
namespace {

QFrame* NamedFrame(const char* name) {
  auto* frame = new QFrame;
  frame->setObjectName(QLatin1String(name));
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
    if (detail_panels_->FieldsStand()) tunemeadow::cmdSpeichern_Click(bench);
  };
  BuildStatusBar();
  BuildPanes();
  BuildMenus();
  ConnectPanes();
  interaction_.SetMainWindow({this, status_label_, progress_bar_});
}

frmStart::~frmStart() = default;

void frmStart::BuildStatusBar() {
  status_label_ = new QLabel(this);
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
  statusBar()->addWidget(status_label_, 1);
  statusBar()->addPermanentWidget(progress_bar_);
}

void frmStart::BuildPanes() {
  auto* body = new QWidget(this);
  auto* column = new QVBoxLayout(body);
  column->addWidget(BuildSearchRow());
  column->addWidget(BuildListRow(), 1);
  bottom_strip_ = new BottomStrip(body);
  column->addWidget(bottom_strip_);
  column->addWidget(BuildDetailRow());
  setCentralWidget(body);
}

QWidget* frmStart::BuildSearchRow() {
  search_frame_ = NamedFrame("Frame1");
  auto* row = new QHBoxLayout(search_frame_);
  row->setContentsMargins(0, 0, 0, 0);
  search_panels_ = new SearchPanels(search_frame_);
  command_pane_ = new CommandPane(search_frame_);
  row->addWidget(search_panels_, 1, Qt::AlignTop);
  row->addWidget(command_pane_, 0, Qt::AlignTop);
  return search_frame_;
}

QWidget* frmStart::BuildListRow() {
  list_splitter_ = new QSplitter(Qt::Horizontal);
  list_splitter_->setObjectName("splTree");
  tree_pane_ = new TreePane(bench_.tree, list_splitter_);
  auto* lists = new QWidget(list_splitter_);
  auto* row = new QHBoxLayout(lists);
  row->setContentsMargins(0, 0, 0, 0);
  list_view_ = new ResultView(bench_.ListView1, "ListView1", bench_.world.clipboard, lists);
  playlist_view_ = new ResultView(bench_.ListView3, "ListView3", bench_.world.clipboard, lists);
  order_bar_ = new OrderBar(lists);
  playlist_view_->hide();
  order_bar_->hide();
  row->addWidget(list_view_);
  row->addWidget(playlist_view_);
  row->addWidget(order_bar_);
  list_splitter_->setStretchFactor(0, 0);
  list_splitter_->setStretchFactor(1, 1);
  list_splitter_->setChildrenCollapsible(false);
  return list_splitter_;
}

QWidget* frmStart::BuildDetailRow() {
  auto* whole = new QWidget;
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  detail_frame_ = NamedFrame("Frame2");
  auto* column = new QVBoxLayout(detail_frame_);
  column->setContentsMargins(0, 0, 0, 0);
  detail_panels_ = new DetailPanels(bench_.details, interaction_, detail_frame_);
  column->addWidget(detail_panels_, 1);
  BuildDetailButtons(detail_frame_);
  picture_pane_ = new PicturePane(whole);
  row->addWidget(detail_frame_, 1);
  row->addWidget(picture_pane_);
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
  auto* help = new QPushButton(QStringLiteral("?"), detail_frame_);
  help->setObjectName("cmdHelpSave");
  help->setAccessibleName("Help on saving");
  help->setToolTip("Opens the help on saving");
  help->setAutoDefault(false);
  help->setFixedWidth(help->sizeHint().height() + help->fontMetrics().averageCharWidth());
  connect(help, &QPushButton::clicked, this,
          [this] { OpenHelpPage(session_, "saving.html", bench_.world.shell); });
  save_button_ =
      new QPushButton(QIcon::fromTheme("save"), QStringLiteral("&Save all"), detail_frame_);
  save_button_->setObjectName("cmdSpeichern");
  save_button_->setDefault(true);
  save_button_->setMinimumWidth(save_button_->sizeHint().width());
  connect(save_button_, &QPushButton::clicked, this, &frmStart::cmdSpeichern_Click);
  auto* shortcut = new QShortcut(QKeySequence::Save, this);
  connect(shortcut, &QShortcut::activated, this, [this] { save_button_->click(); });
  row.addWidget(help);
  row.addWidget(save_button_);
  ShowSaveButton();
}

ResultView& frmStart::ViewInView() noexcept {
  return bench_.playlist_in_view ? *playlist_view_ : *list_view_;
}

}  // namespace tunemeadow
