// SPDX-License-Identifier: GPL-3.0-or-later
#include "tracks/import_file.h"

#include <sys/stat.h>

#include "audio/genres.h"
#include "audio/id3v2_reader.h"
#include "audio/ogg_comments.h"
#include "core/dates.h"

namespace tunemeadow {

const ImportRow& ImportReader::Read(const std::string& path, ScanProgress* progress) {
  LookAt(path);
  if (facts_.kind == FileKind::kMp3) ReadMpegTags(progress);
  if (facts_.kind == FileKind::kOgg) ReadOggTags();
  if (facts_.kind != FileKind::kOther && options_.chkLyrics3) ReadLyrics3();
  file_.Close();
  BuildImportRow(facts_, info_, options_, NowText(), row_);
  return row_;
}

const ImportRow* ImportReader::ReadTagTexts(const std::string& path) {
  facts_ = FileFacts();
  facts_.path = path;
  facts_.kind = FileKind::kMp3;
  if (!file_.Open(path)) return nullptr;
  ReadMpegTags(nullptr);
  file_.Close();
  MergeTagTexts(facts_, info_, options_, row_);
  // A file without any track is none of the number 0.
  std::string& track = row_[ImportColumn::trackno];
  if (facts_.candidates.track.empty() && track == "0") track.clear();
  // A row takes the first genre of the list for none; the tag has named it.
  std::string& genre = row_[ImportColumn::genrereal];
  if (genre.empty() && facts_.candidates.genre == 0) genre = GenreName(0).value_or("");
  return &row_;
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

/// The ID3v2 values are taken out before the analysis, which clears them.
void ImportReader::ReadMpegTags(ScanProgress* progress) {
  const auto versions = options_.optID3V2Versions ? ID3v2Versions::kAny : ID3v2Versions::kTwoToFour;
  facts_.has_id3v2 = HasID3v2Tag(file_);
  if (options_.chkID3v2Read && facts_.has_id3v2 && ReadID3v2Tag(file_, versions, info_) == "OK") {
    TakeID3v2Values(info_, facts_.candidates);
  }
  ID3v1Tag record;
  facts_.has_id3v1 = ReadID3v1Tag(file_, record);
  ReadMp3Info(file_, facts_.has_id3v1 && options_.chkID3Read, true, info_, progress);
}

/// A read that fails leaves the fields behind the failing one alone: they must not hold the values
/// of the file before.
void ImportReader::ReadOggTags() {
  for (TagText* const text :
       {&info_.Title, &info_.Album, &info_.TrackV2, &info_.Artist, &info_.Composer, &info_.Comment,
        &info_.GenreV2, &info_.Url, &info_.Copyright, &info_.Year}) {
    text->clear();
  }
  (void)ReadOggInfo(file_, info_);
  TakeOggValues(info_, facts_.candidates);
}

void ImportReader::ReadLyrics3() {
  if (ReadLyrics3Tag(file_, lyrics3_)) TakeLyrics3Values(lyrics3_, facts_.candidates);
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
