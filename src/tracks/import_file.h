// SPDX-License-Identifier: GPL-3.0-or-later
// Reads one file for the import: its tags and its facts on one open file, then the row.
#pragma once

#include <ctime>
#include <string>

#include "audio/file_bytes.h"
#include "audio/mp3reader.h"
#include "run/preferences.h"
#include "tracks/import_row.h"
#include "tracks/tag_port.h"

namespace tunemeadow {

/// One object serves a whole import and keeps its buffers from file to file.
class ImportReader {
 public:
  /// `options` are looked at again with each file; they and `tags` must outlive the reader.
  ImportReader(const Preferences& options, TagPort& tags) : options_(options), tags_(tags) {}

  /// The row of the file at `path`, made at this moment; it lasts until the next call. A file that
  /// cannot be read has a row too: what the readers leave, which for the quality of a damaged MPEG
  /// file is that of the file before. `progress` may be null.
  const ImportRow& Read(const std::string& path, ScanProgress* progress);

 private:
  void LookAt(const std::string& path);
  const std::string& NowText();

  const Preferences& options_;
  TagPort& tags_;
  FileBytes file_;
  FileFacts facts_;
  ImportRow row_;
  std::time_t now_ = -1;
  std::string now_text_;
};

}  // namespace tunemeadow
