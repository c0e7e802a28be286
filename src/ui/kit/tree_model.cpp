// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/tree_model.h"

#include <utility>

#include "ui/kit/qt_text.h"
#include "ui/kit/tool_tips.h"

namespace tunemeadow {
namespace {

constexpr qsizetype kShownTextCharacters = 300;

/// What a value may hold and a row has no room for: line breaks, thousands of characters.
QString OnOneLine(std::string_view bytes) {
  QString text = ToQt(bytes).left(kShownTextCharacters);
  for (QChar& c : text) {
    if (c.unicode() < 0x20 || c.unicode() == 0x7f) c = QLatin1Char(' ');
  }
  return text;
}

}  // namespace

TreeModel::TreeModel(IconOfNode icon, QObject* parent)
    : QAbstractItemModel(parent), icon_(std::move(icon)) {}

void TreeModel::SetNodes(std::shared_ptr<const TreeNodes> nodes) {
  beginResetModel();
  nodes_ = std::move(nodes);
  endResetModel();
}

void TreeModel::TextsChanged() {
  // A view paints what is in sight, whatever the range: each parent is named for those who listen.
  for (std::size_t i = 0; i < nodes_->size(); ++i) {
    const TreeNode& node = (*nodes_)[i];
    if (node.child_count == 0 || node.kind == NodeKind::kDatabase ||
        node.kind == NodeKind::kGroup) {
      continue;
    }
    const QModelIndex above = IndexOf(static_cast<std::int32_t>(i));
    emit dataChanged(index(0, 0, above), index(node.child_count - 1, 0, above));
  }
}

const TreeNode* TreeModel::NodeAt(const QModelIndex& index) const noexcept {
  const auto number = static_cast<std::size_t>(index.internalId());
  return index.isValid() && number < nodes_->size() ? &(*nodes_)[number] : nullptr;
}

std::int32_t TreeModel::NumberOf(const QModelIndex& index) noexcept {
  return index.isValid() ? static_cast<std::int32_t>(index.internalId()) : -1;
}

QModelIndex TreeModel::IndexOf(std::int32_t node) const {
  if (node < 0 || static_cast<std::size_t>(node) >= nodes_->size()) return {};
  const std::int32_t above = (*nodes_)[static_cast<std::size_t>(node)].parent;
  const std::int32_t first = above < 0 ? 0 : (*nodes_)[static_cast<std::size_t>(above)].first_child;
  return createIndex(node - first, 0, static_cast<quintptr>(node));
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
  if (column != 0 || row < 0 || row >= rowCount(parent)) return {};
  const TreeNode* above = NodeAt(parent);
  const int number = (above != nullptr ? above->first_child : 0) + row;
  return createIndex(row, 0, static_cast<quintptr>(number));
}

QModelIndex TreeModel::parent(const QModelIndex& child) const {
  const TreeNode* node = NodeAt(child);
  return node != nullptr ? IndexOf(node->parent) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const {
  if (!parent.isValid()) return nodes_->empty() ? 0 : 1;
  const TreeNode* node = NodeAt(parent);
  return node != nullptr ? node->child_count : 0;
}

int TreeModel::columnCount(const QModelIndex& /*parent*/) const { return 1; }

bool TreeModel::hasChildren(const QModelIndex& parent) const {
  const TreeNode* node = NodeAt(parent);
  return rowCount(parent) > 0 || (node != nullptr && node->fills_later);
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
  const TreeNode* node = NodeAt(index);
  if (node == nullptr) return {};
  switch (role) {
    case Qt::DisplayRole:
      return OnOneLine(node->text);
    case Qt::DecorationRole:
      return icon_(*node);
    case Qt::ToolTipRole:  // as rich text that shows it literally
      return LiteralToolTip(OnOneLine(node->text));
    case Qt::UserRole:
      return ToQt(node->key);
    default:
      return {};
  }
}

}  // namespace tunemeadow
