// SPDX-License-Identifier: GPL-3.0-or-later
#include "tracks/tag_texts.h"

#include <algorithm>
#include <string_view>

#include "audio/genres.h"
#include "core/code_page.h"
#include "core/numbers.h"
#include "tracks/track_field_table.h"

namespace tunemeadow {
namespace {

constexpr double kLargestTrack = 255;

/// Each character that the code page lacks has become one more "?".
bool LacksCharacters(std::string_view text, const TagText& tag_text) {
  return std::count(tag_text.begin(), tag_text.end(), '?') !=
         std::count(text.begin(), text.end(), '?');
}

TagText TagTextOf(const std::string& text, TagLosses& losses) {
  TagText tag_text = ToTagText(text);
  if (LacksCharacters(text, tag_text)) ++losses.characters;
  return tag_text;
}

}  // namespace

std::optional<std::string> TrackToSave(std::string_view text) {
  const double number = LeadingNumber(text);
  if (!(number > 0)) return std::string();
  if (number > kLargestTrack) return std::nullopt;
  return FormatShortest(number);
}

void FillInfo(const TrackTexts& texts, Mp3Info& info, TagLosses& losses) {
  for (const TrackFieldRow& row : kTrackFieldTable) {
    if (row.IsTagText()) info.*row.tags.Written() = TagTextOf(texts[row.field], losses);
  }
  info.Genre = GenreNumberFromName(info.GenreV2);
}

ID3v1Tag FillRecord(const TrackTexts& texts, TagLosses& losses) {
  return FillID3v1Tag({.artist = TagTextOf(texts[TrackField::Artist], losses),
                       .genre = ToTagText(texts[TrackField::genrereal]),
                       .title = TagTextOf(texts[TrackField::Songname], losses),
                       .year = TagTextOf(texts[TrackField::year], losses),
                       .album = TagTextOf(texts[TrackField::album], losses),
                       .comment = TagTextOf(texts[TrackField::Comment], losses),
                       // A row may hold "3/12", or a number that the record has no room for.
                       .track = TrackToSave(texts[TrackField::trackno]).value_or("")});
}

Lyrics3Texts FillLyrics3(const TrackTexts& texts, TagLosses& losses) {
  return {.lyrics = TagTextOf(texts[TrackField::Lyrics], losses),
          .mood = TagTextOf(texts[TrackField::Mood], losses),
          .situation = TagTextOf(texts[TrackField::Situation], losses),
          .title = ToTagText(texts[TrackField::Songname]),
          .artist = ToTagText(texts[TrackField::Artist]),
          .album = ToTagText(texts[TrackField::album])};
}

}  // namespace tunemeadow
