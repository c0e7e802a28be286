// SPDX-License-Identifier: GPL-3.0-or-later
#include "tracks/classic_tags.h"

#include <cstdint>

#include "audio/genres.h"
#include "audio/id3v1_writer.h"
#include "audio/id3v2_reader.h"
#include "audio/id3v2_writer.h"
#include "audio/lyrics3_writer.h"
#include "audio/mdl_ID3.h"
#include "audio/ogg_comments.h"
#include "core/code_page.h"
#include "core/paths.h"
#include "core/text.h"
#include "tracks/tag_texts.h"

namespace tunemeadow {
namespace {

/// Which tags are looked at.
struct WantedTags {
  bool id3v2, id3v1;
  ID3v2Versions versions;
  bool by_frames = false;  ///< ID3v2 texts end where their frames do
};

/// The ID3v2 values are taken out before the analysis, which clears them.
void ReadMpegTags(FileBytes& file, const WantedTags& wanted, ScanProgress* progress, Mp3Info& info,
                  TagCandidates& candidates) {
  candidates.has_id3v2 = HasID3v2Tag(file);
  if (wanted.id3v2 && candidates.has_id3v2) {
    const std::string result = wanted.by_frames ? ReadID3v2TagByFrames(file, info)
                                                : ReadID3v2Tag(file, wanted.versions, info);
    if (result == "OK") TakeID3v2Values(info, candidates);
  }
  ID3v1Tag record;
  candidates.has_id3v1 = ReadID3v1Tag(file, record);
  ReadMp3Info(file, candidates.has_id3v1 && wanted.id3v1, true, info, progress);
}

/// A read that fails leaves the fields after the failing one alone: a record of its own makes sure
/// that they do not hold the values of the file before.
void ReadOggTags(FileBytes& file, TagCandidates& candidates) {
  Mp3Info info;
  (void)ReadOggInfo(file, info);
  TakeOggValues(info, candidates);
}

/// "m:ss"; the minutes go on above 59.
std::string PlaytimeText(std::int32_t seconds) {
  const std::int32_t rest = seconds % 60;
  return std::to_string(seconds / 60) + (rest < 10 ? ":0" : ":") + std::to_string(rest);
}

/// Of the file's own block what is no text of a track stays, as far as it can be read; that of
/// another file must not come in its place.
bool WriteLyrics3(const std::string& path, const TrackTexts& texts, TagWriting& writing) {
  Lyrics3 block;
  const bool whole = ReadLyrics3Tag(path, block);
  if (!whole && HasLyrics3Tag(path, block)) ++writing.losses.blocks;
  bool ok = false;
  WriteTag(writing, path, FillLyrics3(texts, writing.losses), block, ok);
  return ok;
}

/// The writer puts zero bytes in front of the lyrics, so each try needs a record of its own.
std::string WriteID3v2(const std::string& path, const TrackTexts& texts, bool with_picture,
                       TagWriting& writing) {
  Mp3Info info;
  FillInfo(texts, info, writing.losses);
  return WriteID3v2Tag(writing, path, with_picture, info);
}

}  // namespace

void SetStreamTexts(const Mp3Info& info, FileKind kind, bool empty, TrackTexts& texts) {
  // A stream whose header was not found lasts no time, whatever the record still holds; of an Ogg
  // stream neither bit rate nor play time is known.
  const bool is_mpeg = kind == FileKind::kMp3;
  const std::int32_t seconds = is_mpeg && !info.NoHeader && !empty ? info.Playtime : 0;
  texts[TrackField::quality] = is_mpeg ? QualityText(info) : "0 kbps";
  if (is_mpeg && empty) texts[TrackField::quality] = kDamagedHeader;
  texts[TrackField::Playtime] = PlaytimeText(seconds);
  texts[TrackField::playtimereal] = std::to_string(seconds);
  if (!is_mpeg) return;
  std::string& comment = texts[TrackField::Comment];
  if (ID3v1Values{&info}.HasTrack()) comment.resize(Left(comment, kCommentBeforeTrack).size());
  if (!info.CommentOverride.empty()) comment = FromTagText(info.CommentOverride);
}

void ClassicTags::Read(FileBytes& file, FileKind kind, const Preferences& options,
                       ScanProgress* progress, TrackTexts& texts) {
  candidates_.Clear();
  const bool is_mpeg = kind == FileKind::kMp3;
  if (is_mpeg) {
    const WantedTags wanted = {
        .id3v2 = options.chkID3v2Read,
        .id3v1 = options.chkID3Read,
        .versions = options.optID3V2Versions ? ID3v2Versions::kAny : ID3v2Versions::kTwoToFour};
    ReadMpegTags(file, wanted, progress, info_, candidates_);
  } else {
    ReadOggTags(file, candidates_);
  }
  if (options.chkLyrics3 && ReadLyrics3Tag(file, lyrics3_)) {
    TakeLyrics3Values(lyrics3_, candidates_);
  }
  MergeTags(candidates_, {is_mpeg ? &info_ : nullptr}, texts);
  SetStreamTexts(info_, kind, file.IsOpen() && file.Length() == 0, texts);
}

bool ClassicTags::ReadTexts(const std::string& path, TrackTexts& texts) {
  FileBytes file;
  if (!file.Open(path)) return false;
  Mp3Info info;
  candidates_.Clear();
  ReadMpegTags(file,
               {.id3v2 = true, .id3v1 = true, .versions = ID3v2Versions::kAny, .by_frames = true},
               nullptr, info, candidates_);
  MergeTags(candidates_, {&info}, texts);
  // A file without any track is none of the number 0.
  std::string& track = texts[TrackField::trackno];
  if (candidates_.texts[TrackField::trackno].empty() && track == "0") track.clear();
  // A row takes the first genre of the list for none; the tag has named it.
  std::string& genre = texts[TrackField::genrereal];
  if (genre.empty() && candidates_.genre == 0) genre = GenreName(0).value_or("");
  return true;
}

bool ClassicTags::Write(SavedTag tag, const std::string& path, const TagsToWrite& tags,
                        TagWriting& writing) {
  switch (tag) {
    case SavedTag::kID3v2:
      return WriteID3v2(path, tags.texts, false, writing) == "OK";
    case SavedTag::kID3v1: {
      const ID3v1Tag record = FillRecord(tags.texts, writing.losses);
      return WriteID3v1Tag(writing, path, tags.empty_record ? ID3v1Tag() : record, false);
    }
    default:
      return WriteLyrics3(path, tags.texts, writing);
  }
}

std::string ClassicTags::Remove(SavedTag tag, const std::string& path, TagWriting& writing) {
  switch (tag) {
    case SavedTag::kID3v2:
      return RemoveID3v2Tag(writing, path);
    case SavedTag::kID3v1:
      return RemoveID3v1Tag(writing, path);
    default:
      return KillLyrics3Tag(writing, path);
  }
}

PictureState ClassicTags::StateOfPicture(const std::string& path) {
  FileBytes file;
  if (!file.Open(path)) return PictureState::kUnreadable;
  if (file.Length() == 0) return PictureState::kEmptyFile;
  Mp3Info own;
  const bool has = ReadID3v2Tag(file, ID3v2Versions::kAny, own) == "OK" && own.HasPicture;
  return has ? PictureState::kHasOne : PictureState::kNone;
}

std::optional<ID3v2Picture> ClassicTags::ReadPicture(const std::string& path) {
  return ReadID3v2Pictures(path);
}

std::string ClassicTags::WritePicture(const std::string& path, const TrackTexts& texts,
                                      TagWriting& writing) {
  return WriteID3v2(path, texts, true, writing);
}

std::string ClassicTags::RemovePictures(const std::string& path, TagWriting& writing) {
  return RemoveID3v2Picture(writing, path);
}

FileKind FileKindOf(std::string_view path) noexcept {
  if (HasExtension(path, "mp3")) return FileKind::kMp3;
  return HasExtension(path, "ogg") ? FileKind::kOgg : FileKind::kOther;
}

std::string_view NoTagText(SavedTag tag) noexcept {
  if (tag == SavedTag::kID3v2) return kNoID3v2Tag;
  return tag == SavedTag::kID3v1 ? kNoID3v1Tag : kNoLyrics3Tag;
}

}  // namespace tunemeadow
