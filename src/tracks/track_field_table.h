// SPDX-License-Identifier: GPL-3.0-or-later
// The table of a track's fields, one row each: how a field is called, shown, searched, stored, read
// of a file and written into it. Whoever needs some of the fields walks the table.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <string_view>

#include "audio/lyrics3.h"
#include "audio/mp3_info.h"
#include "tracks/track_fields.h"

namespace tunemeadow {

/// How a column of the list is sorted. The numbers are those of mLVSort.
enum class SortKind : int {
  kNumber = 0,
  kText = 1,
  kTime = 2,           ///< "m:ss"
  kLeadingNumber = 3,  ///< the part before the first blank
  kDate = 4,
  kSize = 5  ///< "x.xx MB"
};

/// Column of the result lists.
struct FieldColumn {
  std::string_view caption;
  SortKind kind = SortKind::kText;
  int standard_width = 0;                       ///< twips (1/1440 inch)
  bool number = false;                          ///< aligned to the right
  std::string_view playlist_caption = caption;  ///< in ListView3
};

/// Places of a field among those of its kind count from 1; 0: it is none of them.
struct FieldPlace {
  int place = 0;
};

/// A place in a statement, and how the field is spelled there. In an update that is all between two
/// values: the comma and the equals sign too.
struct StatementPlace {
  int place = 0;
  std::string_view text;
};

/// A place among the conditions of a search.
struct SearchPlace {
  int place = 0;
  std::string_view column;
  std::string_view word;  ///< in the label of a search
  bool escaped = true;    ///< quotes in the text are
};

inline constexpr std::size_t kAnyLength = std::string_view::npos;

/// What an import does to the text. Lengths count characters.
struct ImportRule {
  std::size_t longest = kAnyLength;  ///< a longer text is cut
  std::size_t cut_to = kAnyLength;   ///< to so many
  bool beautified = false;           ///< takes part in capitalising and replacing
};

/// Where the readers of tags leave the text, and where the writers take it from.
struct TagPlaces {
  TagText Mp3Info::*id3v1 = nullptr;    ///< of the record at the end
  TagText Mp3Info::*id3v2 = nullptr;    ///< of an ID3v2 tag or of Vorbis comments
  TagText Lyrics3::*lyrics3 = nullptr;  ///< of a Lyrics3 block

  /// The writer of ID3v2 tags takes the track number from where an ID3v1 record leaves it.
  [[nodiscard]] constexpr TagText Mp3Info::*Written() const {
    return id3v1 != nullptr ? id3v1 : id3v2;
  }
};

/// The field in the detail panels, and what a save does to its text.
struct EditorRule {
  bool shown = false;
  bool editable = false;
  bool escaped = false;  ///< quotes are replaced on the way into the row
  bool ruled = false;    ///< the save's rules for capitals and replacements count
  bool cut = false;      ///< to 255 characters on the way into the row
};

inline constexpr EditorRule kShownText = {.shown = true};
inline constexpr EditorRule kKeptText = {.shown = true, .editable = true};
inline constexpr EditorRule kPlainText = {.shown = true, .editable = true, .escaped = true};
inline constexpr EditorRule kRuledText = {
    .shown = true, .editable = true, .escaped = true, .ruled = true};
inline constexpr EditorRule kCutText = {
    .shown = true, .editable = true, .escaped = true, .cut = true};

struct TrackFieldRow {
  TrackField field;
  std::string_view name;           ///< of its column in the catalogue
  std::string_view select = name;  ///< as the select list spells it
  FieldColumn list = {};           ///< without caption: no column
  SearchPlace search = {};
  StatementPlace insert = {};     ///< of an import
  StatementPlace save = {};       ///< the update of a single save
  StatementPlace mass_save = {};  ///< the update of a save of many
  bool bare_number = false;       ///< stands in these without delimiters
  ImportRule import = {};
  TagPlaces tags = {};  ///< none: no text of a tag
  EditorRule editor = {};
  FieldPlace save_all = {};  ///< among the fields that a save of many can write into all tracks

  [[nodiscard]] constexpr bool IsTagText() const { return tags.id3v2 != nullptr; }
};

inline constexpr std::array<TrackFieldRow, kTrackFields> kTrackFieldTable = {{
    {.field = TrackField::uid,
     .name = "uid",
     .select = "mp3sTabelle.uid",
     .list = {"UID", SortKind::kNumber, 1350, true}},
    {.field = TrackField::Songname,
     .name = "Songname",
     .list = {"Songname", SortKind::kText, 3600},
     .search = {1, "Songname", "Songname"},
     .insert = {14, "Songname"},
     .save = {24, ",Songname="},
     .mass_save = {13, ",Songname="},
     .import = {255, 25, true},
     .tags = {&Mp3Info::Title, &Mp3Info::Title, &Lyrics3::Lyrics3Ett},
     .editor = kRuledText},
    {.field = TrackField::Artist,
     .name = "Artist",
     .list = {"Artist", SortKind::kText, 2700},
     .search = {2, "Artist", "Artist"},
     .insert = {15, "Artist"},
     .save = {27, ",Artist="},
     .mass_save = {20, ",Artist="},
     .import = {255, 25, true},
     .tags = {&Mp3Info::Artist, &Mp3Info::Artist, &Lyrics3::Lyrics3Ear},
     .editor = kRuledText,
     .save_all = {3}},
    {.field = TrackField::genrereal,
     .name = "genrereal",
     .list = {"Genre", SortKind::kText, 1650},
     .search = {3, "Genrereal", "Genre", false},
     .insert = {1, "genrereal"},
     .save = {26, ",GenreReal="},
     .mass_save = {17, ",GenreReal="},
     .import = {255, 255},
     .tags = {.id3v2 = &Mp3Info::GenreV2},
     .editor = kKeptText,
     .save_all = {2}},
    {.field = TrackField::quality,
     .name = "quality",
     .list = {"Quality", SortKind::kLeadingNumber, 3450},
     .search = {4, "quality", "quality"},
     .insert = {24, "quality"},
     .save = {28, ",quality="},
     .editor = kPlainText},
    {.field = TrackField::location,
     .name = "location",
     .list = {"Location", SortKind::kText, 4500},
     .search = {6, "Location", "Location"},
     .insert = {13, "location"},
     .save = {8, ",location="},
     .editor = kShownText},
    {.field = TrackField::year,
     .name = "year",
     .select = "[year]",
     .list = {"Year", SortKind::kText, 900},
     .search = {18, "[year]", "year"},
     .insert = {17, "[year]"},
     .save = {6, ",[year]="},
     .mass_save = {15, " ,[Year]="},
     .import = {4, 4},
     .tags = {.id3v1 = &Mp3Info::Year, .id3v2 = &Mp3Info::Year},
     .editor = kPlainText,
     .save_all = {4}},
    {.field = TrackField::album,
     .name = "album",
     .list = {"Album", SortKind::kText, 2850},
     .search = {19, "Album", "Album"},
     .insert = {18, "album"},
     .save = {7, ",album="},
     .mass_save = {14, ",album="},
     .import = {255, 255, true},
     .tags = {&Mp3Info::Album, &Mp3Info::Album, &Lyrics3::Lyrics3Eal},
     .editor = kRuledText,
     .save_all = {1}},
    {.field = TrackField::trackno,
     .name = "trackno",
     .list = {"Trackno.", SortKind::kNumber, 1200, true},
     .insert = {11, "trackno"},
     .save = {2, ",trackno="},
     .import = {5, 5},
     .tags = {.id3v1 = &Mp3Info::Track, .id3v2 = &Mp3Info::TrackV2},
     .editor = kPlainText},
    {.field = TrackField::Playtime,
     .name = "Playtime",
     .list = {"Playtime", SortKind::kTime, 1200, true},
     .insert = {19, "playtime"},
     .save = {3, ",playtime="},
     .editor = kKeptText},
    {.field = TrackField::Filesize,
     .name = "Filesize",
     .list = {"Filesize", SortKind::kSize, 1275, true},
     .insert = {21, "filesize"},
     .editor = kShownText},
    {.field = TrackField::Comment,
     .name = "Comment",
     .list = {"Comment", SortKind::kText, 2400},
     .search = {20, "comment", "comment"},
     .insert = {23, "comment"},
     .save = {5, ",comment="},
     .mass_save = {12, ",comment="},
     .tags = {.id3v1 = &Mp3Info::Comment, .id3v2 = &Mp3Info::Comment},
     .editor = kPlainText},
    {.field = TrackField::BPM,
     .name = "BPM",
     .list = {"BPM", SortKind::kText, 900, true},
     .insert = {12, "bpm"},
     .save = {1, "BPM="},
     .import = {50, 50},
     .tags = {.id3v2 = &Mp3Info::Bpm},
     .editor = kPlainText},
    {.field = TrackField::preview, .name = "preview", .list = {"Preview", SortKind::kText, 1200}},
    {.field = TrackField::lasttimeplayed,
     .name = "lasttimeplayed",
     .list = {"Last time played", SortKind::kDate, 2400}},
    {.field = TrackField::Situation,
     .name = "Situation",
     .list = {"Situation", SortKind::kText, 1500},
     .search = {7, "Situation", "Situation"},
     .insert = {3, "Situation"},
     .save = {9, ",Situation="},
     .mass_save = {2, ", Situation="},
     .import = {255, 255},
     .tags = {.id3v2 = &Mp3Info::Situation, .lyrics3 = &Lyrics3::Lyrics3Sit},
     .editor = kCutText,
     .save_all = {5}},
    {.field = TrackField::preference,
     .name = "preference",
     .list = {"Preference", SortKind::kText, 1500},
     .search = {8, "Preference", "Preference"},
     .insert = {2, "Preference"},
     .save = {19, ",Preference="},
     .mass_save = {1, "Preference="},
     .import = {255, 255},
     .tags = {.id3v2 = &Mp3Info::Preference},
     .editor = kCutText,
     .save_all = {6}},
    {.field = TrackField::tempo,
     .name = "tempo",
     .list = {"Tempo", SortKind::kText, 1350},
     .search = {10, "tempo", "Tempo"},
     .insert = {5, "Tempo"},
     .save = {23, ",Tempo="},
     .mass_save = {4, ",Tempo="},
     .import = {255, 255},
     .tags = {.id3v2 = &Mp3Info::Tempo},
     .editor = kCutText,
     .save_all = {7}},
    {.field = TrackField::Mood,
     .name = "Mood",
     .list = {"Mood", SortKind::kText, 1350},
     .search = {9, "Mood", "Mood"},
     .insert = {4, "[Mood]"},
     .save = {20, ",Mood="},
     .mass_save = {3, ",Mood="},
     .import = {255, 255},
     .tags = {.id3v2 = &Mp3Info::Mood, .lyrics3 = &Lyrics3::Lyrics3Moo},
     .editor = kCutText,
     .save_all = {8}},
    {.field = TrackField::bios,
     .name = "bios",
     .list = {"Bios", SortKind::kText, 1800},
     .search = {12, "Bios", "Bios"},
     .insert = {6, "BIOS"},
     .save = {21, ",Bios="},
     .tags = {.id3v2 = &Mp3Info::Bio},
     .editor = kPlainText},
    {.field = TrackField::Lyrics,
     .name = "Lyrics",
     .list = {"Lyrics", SortKind::kText, 1800},
     .search = {11, "Lyrics", "Lyrics"},
     .insert = {7, "LYRICS"},
     .save = {22, ",Lyrics="},
     .tags = {.id3v2 = &Mp3Info::Lyrics, .lyrics3 = &Lyrics3::Lyrics3Lyr},
     .editor = kPlainText},
    {.field = TrackField::haspic,
     .name = "haspic",
     .select = "haspic ",
     .list = {"has picture?", SortKind::kText, 1500, false, "Haspic"},
     .insert = {8, "haspic"},
     .bare_number = true},
    {.field = TrackField::composer,
     .name = "composer",
     .list = {"Composer", SortKind::kText, 2100},
     .search = {13, "composer", "composer"},
     .insert = {28, "composer"},
     .save = {12, ",Composer="},
     .mass_save = {5, ",composer="},
     .import = {255, 255, true},
     .tags = {.id3v2 = &Mp3Info::Composer},
     .editor = kCutText,
     .save_all = {9}},
    {.field = TrackField::copyright,
     .name = "copyright",
     .list = {"Copyright", SortKind::kText, 2100},
     .search = {14, "copyright", "copyright"},
     .insert = {31, "copyright"},
     .save = {15, ",Copyright="},
     .mass_save = {6, ",CopyRight="},
     .import = {255, 255, true},
     .tags = {.id3v2 = &Mp3Info::Copyright},
     .editor = kCutText,
     .save_all = {10}},
    {.field = TrackField::encodedby,
     .name = "encodedby",
     .list = {"Encoded by", SortKind::kText, 1800},
     .search = {15, "encodedby", "encodedby"},
     .insert = {32, "encodedby"},
     .save = {16, ",Encodedby="},
     .mass_save = {7, ",encodedby="},
     .import = {255, 255, true},
     .tags = {.id3v2 = &Mp3Info::EncodedBy},
     .editor = kCutText,
     .save_all = {11}},
    {.field = TrackField::originalartist,
     .name = "originalartist",
     .list = {"Orig. Artist", SortKind::kText, 2100},
     .search = {16, "originalartist", "originalartist"},
     .insert = {29, "originalartist"},
     .save = {17, ",originalartist="},
     .mass_save = {8, ",OriginalArtist="},
     .import = {255, 255, true},
     .tags = {.id3v2 = &Mp3Info::Original},
     .editor = kCutText,
     .save_all = {12}},
    {.field = TrackField::url,
     .name = "url",
     .list = {"URL", SortKind::kText, 2400},
     .search = {17, "url", "url"},
     .insert = {30, "url"},
     .save = {18, ",url="},
     .mass_save = {9, ",url="},
     .import = {255, 255, true},
     .tags = {.id3v2 = &Mp3Info::Url},
     .editor = kCutText,
     .save_all = {13}},
    {.field = TrackField::hasid3v1,
     .name = "hasid3v1",
     .list = {"has ID3v1?", SortKind::kText, 1425},
     .insert = {9, "HasID3V1"},
     .save = {13, ",hasid3v1="},
     .mass_save = {10, ",hasid3v1="},
     .bare_number = true},
    {.field = TrackField::hasid3v2,
     .name = "hasid3v2",
     .list = {"has ID3v2?", SortKind::kText, 1425},
     .insert = {10, "HasID3V2"},
     .save = {14, ",hasid3v2="},
     .mass_save = {11, ",hasid3v2="},
     .bare_number = true},
    {.field = TrackField::position, .name = "position", .select = " [position]"},
    {.field = TrackField::file,
     .name = "",
     .list = {"File", SortKind::kText, 3600},
     .search = {5, "Location", "Filename"}},
    {.field = TrackField::genre,
     .name = "genre",
     .insert = {16, "genre"},
     .save = {25, ",Genre="},
     .mass_save = {16, ",Genre="}},
    {.field = TrackField::playtimereal,
     .name = "playtimereal",
     .insert = {20, "playtimereal"},
     .save = {4, ",playtimeREAL="}},
    {.field = TrackField::filesizereal, .name = "filesizereal", .insert = {22, "filesizereal"}},
    {.field = TrackField::datetimeofdbinsert,
     .name = "datetimeofdbinsert",
     .insert = {25, "datetimeofdbinsert"}},
    {.field = TrackField::datetimeofdbupdate,
     .name = "datetimeofdbupdate",
     .insert = {26, "datetimeofdbupdate"},
     .save = {11, ",datetimeofdbupdate="},
     .mass_save = {18, ",datetimeofdbupdate="}},
    {.field = TrackField::datetimeoffile,
     .name = "datetimeoffile",
     .insert = {27, "datetimeoffile"},
     .save = {10, ",datetimeoffile="},
     .mass_save = {19, ",datetimeoffile="}},
}};

[[nodiscard]] constexpr const TrackFieldRow& RowOf(TrackField field) noexcept {
  return kTrackFieldTable[IndexOf(field)];
}

static_assert(std::ranges::is_sorted(kTrackFieldTable, std::ranges::less_equal(),
                                     &TrackFieldRow::field),
              "the rows stand in the order of the fields, each once");

}  // namespace tunemeadow
