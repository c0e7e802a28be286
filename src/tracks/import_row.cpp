// SPDX-License-Identifier: GPL-3.0-or-later
#include "tracks/import_row.h"

#include <algorithm>

#include "audio/genres.h"
#include "audio/id3v2_reader.h"
#include "audio/mp3reader.h"
#include "core/code_page.h"
#include "core/dates.h"
#include "core/numbers.h"
#include "core/paths.h"
#include "core/text.h"
#include "store/statement.h"

namespace tunemeadow {

const std::array<std::string_view, kImportColumns> kImportColumnNames = {"genrereal",
                                                                         "Preference",
                                                                         "Situation",
                                                                         "[Mood]",
                                                                         "Tempo",
                                                                         "BIOS",
                                                                         "LYRICS",
                                                                         "haspic",
                                                                         "HasID3V1",
                                                                         "HasID3V2",
                                                                         "trackno",
                                                                         "bpm",
                                                                         "location",
                                                                         "Songname",
                                                                         "Artist",
                                                                         "genre",
                                                                         "[year]",
                                                                         "album",
                                                                         "playtime",
                                                                         "playtimereal",
                                                                         "filesize",
                                                                         "filesizereal",
                                                                         "comment",
                                                                         "quality",
                                                                         "datetimeofdbinsert",
                                                                         "datetimeofdbupdate",
                                                                         "datetimeoffile",
                                                                         "composer",
                                                                         "originalartist",
                                                                         "url",
                                                                         "copyright",
                                                                         "encodedby"};

namespace {

/// What the steps behind the merge do to one column of tag text.
struct TextRule {
  ImportColumn column;
  std::size_t longest;  ///< characters; a longer text is cut
  std::size_t cut_to;   ///< to so many
  bool beautified;      ///< takes part in capitalising and replacing
};

constexpr std::size_t kAnyLength = std::string_view::npos;

constexpr std::array<TextRule, 19> kTextRules = {{
    {ImportColumn::trackno, 5, 5, false},
    {ImportColumn::bpm, 50, 50, false},
    // Far less than the limit is left of a title or artist that is too long.
    {ImportColumn::Songname, 255, 25, true},
    {ImportColumn::Artist, 255, 25, true},
    {ImportColumn::year, 4, 4, false},
    {ImportColumn::album, 255, 255, true},
    {ImportColumn::genrereal, 255, 255, false},
    {ImportColumn::Preference, 255, 255, false},
    {ImportColumn::Situation, 255, 255, false},
    {ImportColumn::Mood, 255, 255, false},
    {ImportColumn::Tempo, 255, 255, false},
    {ImportColumn::composer, 255, 255, true},
    {ImportColumn::originalartist, 255, 255, true},
    {ImportColumn::url, 255, 255, true},
    {ImportColumn::copyright, 255, 255, true},
    {ImportColumn::encodedby, 255, 255, true},
    {ImportColumn::comment, kAnyLength, kAnyLength, false},
    {ImportColumn::LYRICS, kAnyLength, kAnyLength, false},
    {ImportColumn::BIOS, kAnyLength, kAnyLength, false},
}};

/// Bytes and characters of the comment of an ID3v1.1 tag, which the track number follows.
constexpr std::size_t kCommentBeforeTrack = 28;

void StripInPlace(std::string& text) {
  if (text.empty()) return;
  if (text.front() == ' ' || text.back() == ' ' || text.find('\0') != std::string::npos) {
    text = StripNulls(text);
  }
}

void DecodeInPlace(std::string& text) {
  const bool ascii = std::all_of(text.begin(), text.end(),
                                 [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  if (!ascii) text = FromTagText(text);
}

void CutInPlace(std::string& text, std::size_t longest, std::size_t cut_to) {
  if (text.size() > longest && Length(text) > longest) text.resize(Left(text, cut_to).size());
}

void PreferCandidate(std::string& text, const TagText& candidate) {
  if (!candidate.empty()) text = candidate;
}

std::string SizeText(std::int64_t bytes) {
  return FormatFixed(static_cast<double>(bytes) / 1024 / 1024, 2) + " MB";
}

/// "m:ss"; the minutes go on above 59.
std::string PlaytimeText(std::int32_t seconds) {
  const std::int32_t rest = seconds % 60;
  return std::to_string(seconds / 60) + (rest < 10 ? ":0" : ":") + std::to_string(rest);
}

/// The steps from the values of the readers to the texts of the row, in their order.
class RowBuilder {
 public:
  RowBuilder(const FileFacts& facts, const Mp3Info& info, const Preferences& options,
             ImportRow& row)
      : facts_(facts), info_(info), options_(options), row_(row) {}

  void Build(std::string_view now) {
    for (std::string& text : row_.texts) text.clear();
    row_.whole = facts_.kind != FileKind::kOther;
    if (row_.whole) {
      TakeID3v1Values();
      MergeCandidates();
      SetStreamTexts();
      SetGenre();
      CleanTexts();
      SettleComment();
      EscapeTexts();
      CapTexts();
      BeautifyTexts();
    }
    SetFileTexts(now);
  }

  void BuildTagTexts() {
    for (std::string& text : row_.texts) text.clear();
    TakeID3v1Values();
    MergeCandidates();
    SetGenre();
    for (const TextRule& rule : kTextRules) StripInPlace(Text(rule.column));
  }

 private:
  std::string& Text(ImportColumn column) { return row_[column]; }

  /// Only the analysis of an MPEG file leaves ID3v1 values.
  void TakeID3v1Values() {
    if (facts_.kind != FileKind::kMp3) return;
    Text(ImportColumn::Songname) = info_.Title;
    Text(ImportColumn::Artist) = info_.Artist;
    Text(ImportColumn::album) = info_.Album;
    Text(ImportColumn::year) = info_.Year;
    Text(ImportColumn::trackno) = info_.Track;
    genre_ = info_.Genre;
    has_id3v1_track_ = !info_.Track.empty() && info_.Track != "0";
    // The byte of the track number follows a zero byte and would become text without the cut.
    Text(ImportColumn::comment) =
        info_.Comment.substr(0, has_id3v1_track_ ? kCommentBeforeTrack : kAnyLength);
  }

  void MergeCandidates() {
    const TagCandidates& found = facts_.candidates;
    PreferCandidate(Text(ImportColumn::Songname), found.title);
    PreferCandidate(Text(ImportColumn::Artist), found.artist);
    PreferCandidate(Text(ImportColumn::album), found.album);
    PreferCandidate(Text(ImportColumn::year), found.year);
    PreferCandidate(Text(ImportColumn::comment), found.comment);
    PreferCandidate(Text(ImportColumn::trackno), found.track);
    if (!found.genre_number.empty()) genre_ = found.genre;
    Text(ImportColumn::genrereal) = found.genre_name;
    Text(ImportColumn::bpm) = found.bpm;
    Text(ImportColumn::composer) = found.composer;
    Text(ImportColumn::originalartist) = found.original_artist;
    Text(ImportColumn::encodedby) = found.encoded_by;
    Text(ImportColumn::copyright) = found.copyright;
    Text(ImportColumn::url) = found.url;
    Text(ImportColumn::LYRICS) = found.lyrics;
    Text(ImportColumn::Preference) = found.preference;
    Text(ImportColumn::Situation) = found.situation;
    Text(ImportColumn::Mood) = found.mood;
    Text(ImportColumn::Tempo) = found.tempo;
    Text(ImportColumn::BIOS) = found.bio;
    Text(ImportColumn::haspic) = found.has_picture ? "1" : "0";
    Text(ImportColumn::HasID3V1) = facts_.has_id3v1 ? "1" : "0";
    Text(ImportColumn::HasID3V2) = facts_.has_id3v2 ? "1" : "0";
  }

  /// A stream whose header was not found lasts no time, whatever the record still holds; of an Ogg
  /// stream neither bit rate nor play time is known.
  void SetStreamTexts() {
    const bool is_mpeg = facts_.kind == FileKind::kMp3;
    const std::int32_t seconds = is_mpeg && !info_.NoHeader ? info_.Playtime : 0;
    Text(ImportColumn::quality) = is_mpeg ? QualityText(info_) : "0 kbps";
    Text(ImportColumn::playtime) = PlaytimeText(seconds);
    Text(ImportColumn::playtimereal) = std::to_string(seconds);
  }

  /// The first genre of the ID3v1 list counts as none.
  void SetGenre() {
    if (genre_ == 0) genre_ = kNoGenre;
    Text(ImportColumn::genre) = std::to_string(genre_);
    std::string& name = Text(ImportColumn::genrereal);
    if (name.empty() && genre_ >= 1 && genre_ <= 256) name = GenreName(genre_).value_or("");
  }

  void CleanTexts() {
    for (const TextRule& rule : kTextRules) {
      StripInPlace(Text(rule.column));
      DecodeInPlace(Text(rule.column));
    }
  }

  void SettleComment() {
    std::string& comment = Text(ImportColumn::comment);
    if (has_id3v1_track_) CutInPlace(comment, kCommentBeforeTrack, kCommentBeforeTrack);
    if (facts_.kind == FileKind::kMp3 && !info_.CommentOverride.empty()) {
      comment = FromTagText(info_.CommentOverride);
    }
  }

  void EscapeTexts() {
    for (const TextRule& rule : kTextRules) {
      std::string& text = Text(rule.column);
      if (text.find_first_of("'\"") != std::string::npos) text = EscapeTagText(text);
    }
  }

  void CapTexts() {
    for (const TextRule& rule : kTextRules) {
      std::string& text = Text(rule.column);
      if (rule.column == ImportColumn::bpm && !ParseNumber(text)) text.clear();
      CutInPlace(text, rule.longest, rule.cut_to);
      if (rule.column == ImportColumn::bpm && !ParseNumber(text)) text.clear();
      StripInPlace(text);
    }
  }

  void BeautifyTexts() {
    if (!options_.chkCapitalize && !options_.chkReplace) return;
    for (const TextRule& rule : kTextRules) {
      if (!rule.beautified) continue;
      std::string& text = Text(rule.column);
      if (options_.chkCapitalize) text = Capitalize(text);
      if (options_.chkReplace) {
        text = ReplaceEach(text, options_.txtReplaceevery, options_.txtReplacewith);
      }
    }
  }

  void SetFileTexts(std::string_view now) {
    Text(ImportColumn::location) = facts_.path;
    if (facts_.length) {
      Text(ImportColumn::filesizereal) = std::to_string(*facts_.length);
      // An empty file has a size text only where more is told of it.
      if (row_.whole || *facts_.length != 0) {
        Text(ImportColumn::filesize) = SizeText(*facts_.length);
      }
    }
    Text(ImportColumn::datetimeofdbinsert) = now;
    Text(ImportColumn::datetimeofdbupdate) = now;
    if (facts_.last_write) Text(ImportColumn::datetimeoffile) = DateTimeText(*facts_.last_write);
  }

  const FileFacts& facts_;
  const Mp3Info& info_;
  const Preferences& options_;
  ImportRow& row_;
  std::int16_t genre_ = kNoGenre;
  bool has_id3v1_track_ = false;
};

void AppendLiteral(std::string& statement, std::string_view text, char quote) {
  statement += quote;
  if (text.find(quote) == std::string_view::npos) {
    statement += text;
  } else {
    statement += QuoteInner(text, quote);
  }
  statement += quote;
}

bool IsBareNumber(ImportColumn column) noexcept {
  return column == ImportColumn::haspic || column == ImportColumn::HasID3V1 ||
         column == ImportColumn::HasID3V2;
}

const std::string& WholeInsertHead() {
  static const std::string head = [] {
    std::string text = "insert into mp3sTabelle (";
    for (const std::string_view name : kImportColumnNames) text.append(name) += ',';
    text.back() = ')';
    return text + "  values (";
  }();
  return head;
}

constexpr std::string_view kShortInsertHead =
    "insert into mp3sTabelle (datetimeofdbinsert,datetimeofdbupdate,datetimeoffile,location,"
    "filesize,filesizereal) values (";

constexpr std::array kShortInsertColumns = {
    ImportColumn::datetimeofdbinsert, ImportColumn::datetimeofdbupdate,
    ImportColumn::datetimeoffile,     ImportColumn::location,
    ImportColumn::filesize,           ImportColumn::filesizereal};

}  // namespace

FileKind FileKindOf(std::string_view path) noexcept {
  if (HasExtension(path, "mp3")) return FileKind::kMp3;
  return HasExtension(path, "ogg") ? FileKind::kOgg : FileKind::kOther;
}

void TakeID3v2Values(const Mp3Info& info, TagCandidates& candidates) {
  candidates.title = StripNulls(info.Title);
  candidates.artist = StripNulls(info.Artist);
  candidates.album = StripNulls(info.Album);
  candidates.year = StripNulls(info.Year);
  candidates.comment = StripNulls(info.Comment);
  candidates.track = StripNulls(info.TrackV2);
  candidates.bpm = StripNulls(info.Bpm);
  GenreText genre = SplitGenreText(StripNulls(info.GenreV2));
  candidates.genre_number = std::move(genre.number);
  candidates.genre = genre.genre;
  candidates.genre_name = std::move(genre.name);
  candidates.composer = StripNulls(info.Composer);
  candidates.original_artist = StripNulls(info.Original);
  candidates.encoded_by = StripNulls(info.EncodedBy);
  candidates.copyright = StripNulls(info.Copyright);
  candidates.url = StripNulls(info.Url);
  candidates.lyrics = StripNulls(info.Lyrics);
  candidates.preference = StripNulls(info.Preference);
  candidates.situation = StripNulls(info.Situation);
  candidates.mood = StripNulls(info.Mood);
  candidates.tempo = StripNulls(info.Tempo);
  candidates.bio = StripNulls(info.Bio);
  candidates.has_picture = info.HasPicture;
}

void TakeOggValues(const Mp3Info& info, TagCandidates& candidates) {
  candidates.title = StripNulls(info.Title);
  candidates.artist = StripNulls(info.Artist);
  candidates.album = StripNulls(info.Album);
  candidates.year = StripNulls(info.Year);
  candidates.comment = StripNulls(info.Comment);
  candidates.track = StripNulls(info.TrackV2);
  candidates.genre_name = StripNulls(info.GenreV2);
  candidates.composer = StripNulls(info.Composer);
  candidates.copyright = StripNulls(info.Copyright);
  candidates.url = StripNulls(info.Url);
}

void TakeLyrics3Values(const Lyrics3& lyrics3, TagCandidates& candidates) {
  PreferCandidate(candidates.lyrics, StripNulls(lyrics3.Lyrics3Lyr));
  PreferCandidate(candidates.situation, StripNulls(lyrics3.Lyrics3Sit));
  PreferCandidate(candidates.mood, StripNulls(lyrics3.Lyrics3Moo));
  PreferCandidate(candidates.album, StripNulls(lyrics3.Lyrics3Eal));
  PreferCandidate(candidates.artist, StripNulls(lyrics3.Lyrics3Ear));
  PreferCandidate(candidates.title, StripNulls(lyrics3.Lyrics3Ett));
}

void BuildImportRow(const FileFacts& facts, const Mp3Info& info, const Preferences& options,
                    std::string_view now, ImportRow& row) {
  RowBuilder(facts, info, options, row).Build(now);
}

void MergeTagTexts(const FileFacts& facts, const Mp3Info& info, const Preferences& options,
                   ImportRow& row) {
  RowBuilder(facts, info, options, row).BuildTagTexts();
}

void BuildInsertStatement(const ImportRow& row, char quote, std::string& statement) {
  if (row.whole) {
    statement = WholeInsertHead();
    for (std::size_t i = 0; i < kImportColumns; ++i) {
      const auto column = static_cast<ImportColumn>(i);
      if (IsBareNumber(column)) {
        statement += row[column];
      } else {
        AppendLiteral(statement, row[column], quote);
      }
      statement += ',';
    }
  } else {
    statement = kShortInsertHead;
    for (const ImportColumn column : kShortInsertColumns) {
      AppendLiteral(statement, row[column], quote);
      statement += ',';
    }
  }
  statement.back() = ')';
}

}  // namespace tunemeadow
