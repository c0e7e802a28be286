// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/tag_values.h"

#include <algorithm>
#include <string_view>

#include "audio/genres.h"
#include "core/code_page.h"
#include "editing/save_rules.h"
#include "tracks/import_file.h"

namespace tunemeadow {
namespace {

/// Where each value comes from and goes to.
struct ValuePlace {
  std::string TagValues::*value;
  std::string DetailEditor::*control;
  Field field;
  TagText Mp3Info::*text;
};

constexpr std::array kValuePlaces = {
    ValuePlace{&TagValues::title, &DetailEditor::txtTitelSave, Field::Songname, &Mp3Info::Title},
    ValuePlace{&TagValues::artist, &DetailEditor::txtInterpretSave, Field::Artist,
               &Mp3Info::Artist},
    ValuePlace{&TagValues::album, &DetailEditor::txtAlbumSave, Field::album, &Mp3Info::Album},
    ValuePlace{&TagValues::year, &DetailEditor::txtYearSave, Field::year, &Mp3Info::Year},
    ValuePlace{&TagValues::comment, &DetailEditor::txtCommentSave, Field::Comment,
               &Mp3Info::Comment},
    ValuePlace{&TagValues::track, &DetailEditor::txtTracknumber, Field::trackno, &Mp3Info::Track},
    ValuePlace{&TagValues::bpm, &DetailEditor::txtBPMSave, Field::BPM, &Mp3Info::Bpm},
    ValuePlace{&TagValues::genre, &DetailEditor::cboGenre1, Field::genrereal, &Mp3Info::GenreV2},
    ValuePlace{&TagValues::lyrics, &DetailEditor::txtLyricsSave, Field::Lyrics, &Mp3Info::Lyrics},
    ValuePlace{&TagValues::bio, &DetailEditor::txtBiosSave, Field::bios, &Mp3Info::Bio},
    ValuePlace{&TagValues::mood, &DetailEditor::txtMoodSave, Field::Mood, &Mp3Info::Mood},
    ValuePlace{&TagValues::preference, &DetailEditor::txtPreferenceSave, Field::preference,
               &Mp3Info::Preference},
    ValuePlace{&TagValues::situation, &DetailEditor::txtSituationSave, Field::Situation,
               &Mp3Info::Situation},
    ValuePlace{&TagValues::tempo, &DetailEditor::txtTempoSave, Field::tempo, &Mp3Info::Tempo},
};

/// The same for the controls txtSave3, in their order.
struct ExtraPlace {
  std::string TagValues::*value;
  Field field;
  TagText Mp3Info::*text;
};

constexpr std::array<ExtraPlace, kExtraFields> kExtraPlaces = {{
    {&TagValues::composer, Field::composer, &Mp3Info::Composer},
    {&TagValues::copyright, Field::copyright, &Mp3Info::Copyright},
    {&TagValues::encoded_by, Field::encodedby, &Mp3Info::EncodedBy},
    {&TagValues::original, Field::originalartist, &Mp3Info::Original},
    {&TagValues::url, Field::url, &Mp3Info::Url},
}};

/// Which column of an import holds what the writer takes, but for the genre.
struct ImportedPlace {
  ImportColumn column;
  TagText Mp3Info::*text;
};

constexpr std::array kImportedPlaces = {
    ImportedPlace{ImportColumn::Songname, &Mp3Info::Title},
    ImportedPlace{ImportColumn::Artist, &Mp3Info::Artist},
    ImportedPlace{ImportColumn::album, &Mp3Info::Album},
    ImportedPlace{ImportColumn::year, &Mp3Info::Year},
    ImportedPlace{ImportColumn::comment, &Mp3Info::Comment},
    ImportedPlace{ImportColumn::trackno, &Mp3Info::Track},
    ImportedPlace{ImportColumn::bpm, &Mp3Info::Bpm},
    ImportedPlace{ImportColumn::LYRICS, &Mp3Info::Lyrics},
    ImportedPlace{ImportColumn::BIOS, &Mp3Info::Bio},
    ImportedPlace{ImportColumn::Mood, &Mp3Info::Mood},
    ImportedPlace{ImportColumn::Preference, &Mp3Info::Preference},
    ImportedPlace{ImportColumn::Situation, &Mp3Info::Situation},
    ImportedPlace{ImportColumn::Tempo, &Mp3Info::Tempo},
    ImportedPlace{ImportColumn::composer, &Mp3Info::Composer},
    ImportedPlace{ImportColumn::copyright, &Mp3Info::Copyright},
    ImportedPlace{ImportColumn::encodedby, &Mp3Info::EncodedBy},
    ImportedPlace{ImportColumn::originalartist, &Mp3Info::Original},
    ImportedPlace{ImportColumn::url, &Mp3Info::Url},
};

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

TagValues ValuesOfEditor(const DetailEditor& details) {
  TagValues values;
  for (const ValuePlace& place : kValuePlaces) values.*place.value = details.*place.control;
  for (std::size_t i = 0; i < kExtraFields; ++i) {
    values.*kExtraPlaces[i].value = details.txtSave3[i];
  }
  return values;
}

TagValues ValuesOfRow(const ResultList& list, std::size_t row) {
  TagValues values;
  for (const ValuePlace& place : kValuePlaces) values.*place.value = list.Cell(row, place.field);
  for (const ExtraPlace& place : kExtraPlaces) values.*place.value = list.Cell(row, place.field);
  return values;
}

void FillInfo(const TagValues& values, Mp3Info& info, TagLosses& losses) {
  for (const ValuePlace& place : kValuePlaces) {
    info.*place.text = TagTextOf(values.*place.value, losses);
  }
  for (const ExtraPlace& place : kExtraPlaces) {
    info.*place.text = TagTextOf(values.*place.value, losses);
  }
  info.Genre = GenreNumberFromName(info.GenreV2);
}

ID3v1Tag FillRecord(const TagValues& values) {
  return FillID3v1Tag({.artist = ToTagText(values.artist),
                       .genre = ToTagText(values.genre),
                       .title = ToTagText(values.title),
                       .year = ToTagText(values.year),
                       .album = ToTagText(values.album),
                       .comment = ToTagText(values.comment),
                       // A row may hold "3/12", or a number that the record has no room for.
                       .track = TrackToSave(values.track).value_or("")});
}

void CountLostCharacters(std::initializer_list<const std::string*> texts, TagLosses& losses) {
  for (const std::string* text : texts) (void)TagTextOf(*text, losses);
}

bool FillInfoFromFile(const std::string& path, const Preferences& options, Mp3Info& info) {
  // What an import passes over must not be erased here.
  Preferences reading = options;
  reading.chkID3v2Read = true;
  reading.chkID3Read = true;
  reading.optID3V2Versions = true;
  ImportReader reader(reading, info);
  const ImportRow* const row = reader.ReadTagTexts(path);
  if (row == nullptr) return false;
  for (const ImportedPlace& place : kImportedPlaces) info.*place.text = (*row)[place.column];
  info.GenreV2 = (*row)[ImportColumn::genrereal];
  info.Genre = GenreNumberFromName(info.GenreV2);
  return true;
}

}  // namespace tunemeadow
