// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/path_tree.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <utility>

#include "core/collation.h"
#include "core/paths.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

/// Appends `text` in upper case, without a string in between where it is ASCII.
void AppendUpper(std::string& target, std::string_view text) {
  const std::size_t old_size = target.size();
  target.append(text);
  if (AllAscii(text)) {
    for (std::size_t i = old_size; i < target.size(); ++i) target[i] = UpperAscii(target[i]);
  } else {
    target.resize(old_size);
    target.append(Upper(text));
  }
}

/// What is one with it in the tree: parent and part, in upper case.
void MakeFolderKey(std::string& key, std::int32_t parent, std::string_view part) {
  char digits[16];
  const auto end = std::to_chars(digits, digits + sizeof digits, parent).ptr;
  key.assign(digits, end);
  key += '|';
  AppendUpper(key, part);
}

/// Where the children of a node begin is noted one place later: those of none, -1, come first.
std::size_t PlaceOf(std::int32_t parent) { return static_cast<std::size_t>(parent) + 1; }

}  // namespace

FolderParts::FolderParts(std::string_view folder) noexcept
    : folder_(folder), separator_(SeparatorOf(folder)) {}

bool FolderParts::Next() noexcept {
  std::size_t begin = next_;
  while (begin < folder_.size() && folder_[begin] == separator_) ++begin;
  if (begin == folder_.size()) return false;
  std::size_t end = folder_.find(separator_, begin);
  if (end == std::string_view::npos) end = folder_.size();
  // What leads a path belongs to its first part.
  const std::size_t from = next_ == 0 ? 0 : begin;
  part_ = folder_.substr(from, end - from);
  next_ = std::min(end + 1, folder_.size());
  return true;
}

std::int32_t TreeBuilder::Add(std::int32_t parent, NodeKind kind, std::string key, std::string text,
                              std::string name) {
  TreeNode& node = nodes_.emplace_back();
  node.kind = kind;
  node.parent = parent;
  node.key = std::move(key);
  node.text = std::move(text);
  node.name = std::move(name);
  return static_cast<std::int32_t>(nodes_.size()) - 1;
}

std::int32_t TreeBuilder::Find(std::int32_t parent, std::string_view part) {
  if (lookup_ == FolderLookup::kKnownKeys) {
    MakeFolderKey(scratch_, parent, part);
    const auto known = known_.find(scratch_);
    return known == known_.end() ? -1 : known->second;
  }
  const std::string folded = Upper(part);
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    if (nodes_[i].parent == parent && Upper(nodes_[i].text) == folded) {
      return static_cast<std::int32_t>(i);
    }
  }
  return -1;
}

void TreeBuilder::AddFolderOf(std::string_view location, std::int32_t top, NodeKind kind,
                              std::string_view prefix, std::string_view name) {
  const std::string_view folder = FolderPart(location);
  if (top == last_top_ && folder == last_folder_) return;
  last_folder_ = folder;
  last_top_ = top;
  std::int32_t parent = top;
  FolderParts parts(folder);
  while (parts.Next()) {
    std::int32_t node = Find(parent, parts.Part());
    if (node < 0) {
      std::string key;
      key.reserve(prefix.size() + parts.PathSoFar().size());
      key.append(prefix).append(parts.PathSoFar());
      node = Add(parent, kind, std::move(key), std::string(parts.Part()), std::string(name));
      if (lookup_ == FolderLookup::kKnownKeys) known_.emplace(scratch_, node);
    }
    parent = node;
  }
}

TreeNodes TreeBuilder::Arrange(bool sorted) {
  const std::size_t count = nodes_.size();
  std::vector<std::string> keys(sorted ? count : 0);
  for (std::size_t i = 0; i < keys.size(); ++i) AppendCollationKey(keys[i], nodes_[i].text);
  // Children gathered by their parent, then each parent's own put in order.
  std::vector<std::int32_t> first(count + 2, 0);
  for (const TreeNode& node : nodes_) ++first[PlaceOf(node.parent) + 1];
  std::partial_sum(first.begin(), first.end(), first.begin());
  std::vector<std::int32_t> order(count);
  std::vector<std::int32_t> next(first.begin(), first.end());
  for (std::size_t i = 0; i < count; ++i) {
    auto& place = next[PlaceOf(nodes_[i].parent)];
    order[static_cast<std::size_t>(place++)] = static_cast<std::int32_t>(i);
  }
  const auto by_text = [&](std::int32_t left, std::int32_t right) {
    return keys[static_cast<std::size_t>(left)] < keys[static_cast<std::size_t>(right)];
  };
  // From the top down, so that a parent has its place before its children get theirs.
  TreeNodes arranged;
  arranged.reserve(count);
  const auto take = [&](std::int32_t old_parent, std::int32_t new_parent) {
    const auto begin = order.begin() + first[PlaceOf(old_parent)];
    const auto end = order.begin() + first[PlaceOf(old_parent) + 1];
    if (sorted) std::stable_sort(begin, end, by_text);
    for (auto child = begin; child != end; ++child) {
      TreeNode& node = nodes_[static_cast<std::size_t>(*child)];
      node.parent = new_parent;
      node.first_child = *child;  // where its own children are looked for, until they are taken
      arranged.push_back(std::move(node));
    }
    return static_cast<std::int32_t>(end - begin);
  };
  take(-1, -1);
  for (std::size_t i = 0; i < arranged.size(); ++i) {
    const std::int32_t old_index = arranged[i].first_child;
    const auto place = static_cast<std::int32_t>(arranged.size());
    const std::int32_t children = take(old_index, static_cast<std::int32_t>(i));
    arranged[i].first_child = place;
    arranged[i].child_count = children;
  }
  *this = TreeBuilder();
  return arranged;
}

std::int32_t IndexOfKey(const TreeNodes& nodes, std::string_view key) noexcept {
  const auto found =
      std::find_if(nodes.begin(), nodes.end(), [&](const TreeNode& n) { return n.key == key; });
  return found == nodes.end() ? -1 : static_cast<std::int32_t>(found - nodes.begin());
}

std::int32_t IndexOfFolder(const TreeNodes& nodes, std::int32_t top, std::string_view location) {
  FolderParts parts(FolderPart(location));
  std::int32_t parent = top;
  while (parts.Next()) {
    const TreeNode& node = nodes[static_cast<std::size_t>(parent)];
    const std::string part = Upper(parts.Part());
    const auto begin = nodes.begin() + node.first_child;
    const auto end = begin + node.child_count;
    const auto found =
        std::find_if(begin, end, [&](const TreeNode& child) { return Upper(child.text) == part; });
    if (found == end) return -1;
    parent = static_cast<std::int32_t>(found - nodes.begin());
  }
  return parent == top ? -1 : parent;
}

}  // namespace tunemeadow
