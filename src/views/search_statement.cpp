// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text.h"
#include "store/statement.h"
#include "views/quick_search.h"

namespace tunemeadow {

const std::array<std::string_view, kExtraFields> kExtraFieldColumns = {
    "composer", "copyright", "encodedby", "originalartist", "url"};

namespace {

constexpr std::string_view kSelectList =
    "SELECT mp3sTabelle.uid,Songname,Artist,genrereal,quality,location,[year],album,trackno,"
    "Playtime,Filesize,Comment,BPM,preview,lasttimeplayed,Situation,preference,tempo,Mood,bios,"
    "Lyrics,haspic ,composer,copyright,encodedby,originalartist,url,hasid3v1,hasid3v2";

constexpr std::string_view kArchive = " cdarchives.cdarchive='";

/// The join that an archive beside other fields is given: it compares the archives' own column.
constexpr std::string_view kCrossing = " and cdarchives.uid=cdarchives.uid";

/// Ends every statement of a playlist view, behind the name of the playlist.
constexpr std::string_view kPlaylistTail =
    "' and playlists.uid=mp3sTabelle.uid order by [position],mp3sTabelle.location";

std::vector<SearchField> MakeSearchFieldTable() {
  using F = SearchFields;
  const auto field = [](std::string F::*text, std::string_view column, std::string_view word,
                        bool escaped = true) {
    return SearchField{text, 0, column, word, escaped};
  };
  std::vector<SearchField> table = {
      field(&F::cboSongname, "Songname", "Songname"),
      field(&F::cboArtistSearch, "Artist", "Artist"),
      field(&F::cboGenre, "Genrereal", "Genre", false),
      field(&F::txtQualitaet, "quality", "quality"),
      field(&F::txtFileSearch, "Location", "Filename"),
      field(&F::txtLocation, "Location", "Location"),
      field(&F::cboSituation, "Situation", "Situation"),
      field(&F::cboPreference, "Preference", "Preference"),
      field(&F::cboMood, "Mood", "Mood"),
      field(&F::cboTempo, "tempo", "Tempo"),
      field(&F::txtLyrics, "Lyrics", "Lyrics"),
      field(&F::txtBios, "Bios", "Bios"),
  };
  for (std::size_t extra = 0; extra < kExtraFields; ++extra) {
    table.push_back({nullptr, extra, kExtraFieldColumns[extra], kExtraFieldColumns[extra], true});
  }
  table.push_back(field(&F::cboYearSearch, "[year]", "year"));
  table.push_back(field(&F::cboAlbum, "Album", "Album"));
  table.push_back(field(&F::txtComment, "comment", "comment"));
  return table;
}

void AppendLabel(std::string& label, std::string_view word, std::string_view value) {
  label.append(";").append(word).append("=").append(value);
}

void AppendLike(std::string& clause, const SearchField& field, const std::string& text,
                char quote) {
  const std::string value = field.escaped ? EscapeSearchValue(text, quote) : text;
  clause.append(clause.empty() ? " " : " AND ").append(field.column).append(" like ");
  clause.append(1, quote).append("%").append(value).append("%").append(1, quote).append(" ");
}

/// What the two combos add to the tables and to the clause.
void AppendJoins(const SearchFields& fields, std::string& from, std::string& clause) {
  const std::string& list = fields.cboPlaylists;
  const std::string& archive = fields.cboCDArchive;
  const bool had_content = !clause.empty();
  if (!archive.empty()) {
    from = list.empty() ? " , cdarchives " : " , cdarchives, Playlists ";
    clause.append(had_content ? " AND" : "").append(kArchive).append(QuoteInner(archive, '\''));
    clause.append("'").append(had_content ? kCrossing : " and cdarchives.uid=mp3sTabelle.uid");
  }
  if (!list.empty()) {
    if (archive.empty()) {
      from = " , Playlists ";
      clause.append(had_content ? " AND" : "");
    } else {
      clause.append(had_content ? " AND" : " and");
    }
    clause.append(" playlists.playlist='").append(QuoteInner(list, '\''));
    clause.append("' and playlists.uid=mp3sTabelle.uid");
  }
}

}  // namespace

const std::vector<SearchField>& SearchFieldTable() {
  static const std::vector<SearchField> table = MakeSearchFieldTable();
  return table;
}

BuiltSearch BuildSearch(const SearchRequest& request) {
  const SearchFields& fields = request.fields;
  BuiltSearch search;
  std::string clause;
  for (const SearchField& field : SearchFieldTable()) {
    const std::string& text =
        field.text != nullptr ? fields.*field.text : fields.txtSearch3[field.extra];
    if (text.empty()) continue;
    AppendLabel(search.label, field.word, text);
    AppendLike(clause, field, text, request.quote);
  }
  std::string from;
  if (!request.playlist_view) {
    if (!fields.cboPlaylists.empty()) AppendLabel(search.label, "Playlist", fields.cboPlaylists);
    if (!fields.cboCDArchive.empty()) AppendLabel(search.label, "CDArchive", fields.cboCDArchive);
    AppendJoins(fields, from, clause);
  }
  if (!clause.empty()) clause.insert(0, " where ");
  search.sql = kSelectList;
  if (request.playlist_view) {
    search.sql.append(", [position] FROM mp3sTabelle , playlists ").append(clause);
    search.sql.append(clause.empty() ? " where" : " and").append(" playlists.playlist='");
    search.sql.append(QuoteInner(request.current_playlist, '\'')).append(kPlaylistTail);
  } else {
    search.sql.append("  FROM mp3sTabelle ").append(from).append(clause);
    search.sql.append(" order by mp3sTabelle.location");
  }
  return search;
}

bool NamesArchive(std::string_view sql) noexcept {
  return FindNoCase(sql, kArchive) != std::string_view::npos;
}

bool CrossesArchive(std::string_view sql) noexcept {
  return FindNoCase(sql, kCrossing) != std::string_view::npos;
}

std::string LimitedCountStatement(std::string_view sql, std::int64_t limit) {
  const std::size_t from = FindNoCase(sql, " FROM ");
  if (from == std::string_view::npos) return {};
  const std::size_t order = sql.rfind(" order by ");
  std::string count = "SELECT count(*) FROM (SELECT 1";
  count.append(sql.substr(from, order == std::string_view::npos ? order : order - from));
  return count.append(" limit ").append(std::to_string(limit)).append(")");
}

bool IsViewOfPlaylist(std::string_view sql, std::string_view playlist) {
  std::string tail = " playlists.playlist='";
  tail.append(QuoteInner(playlist, '\'')).append(kPlaylistTail);
  return sql.ends_with(tail);
}

}  // namespace tunemeadow
