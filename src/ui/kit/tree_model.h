// SPDX-License-Identifier: GPL-3.0-or-later
// The nodes of a tree as Qt's views read them. Holds no text: it is decoded when it is painted, and
// so a tree of ten thousand folders is there at once.
#pragma once

#include <QAbstractItemModel>
#include <QIcon>
#include <functional>
#include <memory>

#include "views/tree_data.h"

namespace tunemeadow {

class TreeModel : public QAbstractItemModel {
  Q_OBJECT

 public:
  using IconOfNode = std::function<QIcon(const TreeNode& node)>;

  explicit TreeModel(IconOfNode icon, QObject* parent = nullptr);

  /// Other nodes. Selection and expansion of the views go.
  void SetNodes(std::shared_ptr<const TreeNodes> nodes);

  /// Texts of the same nodes have changed.
  void TextsChanged();

  [[nodiscard]] const std::shared_ptr<const TreeNodes>& Nodes() const noexcept { return nodes_; }

  /// The node behind an index, null where the index is invalid; and the index of a node, invalid
  /// for -1.
  [[nodiscard]] const TreeNode* NodeAt(const QModelIndex& index) const noexcept;
  [[nodiscard]] QModelIndex IndexOf(std::int32_t node) const;
  [[nodiscard]] static std::int32_t NumberOf(const QModelIndex& index) noexcept;

  [[nodiscard]] QModelIndex index(int row, int column,
                                  const QModelIndex& parent = {}) const override;
  [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
  using QObject::parent;
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] bool hasChildren(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
  IconOfNode icon_;
  std::shared_ptr<const TreeNodes> nodes_ = std::make_shared<TreeNodes>();
};

}  // namespace tunemeadow
