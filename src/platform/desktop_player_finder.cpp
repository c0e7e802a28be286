// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop_player_finder.h"

#include <gio/gdesktopappinfo.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

#include "core/paths.h"
#include "core/text.h"
#include "platform/glib_owned.h"
#include "platform/program_path.h"

namespace tunemeadow {
namespace {

constexpr const char* kMediaType = "audio/mpeg";

/// What the desktop knows of one program.
using App = GlibObject<GAppInfo>;

/// The list's programs, the list itself gone.
std::vector<App> TakenApps(GList* list) {
  std::vector<App> apps;
  for (const GList* item = list; item != nullptr; item = item->next) {
    apps.emplace_back(static_cast<GAppInfo*>(item->data));
  }
  g_list_free(list);
  return apps;
}

GDesktopAppInfo* EntryOf(const App& app) noexcept { return G_DESKTOP_APP_INFO(app.get()); }

bool Holds(const char* const* texts, const char* text) noexcept {
  return texts != nullptr && g_strv_contains(texts, text) != FALSE;
}

/// Whether the person has taken the type away from the program.
bool IsRemovedByPerson(const char* id) {
  const std::string data = JoinPath(g_get_user_data_dir(), "applications");
  for (const std::string& folder : {std::string(g_get_user_config_dir()), data}) {
    const std::unique_ptr<GKeyFile, void (*)(GKeyFile*)> file(g_key_file_new(), &g_key_file_unref);
    const std::string path = JoinPath(folder, "mimeapps.list");
    g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr);
    const GlibTexts ids(g_key_file_get_string_list(file.get(), "Removed Associations", kMediaType,
                                                   nullptr, nullptr));
    if (Holds(ids.get(), id)) return true;
  }
  return false;
}

/// Whether the program's own entry says that it is a player, for MP3 files among others, that a
/// person may choose.
bool IsVisiblePlayer(const App& app) {
  const char* categories = g_desktop_app_info_get_categories(EntryOf(app));
  if (categories == nullptr || g_app_info_should_show(app.get()) == FALSE) return false;
  const auto names = Split(categories, ';');
  return std::find(names.begin(), names.end(), "Player") != names.end() &&
         Holds(g_app_info_get_supported_types(app.get()), kMediaType) &&
         !IsRemovedByPerson(g_app_info_get_id(app.get()));
}

/// The players by their own entries, which say more than the desktop's lists where nothing has
/// collected their types.
std::vector<App> InstalledPlayers() {
  std::vector<App> apps = TakenApps(g_app_info_get_all());
  std::erase_if(apps, [](const App& app) { return !IsVisiblePlayer(app); });
  std::sort(apps.begin(), apps.end(), [](const App& a, const App& b) {
    return std::string_view(g_app_info_get_id(a.get())) < g_app_info_get_id(b.get());
  });
  return apps;
}

/// What the desktop's lists name, best first.
std::vector<App> AssociatedApps() {
  std::vector<App> apps;
  if (App standard{g_app_info_get_default_for_type(kMediaType, FALSE)}) {
    apps.push_back(std::move(standard));
  }
  for (App& app : TakenApps(g_app_info_get_all_for_type(kMediaType))) {
    apps.push_back(std::move(app));
  }
  return apps;
}

/// The words of the entry's command: "env NAME=VALUE program" starts another one. No program where
/// the command has none.
EntryWords WordsOfEntry(const App& app) {
  const char* command = g_app_info_get_commandline(app.get());
  char** words = nullptr;
  if (command == nullptr || !g_shell_parse_argv(command, nullptr, &words, nullptr)) return {};
  const GlibTexts owned(words);
  EntryWords split;
  if (FileNamePart(*words) == "env") {
    do split.program.emplace_back(*words++);
    while (*words != nullptr && std::string_view(*words).find('=') != std::string_view::npos);
  }
  if (*words == nullptr) return {};
  split.program.emplace_back(*words++);
  while (*words != nullptr) split.arguments.emplace_back(*words++);
  return split;
}

bool StartsSandbox(const EntryWords& words) {
  if (words.program.empty()) return false;
  const std::string_view name = FileNamePart(words.program.back());
  return name == "flatpak" || name == "snap";
}

/// The starter of a sandboxed program is of no use with a file after it; beside the folder of its
/// entries lies one that is: BASE/exports/share/applications and BASE/exports/bin.
std::string SandboxedProgram(const std::string& entry_path) {
  const std::size_t exports = entry_path.rfind("/exports/share/applications/");
  if (exports == std::string::npos) return {};
  std::string name(FileNamePart(entry_path));
  name.resize(name.size() - std::string_view(".desktop").size());
  return ProgramPath(entry_path.substr(0, exports) + "/exports/bin/" + name);
}

/// Path of the program that an entry starts; empty if it can not be started.
std::string ProgramOf(const App& app) {
  const EntryWords words = WordsOfEntry(app);
  if (words.program.empty()) return {};
  if (!StartsSandbox(words)) return ProgramPath(words.program.back());
  return SandboxedProgram(g_desktop_app_info_get_filename(EntryOf(app)));
}

std::string FirstProgramOf(const std::vector<App>& apps) {
  for (const App& app : apps) {
    std::string program = ProgramOf(app);
    if (!program.empty()) return program;
  }
  return {};
}

/// Entries by which a person starts a player, the best first. Others of the same program are there
/// for one purpose, such as to add files.
std::vector<App> VisibleEntries() {
  std::vector<App> apps = AssociatedApps();
  std::erase_if(apps, [](const App& app) { return g_app_info_should_show(app.get()) == FALSE; });
  for (App& app : InstalledPlayers()) apps.push_back(std::move(app));
  return apps;
}

}  // namespace

std::string DesktopPlayerFinder::AssociatedCommand() {
  const std::string program = FirstProgramOf(AssociatedApps());
  return program.empty() ? FirstProgramOf(InstalledPlayers()) : program;
}

EntryWords DesktopPlayerFinder::WordsOf(const std::string& player) {
  const std::string real = RealPath(player);
  EntryWords linked;
  for (const App& app : VisibleEntries()) {
    const std::string program = ProgramOf(app);
    if (program != player && RealPath(program) != real) continue;
    EntryWords words = WordsOfEntry(app);
    if (StartsSandbox(words)) continue;
    if (program == player) return words;
    if (linked.program.empty()) linked = std::move(words);
  }
  return linked;
}

}  // namespace tunemeadow
