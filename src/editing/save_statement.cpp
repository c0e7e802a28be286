// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/save_statement.h"

#include "audio/genres.h"
#include "editing/save_rules.h"
#include "store/statement.h"

namespace tunemeadow {
namespace {

/// Appends assignments to a statement.
class UpdateWriter {
 public:
  UpdateWriter(std::string& statement, char quote) : statement_(statement), quote_(quote) {
    statement_ = "Update mp3sTabelle set ";
  }

  /// `assignment` is what stands before the value: "name=", with the comma before it.
  UpdateWriter& Text(std::string_view assignment, std::string_view text) {
    statement_ += assignment;
    statement_ += quote_;
    if (text.find(quote_) == std::string_view::npos) {
      statement_ += text;
    } else {
      statement_ += QuoteInner(text, quote_);
    }
    statement_ += quote_;
    return *this;
  }

  UpdateWriter& Number(std::string_view assignment, std::int64_t number) {
    statement_ += assignment;
    statement_ += std::to_string(number);
    return *this;
  }

 private:
  std::string& statement_;
  char quote_;
};

std::string GenreNumberText(std::string_view genre) {
  return std::to_string(GenreNumberFromName(genre));
}

}  // namespace

void BuildSaveStatement(const DetailEditor& details, const SaveFacts& facts, char quote,
                        std::string& statement) {
  const auto& [composer, copyright, encoded_by, original, url] = details.txtSave3;
  UpdateWriter(statement, quote)
      .Text("BPM=", details.txtBPMSave)
      .Text(",trackno=", details.txtTracknumber)
      .Text(",playtime=", details.txtPlaytime)
      .Text(",playtimeREAL=", std::to_string(PlaytimeSeconds(details.txtPlaytime)))
      .Text(",comment=", details.txtCommentSave)
      .Text(",[year]=", details.txtYearSave)
      .Text(",album=", details.txtAlbumSave)
      .Text(",location=", details.txtLocationSave)
      .Text(",Situation=", details.txtSituationSave)
      .Text(",datetimeoffile=", facts.file_time)
      .Text(",datetimeofdbupdate=", facts.now)
      .Text(",Composer=", composer)
      .Number(",hasid3v1=", facts.hasid3v1)
      .Number(",hasid3v2=", facts.hasid3v2)
      .Text(",Copyright=", copyright)
      .Text(",Encodedby=", encoded_by)
      .Text(",originalartist=", original)
      .Text(",url=", url)
      .Text(",Preference=", details.txtPreferenceSave)
      .Text(",Mood=", details.txtMoodSave)
      .Text(",Bios=", details.txtBiosSave)
      .Text(",Lyrics=", details.txtLyricsSave)
      .Text(",Tempo=", details.txtTempoSave)
      .Text(",Songname=", details.txtTitelSave)
      .Text(",Genre=", GenreNumberText(details.cboGenre1))
      .Text(",GenreReal=", details.cboGenre1)
      .Text(",Artist=", details.txtInterpretSave)
      .Text(",quality=", details.txtQualitaetSave)
      .Number(" where uid=", details.uid);
}

void BuildMassSaveStatement(const MassSaveTexts& texts, std::string& statement) {
  const auto& [composer, copyright, encoded_by, original, url] = texts.extra;
  UpdateWriter(statement, '"')
      .Text("Preference=", texts.preference)
      .Text(", Situation=", texts.situation)
      .Text(",Mood=", texts.mood)
      .Text(",Tempo=", texts.tempo)
      .Text(",composer=", composer)
      .Text(",CopyRight=", copyright)
      .Text(",encodedby=", encoded_by)
      .Text(",OriginalArtist=", original)
      .Text(",url=", url)
      .Number(",hasid3v1=", texts.hasid3v1)
      .Number(",hasid3v2=", texts.hasid3v2)
      .Text(",comment=", texts.comment)
      .Text(",Songname=", texts.title)
      .Text(",album=", texts.album)
      .Text(" ,[Year]=", texts.year)
      .Text(",Genre=", GenreNumberText(texts.genre))
      .Text(",GenreReal=", texts.genre)
      .Text(",datetimeofdbupdate=", texts.now)
      .Text(",datetimeoffile=", texts.file_time)
      .Text(",Artist=", texts.artist)
      .Number(" where uid=", texts.uid);
}

}  // namespace tunemeadow
