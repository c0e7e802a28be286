// SPDX-License-Identifier: GPL-3.0-or-later
#include "tracks/import_row.h"

#include <gtest/gtest.h>

#include "core/dates.h"

namespace tunemeadow {
namespace {

using enum ImportColumn;

std::string Times(std::size_t count, const std::string& text) {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

/// What the readers found in a healthy MPEG file without tags, for the tests to change.
struct Findings {
  FileFacts facts{.path = "/music/a.mp3", .kind = FileKind::kMp3, .length = 4000000};
  Mp3Info info{.Bitrate = 128, .SampleRate = 44100, .ChannelMode = "Stereo", .Playtime = 250};
  Preferences options;

  [[nodiscard]] ImportRow Row() const {
    ImportRow row;
    BuildImportRow(facts, info, options, "2001-02-03 04:05:06", row);
    return row;
  }
};

TEST(ImportRow, CutsTextsByCharactersAndTitlesByFarMoreThanTheirLimit) {
  const struct {
    TagText TagCandidates::*candidate;
    ImportColumn column;
    std::string found, stored;
  } cases[] = {
      {&TagCandidates::title, Songname, Times(255, "t"), Times(255, "t")},
      {&TagCandidates::title, Songname, Times(256, "t"), Times(25, "t")},
      {&TagCandidates::artist, Artist, Times(255, "\xE9"), Times(255, "é")},
      {&TagCandidates::artist, Artist, Times(256, "\xE9"), Times(25, "é")},
      {&TagCandidates::title, Songname, Times(254, "t") + "'", Times(25, "t")},
      {&TagCandidates::title, Songname, Times(24, "t") + " " + Times(231, "t"), Times(24, "t")},
      {&TagCandidates::album, album, Times(256, "a"), Times(255, "a")},
      {&TagCandidates::url, url, Times(300, "u"), Times(255, "u")},
      {&TagCandidates::mood, Mood, Times(300, "m"), Times(255, "m")},
      {&TagCandidates::genre_name, genrereal, Times(300, "g"), Times(255, "g")},
      {&TagCandidates::year, year, "20011", "2001"},
      {&TagCandidates::track, trackno, "123/456", "123/4"},
      {&TagCandidates::comment, comment, Times(3000, "c"), Times(3000, "c")},
      {&TagCandidates::lyrics, LYRICS, Times(3000, "l"), Times(3000, "l")},
      {&TagCandidates::bio, BIOS, Times(3000, "b"), Times(3000, "b")},
      {&TagCandidates::bpm, bpm, "120.5", "120.5"},
      {&TagCandidates::bpm, bpm, "120 bpm", ""},
      {&TagCandidates::bpm, bpm, Times(51, "1"), Times(50, "1")},
      {&TagCandidates::bpm, bpm, Times(49, "1") + "e1", ""},  // what is left is no number
      {&TagCandidates::tempo, Tempo, "'slow' \"very\"", "''slow'' ''very''"},
      {&TagCandidates::title, Songname, "\x80 \x8D \x93", "€ \xC2\x8D “"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.found);
    Findings findings;
    findings.facts.candidates.*each.candidate = each.found;
    EXPECT_EQ(findings.Row()[each.column], each.stored);
  }
}

TEST(ImportRow, CutsTheCommentOnlyBesideAnID3v1Track) {
  const std::string thirty = "123456789012345678901234567890";
  const struct {
    const char* track;
    std::string id3v1, candidate, stored;
  } cases[] = {
      {"0", thirty, "", thirty},
      {"", thirty, "", thirty},
      {"3", thirty.substr(0, 28) + std::string("\0\3", 2), "", thirty.substr(0, 28)},
      {"3", "ab" + std::string(26, '\0') + std::string("\0\3", 2), "", "ab"},
      {"3", "", thirty + thirty, thirty.substr(0, 28)},
      {"0", "", thirty + thirty, thirty + thirty},
      {"3", "", Times(28, "\xE9") + "zz", Times(28, "é")},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.id3v1 + "/" + each.candidate);
    Findings findings;
    findings.info.Track = each.track;
    findings.info.Comment = each.id3v1;
    findings.facts.candidates.comment = each.candidate;
    EXPECT_EQ(findings.Row()[comment], each.stored);
    findings.info.CommentOverride = "instead";
    EXPECT_EQ(findings.Row()[comment], "instead");
  }
}

TEST(ImportRow, MakesOneGenreOfNumberAndName) {
  const struct {
    std::int16_t id3v1;
    const char* text;  // of the tag
    const char *number, *name;
  } cases[] = {
      {255, "", "255", ""},
      {0, "", "255", ""},
      {12, "", "12", "Other"},
      {147, "", "147", "SynthPop"},
      {148, "", "148", ""},
      {12, "Rock", "12", "Rock"},
      {12, "(17)Rock", "17", "Rock"},
      {12, "(17)", "17", "Rock"},
      {12, "(0)Blues", "255", "Blues"},
      {12, "(RX)Remix", "255", "Remix"},
      {12, "(-1)", "255", ""},
      {12, "Rock (live)", "255", ""},
      {12, "(4)(17)My own", "4", "My own"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.text);
    Findings findings;
    findings.info.Genre = each.id3v1;
    TakeID3v2Values({.GenreV2 = each.text}, findings.facts.candidates);
    EXPECT_EQ(findings.Row()[genre], each.number);
    EXPECT_EQ(findings.Row()[genrereal], each.name);
  }
}

TEST(ImportRow, ShowsStreamAndSize) {
  Findings findings;
  ImportRow row = findings.Row();
  EXPECT_EQ(row[quality], "128 kbps / 44.1 khz / Stereo");
  EXPECT_EQ(row[playtime] + "=" + row[playtimereal], "4:10=250");
  EXPECT_EQ(row[filesize] + "=" + row[filesizereal], "3.81 MB=4000000");

  findings.info.Playtime = 3605;
  EXPECT_EQ(findings.Row()[playtime], "60:05");
  findings.info.NoHeader = true;  // and the header fields of the file before
  row = findings.Row();
  EXPECT_EQ(row[quality], "damaged header");
  EXPECT_EQ(row[playtime] + "=" + row[playtimereal], "0:00=0");

  findings.facts.length = 0;
  EXPECT_EQ(findings.Row()[filesize], "0.00 MB");
  findings.facts.length.reset();
  EXPECT_EQ(findings.Row()[filesize] + "=" + findings.Row()[filesizereal], "=");
}

TEST(ImportRow, CapitalizesAndReplacesEightTextsBehindEverythingElse) {
  Findings findings;
  TagCandidates& found = findings.facts.candidates;
  for (TagText* const text : {&found.title, &found.artist, &found.album, &found.composer,
                              &found.original_artist, &found.url, &found.copyright,
                              &found.encoded_by, &found.comment, &found.genre_name, &found.mood}) {
    *text = "it's_one  \xFC_two";
  }
  findings.options.chkCapitalize = true;
  findings.options.chkReplace = true;
  findings.options.txtReplaceevery = "_";
  findings.options.txtReplacewith = "\"";
  const ImportRow row = findings.Row();
  for (const ImportColumn column :
       {Songname, Artist, album, composer, originalartist, url, copyright, encodedby}) {
    EXPECT_EQ(row[column], "It''s\"one  Ü\"two");
  }
  for (const ImportColumn column : {comment, genrereal, Mood}) {
    EXPECT_EQ(row[column], "it''s_one  ü_two");
  }
  findings.options.txtReplaceevery = "";
  EXPECT_EQ(findings.Row()[album], "It''s_one  Ü_two") << "an empty text is found nowhere";
}

TEST(ImportStatement, HasEveryColumnOfAWholeRow) {
  Findings findings;
  findings.facts.path = "/m/O'Neil \"live\".mp3";
  findings.facts.has_id3v1 = true;
  findings.facts.last_write = *ParseDateTime("2000-12-31 23:59:58");
  findings.facts.candidates = {.title = "T",
                               .artist = "O'Neil",
                               .album = "Al",
                               .year = "1999",
                               .comment = "Co",
                               .track = "5",
                               .bpm = "90",
                               .genre_number = "17",
                               .genre = 17,
                               .genre_name = "Rock",
                               .composer = "Cp",
                               .original_artist = "Or",
                               .encoded_by = "En",
                               .copyright = "Cy",
                               .url = "Ur",
                               .lyrics = "Ly",
                               .preference = "Pr",
                               .situation = "Si",
                               .mood = "Mo",
                               .tempo = "Te",
                               .bio = "Bi",
                               .has_picture = true};
  std::string statement;
  BuildInsertStatement(findings.Row(), '"', statement);
  EXPECT_EQ(statement,
            "insert into mp3sTabelle (genrereal,Preference,Situation,[Mood],Tempo,BIOS,LYRICS,"
            "haspic,HasID3V1,HasID3V2,trackno,bpm,location,Songname,Artist,genre,[year],album,"
            "playtime,playtimereal,filesize,filesizereal,comment,quality,datetimeofdbinsert,"
            "datetimeofdbupdate,datetimeoffile,composer,originalartist,url,copyright,encodedby) "
            " values (\"Rock\",\"Pr\",\"Si\",\"Mo\",\"Te\",\"Bi\",\"Ly\",1,1,0,\"5\",\"90\","
            "\"/m/O'Neil \"\"live\"\".mp3\",\"T\",\"O''Neil\",\"17\",\"1999\",\"Al\",\"4:10\","
            "\"250\",\"3.81 MB\",\"4000000\",\"Co\",\"128 kbps / 44.1 khz / Stereo\","
            "\"2001-02-03 04:05:06\",\"2001-02-03 04:05:06\",\"2000-12-31 23:59:58\",\"Cp\","
            "\"Or\",\"Ur\",\"Cy\",\"En\")");
  BuildInsertStatement(findings.Row(), '\'', statement);
  EXPECT_NE(statement.find(",'/m/O''Neil \"live\".mp3','T','O''''Neil',"), std::string::npos);
}

TEST(ImportStatement, HasDatesPlaceAndSizesOfAnyOtherFile) {
  Findings findings;
  findings.facts = {.path = "/m/a.mp2", .kind = FileKind::kOther, .length = 1048576};
  findings.info.Title = "of the file before";
  std::string statement;
  BuildInsertStatement(findings.Row(), '"', statement);
  EXPECT_EQ(statement,
            "insert into mp3sTabelle (datetimeofdbinsert,datetimeofdbupdate,datetimeoffile,"
            "location,filesize,filesizereal) values (\"2001-02-03 04:05:06\","
            "\"2001-02-03 04:05:06\",\"\",\"/m/a.mp2\",\"1.00 MB\",\"1048576\")");
  findings.facts.length = 0;
  BuildInsertStatement(findings.Row(), '"', statement);
  EXPECT_TRUE(statement.ends_with("\"/m/a.mp2\",\"\",\"0\")")) << statement;
}

}  // namespace
}  // namespace tunemeadow
