// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/saved_row.h"

#include "core/dates.h"
#include "core/numbers.h"
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

}  // namespace tunemeadow
