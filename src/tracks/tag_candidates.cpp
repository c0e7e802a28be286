// SPDX-License-Identifier: GPL-3.0-or-later
#include "tracks/tag_candidates.h"

#include <string_view>
#include <utility>

#include "audio/genres.h"
#include "audio/id3v2_reader.h"
#include "core/code_page.h"
#include "core/text.h"
#include "tracks/tag_port.h"
#include "tracks/track_field_table.h"

namespace tunemeadow {
namespace {

void TakeTagTexts(const Mp3Info& info, TrackTexts& texts) {
  for (const TrackFieldRow& row : kTrackFieldTable) {
    if (row.IsTagText()) texts[row.field] = StripNulls(info.*row.tags.id3v2);
  }
}

void StripInPlace(std::string& text) {
  if (text.empty()) return;
  if (text.front() == ' ' || text.back() == ' ' || text.find('\0') != std::string::npos) {
    text = StripNulls(text);
  }
}

void DecodeInPlace(std::string& text) {
  if (!AllAscii(text)) text = FromTagText(text);
}

/// The byte of the track number follows a zero byte and would become text without the cut.
std::string_view TextOfRecord(TrackField field, const TagText& value, bool has_track) {
  const bool is_short = has_track && field == TrackField::Comment;
  return std::string_view(value).substr(0, is_short ? kCommentBeforeTrack : kAnyLength);
}

/// The first genre of the ID3v1 list counts as none.
void SetGenre(const TagCandidates& candidates, const Mp3Info* id3v1, TrackTexts& texts) {
  std::int16_t genre = id3v1 != nullptr ? id3v1->Genre : kNoGenre;
  if (!candidates.genre_number.empty()) genre = candidates.genre;
  if (genre == 0) genre = kNoGenre;
  texts[TrackField::genre] = std::to_string(genre);
  std::string& name = texts[TrackField::genrereal];
  if (name.empty() && genre >= 1 && genre <= 256) name = GenreName(genre).value_or("");
}

}  // namespace

void TagCandidates::Clear() {
  for (std::string& text : texts.texts) text.clear();
  genre_number.clear();
  genre = kNoGenre;
  has_picture = has_id3v1 = has_id3v2 = false;
}

void TakeID3v2Values(const Mp3Info& info, TagCandidates& candidates) {
  TakeTagTexts(info, candidates.texts);
  GenreText genre = SplitGenreText(candidates.texts[TrackField::genrereal]);
  candidates.genre_number = std::move(genre.number);
  candidates.genre = genre.genre;
  candidates.texts[TrackField::genrereal] = std::move(genre.name);
  candidates.has_picture = info.HasPicture;
}

void TakeOggValues(const Mp3Info& info, TagCandidates& candidates) {
  TakeTagTexts(info, candidates.texts);
}

void TakeLyrics3Values(const Lyrics3& lyrics3, TagCandidates& candidates) {
  for (const TrackFieldRow& row : kTrackFieldTable) {
    if (row.tags.lyrics3 == nullptr) continue;
    TagText text = StripNulls(lyrics3.*row.tags.lyrics3);
    if (!text.empty()) candidates.texts[row.field] = std::move(text);
  }
}

void MergeTags(const TagCandidates& candidates, const ID3v1Values& id3v1, TrackTexts& texts) {
  for (const TrackFieldRow& row : kTrackFieldTable) {
    std::string& text = texts[row.field];
    text.clear();
    if (!row.IsTagText()) continue;
    text = candidates.texts[row.field];
    if (text.empty() && id3v1.info != nullptr && row.tags.id3v1 != nullptr) {
      text = TextOfRecord(row.field, id3v1.info->*row.tags.id3v1, id3v1.HasTrack());
    }
    StripInPlace(text);
    DecodeInPlace(text);
  }
  SetGenre(candidates, id3v1.info, texts);
  texts[TrackField::haspic] = candidates.has_picture ? "1" : "0";
  texts[TrackField::hasid3v1] = candidates.has_id3v1 ? "1" : "0";
  texts[TrackField::hasid3v2] = candidates.has_id3v2 ? "1" : "0";
}

}  // namespace tunemeadow
