// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/tree_pane.h"

#include <QComboBox>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ui/kit/library_tree.h"
#include "ui/kit/qt_text.h"
#include "ui/kit/tree_model.h"
#include "views/tree.h"

namespace tunemeadow {
namespace {

constexpr std::array kGroupIcons = {"folder", "artist", "album", "genre", "year"};
constexpr int kMinimumWidth = 80;

const char* IconNameOf(const TreeNode& node, TreeKind kind) {
  switch (node.kind) {
    case NodeKind::kRoot:
      return "tunemeadow";
    case NodeKind::kDatabase:
      return "database";
    case NodeKind::kGroup:
      return kGroupIcons[static_cast<std::size_t>(kind)];
    case NodeKind::kPlaylists:
    case NodeKind::kPlaylist:
      return "playlists";
    case NodeKind::kArchives:
    case NodeKind::kArchive:
      return "archives";
    case NodeKind::kArchiveFolder:
      return "folder";
  }
  return "";
}

}  // namespace

TreePane::TreePane(TreeData& tree, QWidget* parent)
    : QWidget(parent),
      data_(tree),
      selector_(new QComboBox(this)),
      tree_(new LibraryTree(this)),
      model_(new TreeModel([this](const TreeNode& node) { return IconOf(node); }, this)) {
  setObjectName("picTree");
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(selector_);
  column->addWidget(tree_);
  BuildSelector();
  tree_->setObjectName("TreeView1");
  tree_->setAccessibleName("Library tree");
  tree_->setMinimumWidth(kMinimumWidth);
  tree_->setModel(model_);
  ConnectTree();
}

void TreePane::BuildSelector() {
  selector_->setObjectName("cboTreeSelector");
  selector_->setAccessibleName("What the library is grouped by");
  selector_->setToolTip("Groups the library in the tree by this");
  selector_->setMinimumContentsLength(1);
  for (std::size_t kind = 0; kind < kTreeKinds.size(); ++kind) {
    selector_->addItem(QIcon::fromTheme(kGroupIcons[kind]), ToQt(kTreeKinds[kind]));
  }
  connect(selector_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (index >= 0) emit KindChosen(static_cast<TreeKind>(index));
  });
}

void TreePane::ConnectTree() {
  connect(tree_, &QTreeView::clicked, this, &TreePane::Click);
  connect(tree_, &LibraryTree::EnterPressed, this, &TreePane::Click);
  connect(tree_, &QTreeView::expanded, this, [this](const QModelIndex& index) {
    if (const TreeNode* node = model_->NodeAt(index)) data_.expanded.insert(node->key);
  });
  connect(tree_, &QTreeView::collapsed, this, [this](const QModelIndex& index) {
    if (const TreeNode* node = model_->NodeAt(index)) data_.expanded.erase(node->key);
  });
  connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& index) {
            const TreeNode* node = model_->NodeAt(index);
            if (!showing_ && node != nullptr) {
              data_.selected = {node->kind, node->key, node->name};
            }
          });
  connect(tree_, &LibraryTree::MenuWanted, this,
          [this](const QModelIndex& index, const QPoint& where) {
            if (const TreeNode* node = model_->NodeAt(index)) {
              emit ContextMenuWanted(node->kind, where);
            }
          });
  connect(tree_, &LibraryTree::RowsDroppedOn, this, [this](const QModelIndex& index) {
    if (const TreeNode* node = model_->NodeAt(index)) {
      emit RowsDropped(node->kind, std::string(node->name));
    }
  });
}

void TreePane::Show() {
  if (model_->Nodes() == data_.nodes) {
    model_->TextsChanged();
    return;
  }
  const QScopedValueRollback showing(showing_, true);
  model_->SetNodes(data_.nodes);
  RestoreExpanded();
  ShowSelected();
}

void TreePane::RestoreExpanded() {
  const TreeNodes& nodes = *data_.nodes;
  std::vector<QModelIndex> indexes;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (nodes[i].child_count > 0 && data_.expanded.contains(nodes[i].key)) {
      indexes.push_back(model_->IndexOf(static_cast<std::int32_t>(i)));
    }
  }
  tree_->ExpandQuietly(indexes);
}

void TreePane::ShowSelected() {
  const QScopedValueRollback showing(showing_, true);
  const QModelIndex index = model_->IndexOf(SelectedNode(data_));
  if (index.isValid()) {
    tree_->setCurrentIndex(index);
    tree_->scrollTo(index);
  } else {
    tree_->selectionModel()->clear();
  }
}

void TreePane::SetArchivesTakeRows(std::function<bool()> rule) {
  tree_->SetArchivesTakeRows(std::move(rule));
}

void TreePane::FocusTree() { tree_->setFocus(Qt::ShortcutFocusReason); }

void TreePane::ShowKind() {
  const QSignalBlocker quiet(selector_);
  selector_->setCurrentIndex(static_cast<int>(data_.kind));
}

void TreePane::Click(const QModelIndex& index) {
  const TreeNode* node = model_->NodeAt(index);
  if (node == nullptr) return;
  const TreeSelection clicked{node->kind, node->key, node->name};
  emit NodeClicked(clicked);
}

QIcon TreePane::IconOf(const TreeNode& node) {
  const char* name = IconNameOf(node, data_.nodes_kind);
  QIcon& icon = icons_[name];
  if (icon.isNull()) icon = QIcon::fromTheme(QLatin1String(name));
  return icon;
}

}  // namespace tunemeadow
