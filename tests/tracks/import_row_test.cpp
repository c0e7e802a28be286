// SPDX-License-Identifier: GPL-3.0-or-later
#include "tracks/import_row.h"

#include <gtest/gtest.h>

#include "core/dates.h"
#include "tracks/classic_tags.h"

namespace tunemeadow {
namespace {

using enum TrackField;

std::string Times(std::size_t count, const std::string& text) {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

/// What the readers found in a healthy MPEG file without tags, for the tests to change.
struct Findings {
  FileFacts facts{.path = "/music/a.mp3", .kind = FileKind::kMp3, .length = 4000000};
  Mp3Info info{.Bitrate = 128, .SampleRate = 44100, .ChannelMode = "Stereo", .Playtime = 250};
  TagCandidates found;
  Preferences options;

  [[nodiscard]] ImportRow MakeRow() const {
    ImportRow row;
    MergeTags(found, {&info}, row.texts);
    SetStreamTexts(info, facts.kind, facts.length == 0, row.texts);
    FinishImportRow(facts, options, "2001-02-03 04:05:06", row);
    return row;
  }
  [[nodiscard]] TrackTexts Row() const { return MakeRow().texts; }
};

TEST(ImportRow, CutsTextsByCharactersAndTitlesByFarMoreThanTheirLimit) {
  const struct {
    TrackField field;
    std::string found, stored;
  } cases[] = {
      {Songname, Times(255, "t"), Times(255, "t")},
      {Songname, Times(256, "t"), Times(25, "t")},
      {Artist, Times(255, "\xE9"), Times(255, "é")},
      {Artist, Times(256, "\xE9"), Times(25, "é")},
      {Songname, Times(254, "t") + "'", Times(25, "t")},
      {Songname, Times(24, "t") + " " + Times(231, "t"), Times(24, "t")},
      {album, Times(256, "a"), Times(255, "a")},
      {url, Times(300, "u"), Times(255, "u")},
      {Mood, Times(300, "m"), Times(255, "m")},
      {genrereal, Times(300, "g"), Times(255, "g")},
      {year, "20011", "2001"},
      {trackno, "123/456", "123/4"},
      {Comment, Times(3000, "c"), Times(3000, "c")},
      {Lyrics, Times(3000, "l"), Times(3000, "l")},
      {bios, Times(3000, "b"), Times(3000, "b")},
      {BPM, "120.5", "120.5"},
      {BPM, "120 bpm", ""},
      {BPM, Times(51, "1"), Times(50, "1")},
      {BPM, Times(49, "1") + "e1", ""},  // what is left is no number
      {tempo, "'slow' \"very\"", "''slow'' ''very''"},
      {Songname, "\x80 \x8D \x93", "€ \xC2\x8D “"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.found);
    Findings findings;
    findings.found.texts[each.field] = each.found;
    EXPECT_EQ(findings.Row()[each.field], each.stored);
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
    findings.found.texts[Comment] = each.candidate;
    EXPECT_EQ(findings.Row()[Comment], each.stored);
    findings.info.CommentOverride = "instead";
    EXPECT_EQ(findings.Row()[Comment], "instead");
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
    TakeID3v2Values({.GenreV2 = each.text}, findings.found);
    EXPECT_EQ(findings.Row()[genre], each.number);
    EXPECT_EQ(findings.Row()[genrereal], each.name);
  }
}

TEST(ImportRow, ShowsStreamAndSize) {
  Findings findings;
  TrackTexts row = findings.Row();
  EXPECT_EQ(row[quality], "128 kbps / 44.1 khz / Stereo");
  EXPECT_EQ(row[Playtime] + "=" + row[playtimereal], "4:10=250");
  EXPECT_EQ(row[Filesize] + "=" + row[filesizereal], "3.81 MB=4000000");

  findings.info.Playtime = 3605;
  EXPECT_EQ(findings.Row()[Playtime], "60:05");
  findings.info.NoHeader = true;  // and the header fields of the file before
  row = findings.Row();
  EXPECT_EQ(row[quality], "damaged header");
  EXPECT_EQ(row[Playtime] + "=" + row[playtimereal], "0:00=0");

  findings.info.NoHeader = false;
  findings.facts.length = 0;
  row = findings.Row();
  EXPECT_EQ(row[Filesize], "0.00 MB");
  EXPECT_EQ(row[quality] + "=" + row[playtimereal], "damaged header=0") << "of an empty file";
  findings.facts.length.reset();
  EXPECT_EQ(findings.Row()[Filesize] + "=" + findings.Row()[filesizereal], "=");
}

TEST(ImportRow, CapitalizesAndReplacesEightTextsBehindEverythingElse) {
  Findings findings;
  const auto beautified = {Songname,       Artist, album,     composer,
                           originalartist, url,    copyright, encodedby};
  const auto kept = {Comment, genrereal, Mood};
  for (const auto& fields : {beautified, kept}) {
    for (const TrackField field : fields) findings.found.texts[field] = "it's_one  \xFC_two";
  }
  findings.options.chkCapitalize = true;
  findings.options.chkReplace = true;
  findings.options.txtReplaceevery = "_";
  findings.options.txtReplacewith = "\"";
  const TrackTexts row = findings.Row();
  for (const TrackField field : beautified) EXPECT_EQ(row[field], "It''s\"one  Ü\"two");
  for (const TrackField field : kept) EXPECT_EQ(row[field], "it''s_one  ü_two");
  findings.options.txtReplaceevery = "";
  EXPECT_EQ(findings.Row()[album], "It''s_one  Ü_two") << "an empty text is found nowhere";
}

TEST(ImportStatement, HasEveryColumnOfAWholeRow) {
  Findings findings;
  findings.facts.path = "/m/O'Neil \"live\".mp3";
  findings.found.has_id3v1 = findings.found.has_picture = true;
  findings.facts.last_write = *ParseDateTime("2000-12-31 23:59:58");
  findings.found.texts = {
      {Songname, "T"},  {Artist, "O'Neil"},     {album, "Al"},      {year, "1999"},
      {Comment, "Co"},  {trackno, "5"},         {BPM, "90"},        {genrereal, "Rock"},
      {composer, "Cp"}, {originalartist, "Or"}, {encodedby, "En"},  {copyright, "Cy"},
      {url, "Ur"},      {Lyrics, "Ly"},         {preference, "Pr"}, {Situation, "Si"},
      {Mood, "Mo"},     {tempo, "Te"},          {bios, "Bi"}};
  findings.found.genre_number = "17";
  findings.found.genre = 17;
  std::string statement;
  BuildInsertStatement(findings.MakeRow(), '"', statement);
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
  BuildInsertStatement(findings.MakeRow(), '\'', statement);
  EXPECT_NE(statement.find(",'/m/O''Neil \"live\".mp3','T','O''''Neil',"), std::string::npos);
}

TEST(ImportStatement, HasDatesPlaceAndSizesOfAnyOtherFile) {
  Findings findings;
  findings.facts = {.path = "/m/a.mp2", .kind = FileKind::kOther, .length = 1048576};
  findings.info.Title = "of the file before";
  std::string statement;
  BuildInsertStatement(findings.MakeRow(), '"', statement);
  EXPECT_EQ(statement,
            "insert into mp3sTabelle (datetimeofdbinsert,datetimeofdbupdate,datetimeoffile,"
            "location,filesize,filesizereal) values (\"2001-02-03 04:05:06\","
            "\"2001-02-03 04:05:06\",\"\",\"/m/a.mp2\",\"1.00 MB\",\"1048576\")");
  findings.facts.length = 0;
  BuildInsertStatement(findings.MakeRow(), '"', statement);
  EXPECT_TRUE(statement.ends_with("\"/m/a.mp2\",\"\",\"0\")")) << statement;
}

}  // namespace
}  // namespace tunemeadow
