// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/library/frmTreeviewFilter.h"

#include <QCloseEvent>
#include <QIcon>

#include "run/busy.h"
#include "run/command_run.h"
#include "ui/kit/help_pages.h"
#include "ui/kit/tree_model.h"
#include "ui_frmTreeviewFilter.h"

namespace tunemeadow {
namespace {

/// Width of the window in characters; the main window behind it stays in sight.
constexpr int kWidthInCharacters = 52;

QIcon IconOfFilterNode(const TreeNode& node) {
  struct Prefix {
    std::string_view key;
    const char* icon;
  };
  static constexpr Prefix kIcons[] = {{"DATABASE", "database"},    {"ArtistAlbum", "album"},
                                      {"AlbumArtist", "artist"},   {"Artist", "artist"},
                                      {"Album", "album"},          {"Genre", "genre"},
                                      {"LocationLIST|", "folder"}, {"Location", "location"}};
  for (const Prefix& prefix : kIcons) {
    if (node.key.starts_with(prefix.key)) return QIcon::fromTheme(QLatin1String(prefix.icon));
  }
  return {};
}

}  // namespace

frmTreeviewFilter::frmTreeviewFilter(Workbench& bench, QWidget* parent)
    : QDialog(parent),
      bench_(bench),
      ui_(std::make_unique<Ui::frmTreeviewFilter>()),
      filter_(bench.interaction),
      model_(new TreeModel(IconOfFilterNode, this)) {
  ui_->setupUi(this);
  ui_->TreeView1->setModel(model_);
  ui_->TreeView1->setAcceptDrops(false);
  ShowLoading(false);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &frmTreeviewFilter::cmdClose_Click);
  connect(ui_->cmdHelp, &QPushButton::clicked, this, [this] {
    OpenHelpPage(bench_.session, "treeviewsearch.html", bench_.world.shell, bench_.interaction);
  });
  connect(ui_->TreeView1, &QTreeView::clicked, this, &frmTreeviewFilter::Click);
  connect(ui_->TreeView1, &LibraryTree::EnterPressed, this, &frmTreeviewFilter::Click);
  connect(ui_->TreeView1, &QTreeView::expanded, this, [this](const QModelIndex& index) {
    const TreeNode* node = model_->NodeAt(index);
    if (node == nullptr) return;
    expanded_.insert(node->key);
    if (node->fills_later && node->child_count == 0) Load(std::string(node->key));
  });
  connect(ui_->TreeView1, &QTreeView::collapsed, this, [this](const QModelIndex& index) {
    if (const TreeNode* node = model_->NodeAt(index)) expanded_.erase(node->key);
  });
  filter_.on_row = [this](std::size_t row, std::size_t rows) {
    ui_->ProgressBar1->setMaximum(static_cast<int>(rows));
    ui_->ProgressBar1->setValue(static_cast<int>(row));
    bench_.interaction.Yield();
    if (bench_.session.CancelRequested) filter_.Cancel();  // the main window was to be closed
  };
}

frmTreeviewFilter::~frmTreeviewFilter() = default;

void frmTreeviewFilter::ShowFilter() {
  if (!isVisible()) {
    if (!filter_.Form_Load(bench_.session.connection_string)) return;
    expanded_ = {"DATABASE"};
    ShowNodes("DATABASE");
    if (const QWidget* parent = parentWidget()) {
      const QRect over = parent->window()->geometry();
      resize(kWidthInCharacters * fontMetrics().averageCharWidth(), over.height() * 3 / 4);
      move(over.center() - rect().center());
    }
  }
  show();
  raise();
  activateWindow();
}

void frmTreeviewFilter::cmdClose_Click() { close(); }

void frmTreeviewFilter::reject() { close(); }

/// What is being read lives in this window: the first try only stops the load.
void frmTreeviewFilter::closeEvent(QCloseEvent* event) {
  if (filter_.Loading()) {
    filter_.Cancel();
    event->ignore();
    return;
  }
  filter_.Close();
  event->accept();
}

void frmTreeviewFilter::Click(const QModelIndex& index) {
  const TreeNode* node = model_->NodeAt(index);
  if (node == nullptr) return;
  if (node->kind == NodeKind::kDatabase) return Load(std::string(node->key));
  const auto nodes = model_->Nodes();
  RunCommand(bench_.session, bench_.interaction,
             [&] { TreeviewFilter_NodeClick(bench_, *nodes, TreeModel::NumberOf(index)); });
}

void frmTreeviewFilter::Load(const std::string& key) {
  RunCommand(bench_.session, bench_.interaction, [this, &key] { LoadList(key); });
}

void frmTreeviewFilter::LoadList(const std::string& key) {
  bench_.session.CancelRequested = false;
  const bool ran = [&] {
    const Busy busy(bench_.session, bench_.interaction, {.pointer = false});
    ShowLoading(true);
    const bool loaded = filter_.Load(key);
    ShowLoading(false);
    return loaded;
  }();
  if (!ran) return;
  expanded_.insert(key);
  ShowNodes(key);
}

void frmTreeviewFilter::ShowNodes(const std::string& current) {
  model_->SetNodes(filter_.Nodes());
  const TreeNodes& nodes = *filter_.Nodes();
  std::vector<QModelIndex> indexes;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (nodes[i].child_count > 0 && expanded_.contains(nodes[i].key)) {
      indexes.push_back(model_->IndexOf(static_cast<std::int32_t>(i)));
    }
  }
  ui_->TreeView1->ExpandQuietly(indexes);
  ui_->TreeView1->setCurrentIndex(model_->IndexOf(IndexOfKey(nodes, current)));
}

void frmTreeviewFilter::ShowLoading(bool loading) {
  ui_->cmdClose->setText(loading ? "&Cancel" : "&Close");
  if (loading) ui_->ProgressBar1->setValue(0);
  ui_->ProgressBar1->setVisible(loading);
}

}  // namespace tunemeadow
