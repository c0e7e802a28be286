// SPDX-License-Identifier: GPL-3.0-or-later
#include "tracks/import_file.h"

#include <sys/stat.h>

#include "core/dates.h"

namespace tunemeadow {

const ImportRow& ImportReader::Read(const std::string& path, ScanProgress* progress) {
  LookAt(path);
  if (facts_.kind != FileKind::kOther) {
    tags_.Read(file_, facts_.kind, options_, progress, row_.texts);
  }
  file_.Close();
  FinishImportRow(facts_, options_, NowText(), row_);
  return row_;
}

/// Opens the file where there are tags to read, and takes length and date. A file that may not be
/// opened still has both.
void ImportReader::LookAt(const std::string& path) {
  facts_ = FileFacts();
  facts_.path = path;
  facts_.kind = FileKindOf(path);
  file_.Close();
  if (facts_.kind != FileKind::kOther && file_.Open(path)) {
    facts_.length = file_.Length();
    facts_.last_write = file_.ModifiedAt();
    return;
  }
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return;
  facts_.last_write = status.st_mtime;
  if (S_ISREG(status.st_mode)) facts_.length = status.st_size;
}

const std::string& ImportReader::NowText() {
  const std::time_t now = std::time(nullptr);
  if (now != now_) {
    now_ = now;
    now_text_ = DateTimeText(now);
  }
  return now_text_;
}

}  // namespace tunemeadow
