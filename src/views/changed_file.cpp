// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/changed_file.h"

#include <string_view>

#include "core/dates.h"
#include "core/paths.h"
#include "files/file_facts.h"
#include "store/database.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kSentence =
    " was changed by another program since it was read. A save puts the catalogue's texts over it.";

/// A catalogue that does not answer, and a row that was imported without a time, tell nothing.
bool HasChanged(Workbench& bench, std::int64_t uid, const std::string& path) {
  const std::string now = FileTimeText(path);
  if (now.empty()) return false;
  try {
    const std::string known =
        bench.session.connection
            .Execute("select datetimeoffile from mp3sTabelle where uid=" + std::to_string(uid))
            .Fields("datetimeoffile");
    return ParseDateTime(known).has_value() && known != now;
  } catch (const DatabaseError&) {
    return false;
  }
}

}  // namespace

void TellChangedFile(Workbench& bench, std::int64_t uid, const std::string& path) {
  if (HasChanged(bench, uid, path)) {
    bench.interaction.SetStatus(DisplayPath(FileNamePart(path)).append(kSentence));
  } else if (bench.interaction.Status().ends_with(kSentence)) {
    bench.interaction.SetStatus("Ready.");
  }
}

}  // namespace tunemeadow
