// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "views/quick_search.h"

namespace tunemeadow {
namespace {

const std::string kHead =
    "SELECT mp3sTabelle.uid,Songname,Artist,genrereal,quality,location,[year],album,trackno,"
    "Playtime,Filesize,Comment,BPM,preview,lasttimeplayed,Situation,preference,tempo,Mood,bios,"
    "Lyrics,haspic ,composer,copyright,encodedby,originalartist,url,hasid3v1,hasid3v2";
const std::string kList = kHead + "  FROM mp3sTabelle ";
const std::string kOrder = " order by mp3sTabelle.location";
const std::string kPlaylist = kHead + ", [position] FROM mp3sTabelle , playlists ";
const std::string kPlaylistEnd =
    " playlists.playlist='Mine' and playlists.uid=mp3sTabelle.uid order by "
    "[position],mp3sTabelle.location";
const std::string kLooksLikeBoth =
    " cdarchives.cdarchive='CD' and cdarchives.uid=cdarchives.uid" + kPlaylistEnd;

struct Facts {
  bool of_archive = false, is_product = false;
};

struct StatementCase {
  std::string what;
  SearchRequest request;
  std::string sql;
  std::string label;
  Facts facts = {};
};

SearchRequest Fields(SearchFields fields, char quote = '"') {
  return {.fields = std::move(fields), .quote = quote};
}

TEST(BuildSearch, WritesEachStatementCharacterForCharacter) {
  using enum TrackField;
  SearchFields all;
  std::string letter = "a";
  for (const TrackField field :
       {Songname,   Artist,         genrereal, quality, file,  location, Situation,
        preference, Mood,           tempo,     Lyrics,  bios,  composer, copyright,
        encodedby,  originalartist, url,       year,    album, Comment}) {
    all.texts[field] = letter;
    ++letter.front();
  }
  const SearchFields both{.cboPlaylists = "It's", .cboCDArchive = "CD"};
  const SearchFields both_and_artist{
      .texts = {{Artist, "x"}}, .cboPlaylists = "L", .cboCDArchive = "CD"};
  const std::vector<StatementCase> cases = {
      {"empty", Fields({}), kList + kOrder, ""},
      {"every field in its order", Fields(all),
       kList +
           " where  Songname like \"%a%\"  AND Artist like \"%b%\"  AND Genrereal like \"%c%\" "
           " AND quality like \"%d%\"  AND Location like \"%e%\"  AND Location like \"%f%\" "
           " AND Situation like \"%g%\"  AND Preference like \"%h%\"  AND Mood like \"%i%\" "
           " AND tempo like \"%j%\"  AND Lyrics like \"%k%\"  AND Bios like \"%l%\" "
           " AND composer like \"%m%\"  AND copyright like \"%n%\"  AND encodedby like \"%o%\" "
           " AND originalartist like \"%p%\"  AND url like \"%q%\"  AND [year] like \"%r%\" "
           " AND Album like \"%s%\"  AND comment like \"%t%\" " +
           kOrder,
       ";Songname=a;Artist=b;Genre=c;quality=d;Filename=e;Location=f;Situation=g;Preference=h"
       ";Mood=i;Tempo=j;Lyrics=k;Bios=l;composer=m;copyright=n;encodedby=o;originalartist=p;url=q"
       ";year=r;Album=s;comment=t"},
      {"quotes, escaped but for the genre",
       Fields({.texts = {{Artist, "O'Neil \"x\""}, {genrereal, "R\"B"}}}),
       kList + R"( where  Artist like "%O'Neil ''x''%"  AND Genrereal like "%R"B%" )" + kOrder,
       R"(;Artist=O'Neil "x";Genre=R"B)"},
      {"the other delimiter", Fields({.texts = {{Artist, "O'Neil"}}}, '\''),
       kList + " where  Artist like '%O\"Neil%' " + kOrder, ";Artist=O'Neil"},
      {"a playlist alone", Fields({.cboPlaylists = "L"}),
       kList + " , Playlists  where  playlists.playlist='L' and playlists.uid=mp3sTabelle.uid" +
           kOrder,
       ";Playlist=L"},
      {"a playlist beside a field", Fields({.texts = {{Artist, "x"}}, .cboPlaylists = "L"}),
       kList +
           " , Playlists  where  Artist like \"%x%\"  AND playlists.playlist='L' and "
           "playlists.uid=mp3sTabelle.uid" +
           kOrder,
       ";Artist=x;Playlist=L"},
      {"an archive alone",
       Fields({.cboCDArchive = "CD"}),
       kList +
           " , cdarchives  where  cdarchives.cdarchive='CD' and "
           "cdarchives.uid=mp3sTabelle.uid" +
           kOrder,
       ";CDArchive=CD",
       {.of_archive = true}},
      {"an archive beside a field",
       Fields({.texts = {{Artist, "x"}}, .cboCDArchive = "CD"}),
       kList +
           " , cdarchives  where  Artist like \"%x%\"  AND cdarchives.cdarchive='CD' and "
           "cdarchives.uid=cdarchives.uid" +
           kOrder,
       ";Artist=x;CDArchive=CD",
       {.of_archive = true, .is_product = true}},
      {"the folder of an archive that was clicked: each track once",
       {.fields = {.texts = {{location, "CD/x/"}}, .cboCDArchive = "CD"}, .archive_view = true},
       kList +
           " , cdarchives  where  Location like \"%CD/x/%\"  AND cdarchives.cdarchive='CD' and "
           "cdarchives.uid=mp3sTabelle.uid group by mp3sTabelle.uid" +
           kOrder,
       ";Location=CD/x/;CDArchive=CD",
       {.of_archive = true}},
      {"both, an apostrophe in a name",
       Fields(both),
       kList +
           " , cdarchives, Playlists  where  cdarchives.cdarchive='CD' and "
           "cdarchives.uid=mp3sTabelle.uid and playlists.playlist='It''s' and "
           "playlists.uid=mp3sTabelle.uid" +
           kOrder,
       ";Playlist=It's;CDArchive=CD",
       {.of_archive = true}},
      {"both beside a field",
       Fields(both_and_artist),
       kList +
           " , cdarchives, Playlists  where  Artist like \"%x%\"  AND "
           "cdarchives.cdarchive='CD' and cdarchives.uid=cdarchives.uid AND "
           "playlists.playlist='L' and playlists.uid=mp3sTabelle.uid" +
           kOrder,
       ";Artist=x;Playlist=L;CDArchive=CD",
       {.of_archive = true, .is_product = true}},
      {"a comment that looks like an archive and a playlist",
       Fields({.texts = {{Comment, kLooksLikeBoth}}}),
       kList + " where  comment like \"%" + kLooksLikeBoth + "%\" " + kOrder,
       ";comment=" + kLooksLikeBoth},
      {"an open playlist; the combos do not count",
       {both, '"', true, "Mine"},
       kPlaylist + " where" + kPlaylistEnd,
       ""},
      {"a search in an open playlist",
       {{.texts = {{Artist, "x"}}}, '"', true, "Mine"},
       kPlaylist + " where  Artist like \"%x%\"  and" + kPlaylistEnd,
       ";Artist=x"},
  };
  for (const StatementCase& each : cases) {
    SCOPED_TRACE(each.what);
    const BuiltSearch search = BuildSearch(each.request);
    EXPECT_EQ(search.statement.text, each.sql);
    EXPECT_EQ(search.label, each.label);
    EXPECT_EQ(search.statement.of_archive, each.facts.of_archive);
    EXPECT_EQ(!search.statement.product_count.empty(), each.facts.is_product);
    EXPECT_EQ(search.statement.playlist,
              each.request.playlist_view ? std::optional<std::string>("Mine") : std::nullopt);
  }
}

TEST(BuildSearch, CountsAProductWithoutSortingIt) {
  const SearchFields fields{.texts = {{TrackField::Comment, " order by x"}}, .cboCDArchive = "CD"};
  EXPECT_EQ(BuildSearch(Fields(fields)).statement.product_count,
            "SELECT count(*) FROM (SELECT 1 FROM mp3sTabelle  , cdarchives  where  comment like "
            "\"% order by x%\"  AND cdarchives.cdarchive='CD' and cdarchives.uid=cdarchives.uid "
            "limit 1000001)");
}

TEST(SearchHistory, KeepsTheLastFiveWithTheOldestFirst) {
  SearchHistory history;
  EXPECT_EQ(history.Caption(1), "Empty Search");
  for (int i = 0; i < 6; ++i) {
    history.Add(
        {{.text = "statement " + std::to_string(i)}, i == 2 ? "" : ";Artist=" + std::to_string(i)});
  }
  std::vector<std::string> captions;
  for (std::size_t i = 0; i <= 6; ++i) captions.push_back(history.Caption(i));
  EXPECT_EQ(captions, (std::vector<std::string>{"Empty Search", "1.) ;Artist=1", "2.) Full Search",
                                                "3.) ;Artist=3", "4.) ;Artist=4", "5.) ;Artist=5",
                                                "Empty Search"}));
  EXPECT_EQ(history.Entries().front().statement.text, "statement 1");
}

struct TotalsCase {
  std::vector<std::pair<std::string, std::string>> rows;  ///< playtime and size
  std::string time;
  std::string size;
};

TEST(ListTotals, SumRowByRowAndReadAsText) {
  const std::vector<TotalsCase> cases = {
      {{}, "", "0 MB"},
      {{{"3:05", "3.50 MB"}, {"0:55", "3.50 MB"}}, "4min;", "8 MB"},  // 4 (even), then 7.5 is 8
      {{{"0:01", "0.50 MB"}, {"0:01", "0.49 MB"}, {"", ""}}, "2sec", "0 MB"},
      {{{"7200", "1,50 MB"}, {":", "MB"}, {"x:30", "big"}}, "30sec", "2 MB"},
      {{{"1500:01", " 1 0 2 4MB"}}, "1 days, 1hh:1sec", "1024 MB"},
      {{{"60:00", "1025 MB"}}, "1hh:", "1.00 GB"},
      {{{"99999999999999999999:00", "99999999999999999999 MB"}, {"0:09", "1 MB"}}, "9sec", "1 MB"},
  };
  for (const TotalsCase& each : cases) {
    ListTotals totals;
    for (const auto& [playtime, size] : each.rows) totals.Add(playtime, size);
    EXPECT_EQ(TotalTimeText(totals.seconds), each.time);
    EXPECT_EQ(TotalSizeText(totals.megabytes), each.size);
  }
  EXPECT_EQ(TotalSizeText(1536), "1.50 GB");
}

}  // namespace
}  // namespace tunemeadow
