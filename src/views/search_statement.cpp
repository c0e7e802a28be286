// SPDX-License-Identifier: GPL-3.0-or-later
#include <utility>

#include "store/statement.h"
#include "tracks/field_order.h"
#include "views/quick_search.h"

namespace tunemeadow {

namespace {

constexpr auto kSearched = FieldsInOrder<&TrackFieldRow::search>();

const std::string& SelectList() {
  static const std::string list = [] {
    std::string text = "SELECT ";
    for (std::size_t i = 0; i < kSelectedFields; ++i) {
      text.append(i == 0 ? "" : ",").append(kTrackFieldTable[i].select);
    }
    return text;
  }();
  return list;
}

void AppendLabel(std::string& label, std::string_view word, std::string_view value) {
  label.append(";").append(word).append("=").append(value);
}

void AppendLike(std::string& clause, const SearchPlace& field, const std::string& text,
                char quote) {
  const std::string value = field.escaped ? EscapeSearchValue(text, quote) : text;
  clause.append(clause.empty() ? " " : " AND ").append(field.column).append(" like ");
  clause.append(1, quote).append("%").append(value).append("%").append(1, quote).append(" ");
}

/// What the two combos add to the tables and to the clause. Where `tied` is false, an archive
/// beside other fields is not tied to the tracks.
void AppendJoins(const SearchFields& fields, bool tied, std::string& from, std::string& clause) {
  const std::string& list = fields.cboPlaylists;
  const std::string& archive = fields.cboCDArchive;
  const bool had_content = !clause.empty();
  if (!archive.empty()) {
    from = list.empty() ? " , cdarchives " : " , cdarchives, Playlists ";
    clause.append(had_content ? " AND" : "").append(" cdarchives.cdarchive='");
    clause.append(QuoteInner(archive, '\'')).append("' and cdarchives.uid=");
    clause.append(had_content && !tied ? "cdarchives.uid" : "mp3sTabelle.uid");
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

/// The condition of the filled fields, each of them named in the label.
std::string ClauseOfFields(const SearchRequest& request, std::string& label) {
  const SearchFields& fields = request.fields;
  std::string clause;
  for (const TrackField field : kSearched) {
    const std::string& text = fields.texts[field];
    if (text.empty()) continue;
    const SearchPlace& place = RowOf(field).search;
    AppendLabel(label, place.word, text);
    AppendLike(clause, place, text, request.quote);
  }
  return clause;
}

SearchStatement StatementOfPlaylist(const std::string& playlist, const std::string& clause) {
  SearchStatement statement{.text = SelectList(), .playlist = playlist};
  statement.text.append(",").append(RowOf(TrackField::position).select);
  statement.text.append(" FROM mp3sTabelle , playlists ");
  if (!clause.empty()) statement.text.append(" where ").append(clause);
  statement.text.append(clause.empty() ? " where" : " and").append(" playlists.playlist='");
  statement.text.append(QuoteInner(playlist, '\''));
  statement.text.append(
      "' and playlists.uid=mp3sTabelle.uid order by [position],mp3sTabelle.location");
  return statement;
}

SearchStatement StatementOfLibrary(const SearchRequest& request, std::string clause) {
  SearchStatement statement{.of_archive = !request.fields.cboCDArchive.empty()};
  const bool beside_others = statement.of_archive && !clause.empty();
  const bool is_product = beside_others && !request.archive_view;
  std::string tables;
  AppendJoins(request.fields, request.archive_view, tables, clause);
  if (!clause.empty()) clause.insert(0, " where ");
  std::string rows = " FROM mp3sTabelle " + tables + clause;
  // A track may stand in an archive twice.
  if (beside_others && !is_product) rows += " group by mp3sTabelle.uid";
  statement.text.append(SelectList()).append(" ").append(rows);
  statement.text.append(" order by mp3sTabelle.location");
  if (is_product) {
    statement.product_count = "SELECT count(*) FROM (SELECT 1" + rows + " limit " +
                              std::to_string(kProductLimit + 1) + ")";
  }
  return statement;
}

}  // namespace

BuiltSearch BuildSearch(const SearchRequest& request) {
  const SearchFields& fields = request.fields;
  BuiltSearch search;
  std::string clause = ClauseOfFields(request, search.label);
  if (request.playlist_view) {
    search.statement = StatementOfPlaylist(request.current_playlist, clause);
    return search;
  }
  if (!fields.cboPlaylists.empty()) AppendLabel(search.label, "Playlist", fields.cboPlaylists);
  if (!fields.cboCDArchive.empty()) AppendLabel(search.label, "CDArchive", fields.cboCDArchive);
  search.statement = StatementOfLibrary(request, std::move(clause));
  return search;
}

}  // namespace tunemeadow
