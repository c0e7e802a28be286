// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop_player_finder.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "core/paths.h"
#include "core/text.h"
#include "files/durable_file.h"
#include "files/file_facts.h"
#include "platform/desktop_entry.h"
#include "platform/program_path.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kMediaType = "audio/mpeg";

std::string VariableOr(const char* name, const std::string& standard) {
  const char* value = std::getenv(name);
  return value == nullptr || *value == '\0' ? standard : std::string(value);
}

/// The folders of a variable and of the list variable behind it, most important first; relative
/// ones do not count.
std::vector<std::string> FoldersOf(const std::string& first, const std::string& list) {
  std::vector<std::string> folders = {first};
  for (const std::string_view folder : Split(list, ':')) folders.emplace_back(folder);
  std::erase_if(folders, [](const std::string& folder) { return !folder.starts_with('/'); });
  return folders;
}

std::vector<std::string> ConfigFolders() {
  const std::string home = VariableOr("HOME", "");
  return FoldersOf(VariableOr("XDG_CONFIG_HOME", JoinPath(home, ".config")),
                   VariableOr("XDG_CONFIG_DIRS", "/etc/xdg"));
}

/// The `applications` folder of each data folder.
std::vector<std::string> ApplicationFolders() {
  const std::string home = VariableOr("HOME", "");
  std::vector<std::string> folders =
      FoldersOf(VariableOr("XDG_DATA_HOME", JoinPath(home, ".local/share")),
                VariableOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
  for (std::string& folder : folders) folder = JoinPath(folder, "applications");
  return folders;
}

/// Texts of the mimeapps.list files, most important first: in each folder those of the running
/// desktops before the common one.
std::vector<std::string> AssociationLists() {
  std::vector<std::string> names;
  const std::string desktops = VariableOr("XDG_CURRENT_DESKTOP", "");
  for (const std::string_view desktop : Split(desktops, ':')) {
    if (!desktop.empty()) names.push_back(Lower(desktop) + "-mimeapps.list");
  }
  names.emplace_back("mimeapps.list");
  std::vector<std::string> folders = ConfigFolders();
  for (std::string& folder : ApplicationFolders()) folders.push_back(std::move(folder));
  std::vector<std::string> texts;
  for (const std::string& folder : folders) {
    for (const std::string& name : names) {
      if (auto text = ReadWholeFile(JoinPath(folder, name))) texts.push_back(std::move(*text));
    }
  }
  return texts;
}

/// The ids of a ";"-separated list, without the empty ones.
std::vector<std::string> EntryIds(std::string_view list) {
  std::vector<std::string> ids;
  for (const std::string_view id : Split(list, ';')) {
    if (!Trim(id).empty()) ids.emplace_back(Trim(id));
  }
  return ids;
}

/// Adds ids that are neither known nor removed.
void AddEntryIds(std::vector<std::string>& ids, const std::vector<std::string>& removed,
                 std::string_view list) {
  const auto holds = [](const std::vector<std::string>& all, const std::string& id) {
    return std::find(all.begin(), all.end(), id) != all.end();
  };
  for (std::string& id : EntryIds(list)) {
    if (!holds(ids, id) && !holds(removed, id)) ids.push_back(std::move(id));
  }
}

/// Every entry that may be asked, best first.
std::vector<std::string> CandidateIds() {
  const std::vector<std::string> lists = AssociationLists();
  std::vector<std::string> ids, removed;
  for (const std::string& text : lists) {
    AddEntryIds(ids, {}, DesktopValue(text, "Default Applications", kMediaType));
  }
  for (const std::string& text : lists) {
    AddEntryIds(ids, removed, DesktopValue(text, "Added Associations", kMediaType));
    AddEntryIds(removed, {}, DesktopValue(text, "Removed Associations", kMediaType));
  }
  for (const std::string& folder : ApplicationFolders()) {
    const std::string cache = ReadWholeFile(JoinPath(folder, "mimeinfo.cache")).value_or("");
    AddEntryIds(ids, removed, DesktopValue(cache, "MIME Cache", kMediaType));
  }
  return ids;
}

/// The file of an id in a folder: "a-b.desktop" may lie in the folder "a" as "b.desktop". Empty
/// where there is none.
std::string EntryFile(const std::string& folder, std::string id) {
  for (std::size_t from = 0;;) {
    std::string path = JoinPath(folder, id);
    if (MyFileExists(path)) return path;
    const std::size_t dash = id.find('-', from);
    if (dash == std::string::npos) return {};
    id[dash] = '/';
    from = dash + 1;
  }
}

/// The starter of a sandboxed program is of no use with a file behind it; beside the folder of its
/// entries lies one that is: BASE/exports/share/applications and BASE/exports/bin.
std::string SandboxedProgram(const std::string& entry_path) {
  const std::size_t exports = entry_path.rfind("/exports/share/applications/");
  if (exports == std::string::npos) return {};
  std::string name(FileNamePart(entry_path));
  name.resize(name.size() - std::string_view(".desktop").size());
  return ProgramPath(entry_path.substr(0, exports) + "/exports/bin/" + name);
}

/// Path of the program that an entry starts; empty where it may or can not be started.
std::string ProgramOfEntry(const std::string& path) {
  const std::string text = ReadWholeFile(path).value_or("");
  const auto value = [&](std::string_view key) { return DesktopValue(text, "Desktop Entry", key); };
  const std::string try_exec(value("TryExec"));
  if (value("Hidden") == "true" || (!try_exec.empty() && ProgramPath(try_exec).empty())) return {};
  std::vector<std::string> words = ExecWords(value("Exec"));
  // "env NAME=VALUE program": the program is what counts.
  if (!words.empty() && FileNamePart(words.front()) == "env") {
    words.erase(words.begin());
    while (!words.empty() && words.front().find('=') != std::string::npos)
      words.erase(words.begin());
  }
  if (words.empty()) return {};
  const std::string_view name = FileNamePart(words.front());
  if (name == "flatpak" || name == "snap") return SandboxedProgram(path);
  return ProgramPath(words.front());
}

}  // namespace

std::string DesktopPlayerFinder::AssociatedCommand() {
  const std::vector<std::string> folders = ApplicationFolders();
  for (const std::string& id : CandidateIds()) {
    if (!id.ends_with(".desktop") || id.find('/') != std::string::npos) continue;
    for (const std::string& folder : folders) {
      const std::string path = EntryFile(folder, id);
      if (path.empty()) continue;
      const std::string program = ProgramOfEntry(path);
      if (!program.empty()) return program;
      break;  // The user's entry stands for the system's one of the same id, also to hide it.
    }
  }
  return {};
}

}  // namespace tunemeadow
