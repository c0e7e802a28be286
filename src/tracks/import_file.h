// SPDX-License-Identifier: GPL-3.0-or-later
// Reads one file for the import: every reader in its turn on one open file, then the row.
#pragma once

#include <ctime>
#include <string>

#include "audio/file_bytes.h"
#include "audio/lyrics3.h"
#include "audio/mdl_ID3.h"
#include "audio/mp3_info.h"
#include "audio/mp3reader.h"
#include "run/preferences.h"
#include "tracks/import_row.h"

namespace tunemeadow {

/// One object serves a whole import and keeps its buffers from file to file.
class ImportReader {
 public:
  /// `options` are looked at anew with each file; they and `info`, the record of the current file,
  /// must outlive the reader.
  ImportReader(const Preferences& options, Mp3Info& info) : options_(options), info_(info) {}

  /// The row of the file at `path`, made at this moment; it lasts until the next call. A file that
  /// cannot be read has a row too: what the readers leave, which for the quality of a damaged MPEG
  /// file is that of the file before. `progress` may be null.
  const ImportRow& Read(const std::string& path, ScanProgress* progress);

  /// The tag texts of an MPEG file alone, as MergeTagTexts leaves them. Null where it can't be
  /// opened; the record of the current file is then as before.
  const ImportRow* ReadTagTexts(const std::string& path);

 private:
  void LookAt(const std::string& path);
  void ReadMpegTags(ScanProgress* progress);
  void ReadOggTags();
  void ReadLyrics3();
  const std::string& NowText();

  const Preferences& options_;
  Mp3Info& info_;
  FileBytes file_;
  FileFacts facts_;
  Lyrics3 lyrics3_;
  ImportRow row_;
  std::time_t now_ = -1;
  std::string now_text_;
};

}  // namespace tunemeadow
