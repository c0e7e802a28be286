// SPDX-License-Identifier: GPL-3.0-or-later
// The backup of the catalogue.
#pragma once

#include <functional>
#include <string>

namespace tunemeadow {

inline constexpr const char* kBackupName = "mp3s.bak";

/// Copies the catalogue to `mp3s.bak` of the program's folder, log included. The old backup stays
/// until the new one is whole, checked and synced. False if that failed; nobody is told, and the
/// old backup is as it was: a damaged catalogue never takes the place of a sound backup. `progress`
/// hears now and then how much is copied, in percent.
bool MakeBackup(const std::string& database_path, const std::string& program_folder,
                const std::function<void(int percent)>& progress = {});

}  // namespace tunemeadow
