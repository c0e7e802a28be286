// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/save_statement.h"

#include "editing/edited_tracks_test.h"

namespace tunemeadow {
namespace {

TrackTexts SampleTexts() {
  DetailEditor details;
  FillSample(details);
  details.texts[TrackField::location] = "/m/AC'DC \"x\".mp3";
  details.texts[TrackField::datetimeofdbupdate] = "now";
  details.texts[TrackField::datetimeoffile] = "then";
  details.texts[TrackField::hasid3v1] = "1";
  details.texts[TrackField::hasid3v2] = "0";
  return details.texts;
}

TEST(BuildSaveStatement, NamesEveryColumnInItsOrderAndDoublesTheDelimiter) {
  std::string statement;
  BuildSaveStatement(SampleTexts(), 17, '"', statement);
  EXPECT_EQ(
      statement,
      R"(Update mp3sTabelle set BPM="99",trackno="07",playtime="3:05",playtimeREAL="185",)"
      R"(comment="co",[year]="2001",album="al",location="/m/AC'DC ""x"".mp3",Situation="si",)"
      R"(datetimeoffile="then",datetimeofdbupdate="now",Composer="x0",hasid3v1=1,hasid3v2=0,)"
      R"(Copyright="x1",Encodedby="x2",originalartist="x3",url="x4",Preference="pr",Mood="mo",)"
      R"(Bios="bi",Lyrics="ly",Tempo="te",Songname="ti",Genre="17",GenreReal="Rock",)"
      R"(Artist="ar",quality="qu" where uid=17)");
  BuildSaveStatement(SampleTexts(), 17, '\'', statement);
  EXPECT_NE(statement.find(R"(,location='/m/AC''DC "x".mp3',)"), std::string::npos) << statement;
}

TEST(BuildMassSaveStatement, NamesItsColumnsInTheirOrderBetweenDoubleQuotes) {
  std::string statement;
  TrackTexts texts = SampleTexts();
  texts[TrackField::Comment] = "c\"o", texts[TrackField::Songname] = "t'i";
  texts[TrackField::genrereal] = "rock";
  texts[TrackField::hasid3v1] = "0", texts[TrackField::hasid3v2] = "1";
  BuildMassSaveStatement(texts, 5, statement);
  EXPECT_EQ(statement,
            R"(Update mp3sTabelle set Preference="pr", Situation="si",Mood="mo",Tempo="te",)"
            R"(composer="x0",CopyRight="x1",encodedby="x2",OriginalArtist="x3",url="x4",)"
            R"(hasid3v1=0,hasid3v2=1,comment="c""o",Songname="t'i",album="al" ,[Year]="2001",)"
            R"(Genre="255",GenreReal="rock",datetimeofdbupdate="now",datetimeoffile="then",)"
            R"(Artist="ar" where uid=5)");
}

}  // namespace
}  // namespace tunemeadow
