// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/find_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "core/paths.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

/// Trees without end, and files whose reading may wait for ever or change something.
constexpr std::array<std::int64_t, 16> kKernelFileSystems = {
    PROC_SUPER_MAGIC, SYSFS_MAGIC,        DEBUGFS_MAGIC,       TRACEFS_MAGIC,
    SECURITYFS_MAGIC, CGROUP_SUPER_MAGIC, CGROUP2_SUPER_MAGIC, DEVPTS_SUPER_MAGIC,
    BPF_FS_MAGIC,     PSTOREFS_MAGIC,     EFIVARFS_MAGIC,      BINFMTFS_MAGIC,
    SELINUX_MAGIC,    NSFS_MAGIC,         0x62656570,  // configfs
    0x65735543,                                        // fusectl
};

bool IsKernelFileSystem(int folder) noexcept {
  struct statfs status {};
  if (fstatfs(folder, &status) != 0) return true;
  return std::find(kKernelFileSystems.begin(), kKernelFileSystems.end(),
                   static_cast<std::int64_t>(status.f_type)) != kKernelFileSystems.end();
}

struct FolderCloser {
  void operator()(DIR* folder) const noexcept { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, FolderCloser>;

OpenFolder OpenFolderAt(const std::string& path) noexcept {
  const int file = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return nullptr;
  OpenFolder folder(fdopendir(file));
  if (!folder) close(file);
  return folder;
}

/// DT_REG, DT_DIR or DT_UNKNOWN for anything else; links are followed.
unsigned char TypeOf(DIR* folder, const dirent& item) noexcept {
  if (item.d_type != DT_LNK && item.d_type != DT_UNKNOWN) return item.d_type;
  struct stat status {};
  if (fstatat(dirfd(folder), item.d_name, &status, 0) != 0) return DT_UNKNOWN;
  if (S_ISREG(status.st_mode)) return DT_REG;
  return S_ISDIR(status.st_mode) ? DT_DIR : DT_UNKNOWN;
}

/// One walk. The folders on the way down lie on a stack of its own, each read whole and closed
/// before the next is opened, so neither the depth of a tree nor the number of open files is bound.
class FileWalker {
 public:
  FileWalker(Session& session, Interaction& interaction, const WalkOptions& options,
             std::vector<std::string>& list)
      : session_(session), interaction_(interaction), options_(options), list_(list) {}

  LeftOut Walk(const std::string& folder) {
    path_ = WithTrailingSeparator(folder);
    separator_ = SeparatorOf(path_);
    bool go_on = EnterFolder();
    while (go_on && !levels_.empty()) {
      Level& level = levels_.back();
      if (level.next == level.entries.size()) {
        levels_.pop_back();
        continue;
      }
      const Entry& entry = level.entries[level.next++];
      path_.resize(level.path_length);
      path_ += entry.name;
      if (entry.is_folder) {
        path_ += separator_;
        go_on = EnterFolder();
      } else if (path_.size() < PATH_MAX) {  // a longer one can never be opened
        list_.push_back(path_);
      }
    }
    return std::move(left_out_);
  }

 private:
  struct Entry {
    std::string name;
    bool is_folder;
  };
  struct Level {
    std::size_t path_length;  ///< of the folder, with its separator
    dev_t device;
    std::vector<Entry> entries;
    std::size_t next = 0;
  };

  /// Shows the folder that path_ names, yields and reads it. False: stop the walk.
  bool EnterFolder() {
    ShowFolder();
    interaction_.Yield();
    if (session_.CancelRequested) return false;
    const OpenFolder folder = OpenFolderAt(path_);
    struct stat status {};
    if (!folder && errno != ENOENT) ++left_out_.unreadable_folders;
    if (!folder || fstat(dirfd(folder.get()), &status) != 0) return true;
    if (!visited_.emplace(status.st_dev, status.st_ino).second) return true;
    const bool same_device = !levels_.empty() && levels_.back().device == status.st_dev;
    if (!same_device && IsKernelFileSystem(dirfd(folder.get()))) return true;
    levels_.push_back({path_.size(), status.st_dev, ReadEntries(folder.get())});
    return true;
  }

  void ShowFolder() {
    if (options_.statusMode == StatusMode::kImport) {
      interaction_.SetStatus(DisplayPath(path_));
      interaction_.ShowLoading("Found: " + std::to_string(list_.size()) + " Files.");
    } else if (options_.statusMode == StatusMode::kMonitor && options_.show_in_monitor) {
      options_.show_in_monitor(path_);
    }
  }

  std::vector<Entry> ReadEntries(DIR* folder) {
    std::vector<Entry> entries;
    while (const dirent* const item = readdir(folder)) {
      const std::string_view name = item->d_name;
      const bool wanted = HasOneOfExtensions(name, options_.extensions);
      const bool enterable = MayEnter(name);
      const unsigned char type = TypeOf(folder, *item);
      if (type == DT_REG && !wanted) CountLeftOut(name);
      if (type == DT_REG ? wanted : type == DT_DIR && enterable) {
        entries.push_back({std::string(name), type == DT_DIR});
      }
    }
    std::sort(entries.begin(), entries.end(),
              [](const Entry& left, const Entry& right) { return left.name < right.name; });
    return entries;
  }

  void CountLeftOut(std::string_view name) {
    if (name.front() == '.') return;
    std::string kind(ExtensionPart(name));
    for (char& c : kind) c = LowerAscii(c);
    ++left_out_.kinds[kind];
  }

  /// Whether a folder of this name is entered.
  [[nodiscard]] bool MayEnter(std::string_view name) const noexcept {
    if (!options_.recursive || name == "." || name == "..") return false;
    return options_.read_hidden || name.front() != '.';
  }

  Session& session_;
  Interaction& interaction_;
  const WalkOptions& options_;
  std::vector<std::string>& list_;
  std::string path_;
  char separator_ = '/';
  std::vector<Level> levels_;
  std::set<std::pair<dev_t, ino_t>> visited_;
  LeftOut left_out_;
};

/// The kinds that a person misses in a library.
constexpr std::string_view kSoundKinds =
    ";aac;ac3;aif;aiff;amr;ape;dff;dsf;flac;m4a;m4b;mka;mp1;mp2;mp3;mp4;mpc;mpga;mpeg;oga;ogg;opus;"
    "ra;shn;spx;tta;wav;weba;wma;wv;";

constexpr std::size_t kNamedKinds = 6;

using CountedKind = std::pair<std::string, std::int64_t>;

bool IsSound(const CountedKind& kind) {
  return kSoundKinds.find(";" + kind.first + ";") != std::string_view::npos;
}

std::string KindsText(const std::map<std::string, std::int64_t>& counts) {
  std::vector<CountedKind> kinds(counts.begin(), counts.end());
  std::int64_t others = 0;
  std::erase_if(kinds, [&others](const CountedKind& kind) {
    if (kind.first.empty()) others += kind.second;
    return kind.first.empty();
  });
  std::stable_sort(kinds.begin(), kinds.end(), [](const CountedKind& a, const CountedKind& b) {
    return IsSound(a) != IsSound(b) ? IsSound(a) : a.second > b.second;
  });
  std::string text;
  const auto add = [&text](const std::string& kind, std::int64_t count) {
    text.append(text.empty() ? "" : ", ").append(kind + " " + std::to_string(count));
  };
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    if (i < kNamedKinds) {
      add(DisplayPath(kinds[i].first), kinds[i].second);
    } else {
      others += kinds[i].second;
    }
  }
  if (others > 0) add("others", others);
  return text;
}

}  // namespace

std::string LeftOutText(const LeftOut& left_out) {
  std::string text;
  if (const std::int64_t folders = left_out.unreadable_folders; folders > 0) {
    text = std::to_string(folders) + (folders == 1 ? " folder" : " folders") + " could not be read";
  }
  const std::string kinds = KindsText(left_out.kinds);
  if (!kinds.empty()) text.append(text.empty() ? "Left out: " : "; left out: ").append(kinds);
  return text.empty() ? text : text + ".";
}

LeftOut FindFilesRecursive(Session& session, Interaction& interaction, const std::string& folder,
                           const WalkOptions& options, std::vector<std::string>& list) {
  return FileWalker(session, interaction, options, list).Walk(folder);
}

}  // namespace tunemeadow
