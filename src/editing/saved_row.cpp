// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/saved_row.h"

#include "core/dates.h"
#include "core/numbers.h"
#include "core/paths.h"
#include "files/file_facts.h"

namespace tunemeadow {

std::string FileTimeOfRow(Session& session, const std::string& path, std::int64_t uid) {
  std::string time = FileTimeText(path);
  if (!time.empty()) return time;
  return session.connection
      .Execute("select datetimeoffile from mp3sTabelle where uid=" + std::to_string(uid))
      .Fields("datetimeoffile");
}

void SetFlagOfRow(std::string& flag, bool written) {
  const std::int64_t number = ParseWhole(flag).value_or(0);
  flag = std::to_string(number == 0 && written ? 1 : number);
}

void MarkFileWritten(Workbench& bench, std::int64_t uid, bool written) {
  for (ResultList* list : {&bench.ListView1, &bench.ListView3}) list->SetFileWritten(uid, written);
}

void ShowFault(Workbench& bench, const std::string& path, const std::string& fault) {
  if (fault.empty()) return;
  bench.interaction.SetStatus(DisplayPath(std::string(FileNamePart(path))) + ": " + fault);
}

}  // namespace tunemeadow
