// SPDX-License-Identifier: GPL-3.0-or-later
#include "kill/power_cut.h"

#include <algorithm>
#include <memory>

namespace tunemeadow::kill {
namespace {

constexpr std::int64_t kPage = 4096;

struct Inode {
  std::string synced;
  std::vector<const Operation*> later;
};
using Names = std::map<std::string, std::shared_ptr<Inode>, std::less<>>;

struct NameChange {
  Call call;
  std::string name, other;
  std::shared_ptr<Inode> inode;  ///< of a creation

  void Apply(Names& names) const {
    if (call == Call::kCreate) names[name] = inode;
    if (call == Call::kRename && names.contains(name)) names[other] = names[name];
    if (call != Call::kCreate) names.erase(name);
  }
};

/// How much of what was not synced is there.
enum class Style { kNothing, kAll, kFirst, kSomeCalls, kSomePages };

class Disk {
 public:
  Disk(const Image& image, std::string folder) : folder_(std::move(folder)) {
    for (const auto& [name, bytes] : image) now_[name] = std::make_shared<Inode>(Inode{bytes, {}});
    synced_ = now_;
  }

  void Do(const Operation& operation) {
    const std::string name = NameOf(operation.path);
    switch (operation.call) {
      case Call::kCreate:
        Change({operation.call, name, {}, std::make_shared<Inode>()});
        break;
      case Call::kRename:
        Change({operation.call, name, NameOf(operation.other), {}});
        break;
      case Call::kUnlink:
        Change({operation.call, name, {}, {}});
        break;
      case Call::kSync:
        if (now_.contains(name)) {
          SyncInode(*now_[name]);
        } else {
          SyncNames(name + '/');
        }
        break;
      case Call::kSyncVolume:
        SyncVolume(name.substr(0, name.find('/') + 1));
        break;
      case Call::kTimes:
        break;
      default:
        if (now_.contains(name)) now_[name]->later.push_back(&operation);
    }
  }

  /// Syncs what lies below `folder`, or everything.
  void SyncVolume(const std::string& folder) {
    for (const auto& [name, inode] : now_) {
      if (name.starts_with(folder)) SyncInode(*inode);
    }
    SyncNames(folder);
  }

  Image Cut(std::mt19937& random) const {
    Names names = synced_;
    const std::size_t kept = random() % (changes_.size() + 1);
    for (std::size_t i = 0; i < kept; ++i) changes_[i].Apply(names);
    const auto style = static_cast<Style>(random() % 5);
    Image image;
    for (const auto& [name, inode] : names) {
      std::string bytes = inode->synced;
      const std::size_t first = random() % (inode->later.size() + 1);
      for (std::size_t i = 0; i < inode->later.size(); ++i) {
        const bool whole = style == Style::kAll || (style == Style::kFirst && i < first) ||
                           (style == Style::kSomeCalls && random() % 2 == 0);
        if (whole) {
          Apply(*inode->later[i], bytes, nullptr);
        } else if (style == Style::kSomePages) {
          Apply(*inode->later[i], bytes, &random);
        }
      }
      image[name] = std::move(bytes);
    }
    return image;
  }

 private:
  std::string NameOf(std::string_view path) const {
    return std::string(path.substr(std::min(path.size(), folder_.size() + 1)));
  }

  void Change(NameChange change) {
    change.Apply(now_);
    changes_.push_back(std::move(change));
  }

  void SyncNames(const std::string& folder) {
    std::erase_if(changes_, [&](const NameChange& change) {
      if (!change.name.starts_with(folder)) return false;
      change.Apply(synced_);
      return true;
    });
  }

  static void SyncInode(Inode& inode) {
    for (const Operation* operation : inode.later) Apply(*operation, inode.synced, nullptr);
    inode.later.clear();
  }

  /// Does the operation, or with `random` such parts of it as chance has it.
  static void Apply(const Operation& operation, std::string& bytes, std::mt19937* random) {
    const auto chance = [&] { return random == nullptr || (*random)() % 2 == 0; };
    if (operation.call == Call::kTruncate) {
      if (chance()) bytes.resize(static_cast<std::size_t>(operation.offset), '\0');
      return;
    }
    const std::int64_t end =
        operation.call == Call::kReserve ? operation.length : operation.offset + operation.length;
    if (static_cast<std::int64_t>(bytes.size()) < end && chance()) {
      bytes.resize(static_cast<std::size_t>(end), '\0');
    }
    if (operation.call == Call::kReserve) return;
    for (std::int64_t at = operation.offset; at < end;) {
      const std::int64_t next = std::min((at / kPage + 1) * kPage, end);
      if (chance()) {
        if (static_cast<std::int64_t>(bytes.size()) < next) {
          bytes.resize(static_cast<std::size_t>(next), '\0');
        }
        const auto count = static_cast<std::size_t>(next - at);
        bytes.replace(
            static_cast<std::size_t>(at), count,
            operation.bytes.substr(static_cast<std::size_t>(at - operation.offset), count));
      }
      at = next;
    }
  }

  std::string folder_;
  Names now_, synced_;
  std::vector<NameChange> changes_;  ///< that are not synced
};

}  // namespace

PowerCut CutPower(const Image& before, const std::vector<Operation>& operations,
                  const std::string& folder, std::mt19937& random) {
  const std::size_t count = random() % (operations.size() + 1);
  Disk disk(before, folder);
  for (std::size_t i = 0; i < count; ++i) disk.Do(operations[i]);
  return {disk.Cut(random), count == operations.size()};
}

Image AllDone(const Image& before, const std::vector<Operation>& operations,
              const std::string& folder) {
  Disk disk(before, folder);
  for (const Operation& operation : operations) disk.Do(operation);
  disk.SyncVolume("");
  std::mt19937 random;
  return disk.Cut(random);
}

}  // namespace tunemeadow::kill
