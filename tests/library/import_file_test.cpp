// SPDX-License-Identifier: GPL-3.0-or-later
// Whole files, from their bytes to the row in the store.
#include "tracks/import_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utime.h>

#include "core/dates.h"
#include "library/import.h"
#include "support/mp3_builder.h"
#include "views/catalogue_test.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;

/// A tag with every field, and an ID3v1 tag that it beats.
Mp3File FullFile() {
  const std::string more = MusicmatchFrame("Preference", "best") +
                           MusicmatchFrame("Situation", "party") + MusicmatchFrame("Bio", "born") +
                           MusicmatchFrame("Tempo", "fast") + MusicmatchFrame("Mood", "wild") +
                           PictureFrame(FakeJpeg());
  return Mp3File()
      .Id3v2({{"TPE1", "Anna"},
              {"TIT2", "Blue"},
              {"TALB", "Sky"},
              {"TYER", "2001"},
              {"TRCK", "3/9"},
              {"TCON", "(17)Rock"},
              {"TBPM", "99"},
              {"TCOM", "Bo"},
              {"TOPE", "Cy"},
              {"TENC", "Di"},
              {"TCOP", "Ed"},
              {"WXXX", "http://x"},
              {"USLT", "la la"},
              {"COMM", "a comment of more than 28 letters"}},
             {.more_frames = more})
      .Frames(400)
      .Id3v1({.title = "x", .artist = "x", .comment = "x", .track = 4, .genre = 8});
}

class ImportedRows : public CatalogueTest {
 protected:
  ImportedRows() {
    session_.preferences.lblScan = music_.Path();
    session_.preferences.txtPattern = "mp3;mp2;ogg";
    session_.success_messages = false;
  }

  /// All rows in the order of the file names, each as "text|text|...".
  Texts Import(const std::string& columns) {
    interaction_.WillAnswer(Answer::kOk);
    EXPECT_EQ(Command1_Click(bench_), ImportEnd::kComplete);
    const CellTable cells =
        session_.connection.Execute("select " + columns + " from mp3sTabelle order by uid")
            .GetRows();
    Texts rows;
    for (std::size_t i = 0; i < cells.RowCount(); ++i) {
      std::string row(cells.Cell(i, 0));
      for (std::size_t k = 1; k < cells.ColumnCount(); ++k) {
        row.append("|").append(cells.Cell(i, k));
      }
      rows.push_back(row);
    }
    return rows;
  }

  TempFolder music_;
};

TEST_F(ImportedRows, HoldWhatTheReadersFoundInTheirOrder) {
  music_.Write("1 full.mp3", FullFile());
  music_.Write("2 id3v1.mp3",
               Mp3File().Xing(30).Frames(10).Id3v1({.title = "T",
                                                    .artist = "A",
                                                    .album = "B",
                                                    .year = "1984",
                                                    .comment = "a comment of 30 letters at all",
                                                    .genre = 0}));
  music_.Write("3 nothing.mp3",
               Mp3File().Frames(1, {.rate = 1, .mode = 3}).Bytes("on stage, live"));
  music_.Write("4 damaged.mp3", Mp3File().Id3v2({{"TIT2", "Lost"}}).FillTo(3000));
  music_.Write("5 lyrics3.mp3",
               Mp3File()
                   .Id3v2({{"TIT2", "short"}, {"TPE1", "Anna"}, {"USLT", "old"}})
                   .Frames(1)
                   .Lyrics3({{"ETT", " long title "}, {"LYR", "new"}, {"SIT", "s"}, {"MOO", "m"}})
                   .Id3v1({.title = "shor"}));
  music_.Write("5b broken.mp3", Mp3File().Frames(1).Lyrics3({{"ETT", "x"}, {"LYR40000", ""}}));
  music_.Write("6 wide.mp3", Mp3File()
                                 .Id3v2({{"TIT2",
                                          "\xDC"
                                          "ber"},
                                         {"COMM", "wide"}},
                                        {.utf16 = true})
                                 .Frames(1)
                                 .Id3v1({.genre = 17}));
  music_.Write("7.ogg", OggHead({{"TITLE", "O'g"},
                                 {"TRACKNUMBER", "5"},
                                 {"GENRE", "(1)Folk"},
                                 {"YEAR", "1999"},
                                 {"DESCRIPTION", "d"},
                                 {"URL", "u"},
                                 {"ORGANIZATION", "o"},
                                 {"COPYRIGHT", "c"}}));
  music_.Write("8 tiny.mp3", Mp3File().Id3v1({.title = "Tiny", .genre = 17}));
  music_.Write("9.mp2", std::string(2097152, 'x'));
  EXPECT_THAT(
      Import("Songname,Artist,album,[year],trackno,genre,genrereal,Comment,Playtime,quality"),
      ElementsAre(
          "Blue|Anna|Sky|2001|3/9|17|Rock|a comment of more than 28 le|0:10|"
          "128 kbps / 44.1 khz / Joint Stereo",
          "T|A|B|1984|0|255||a comment of 30 letters at all|0:00|"
          "48 kbps (VBR) / 44.1 khz / Joint Stereo",
          "||||0|255|||0:00|128 kbps / 48 khz / Single Channel",
          "Lost||||0|255|||0:00|damaged header",
          "long title|Anna|||0|255|||0:00|128 kbps / 44.1 khz / Joint Stereo",
          "||||0|255|||0:00|128 kbps / 44.1 khz / Joint Stereo",
          "Über||||0|17|Rock|wide|0:00|128 kbps / 44.1 khz / Joint Stereo",
          "O''g|||1999|5|255|(1)Folk|d|0:00|0 kbps",
          // Under 256 bytes nothing is analysed: the quality is that of the last one that was.
          "||||0|255|||0:00|128 kbps / 44.1 khz / Joint Stereo", "|||||||||"));
}

TEST_F(ImportedRows, HoldTheFurtherFieldsFlagsAndSizes) {
  const std::string full = FullFile().Build();
  music_.Write("1 full.mp3", full);
  music_.Write("2.ogg", OggHead({{"URL", "u"}, {"ORGANIZATION", "o"}, {"COPYRIGHT", "c"}}));
  music_.Write("3.mp2", std::string(2097152, 'x'));
  music_.Write("4.mp3", "");
  EXPECT_THAT(
      Import("BPM,Situation,preference,tempo,Mood,bios,Lyrics,composer,copyright,encodedby,"
             "originalartist,url,haspic,hasid3v1,hasid3v2,playtimereal,filesize,filesizereal"),
      ElementsAre("99|party|best|fast|wild|born|engla la|Bo|Ed|Di|Cy|http://x|1|1|1|10|0.16 MB|" +
                      std::to_string(full.size()),
                  "|||||||o|c|||u|0|0|0|0|0.00 MB|4096",
                  "|||||||||||||||"
                  "|2.00 MB|2097152",
                  "||||||||||||0|0|0|0|0.00 MB|0"));
}

TEST_F(ImportedRows, TellWhenTheFileWasWrittenAndTheRowMade) {
  const utimbuf times{0, *ParseDateTime("1999-12-31 23:59:59")};
  for (const char* name : {"a.mp3", "b.mp2"}) {
    ASSERT_EQ(utime(music_.Write(name, Mp3File().Frames(1)).c_str(), &times), 0);
  }
  const std::string before = Now();
  const Texts rows = Import("datetimeoffile,datetimeofdbinsert");
  EXPECT_EQ(Rows("select datetimeofdbupdate from mp3sTabelle where "
                 "datetimeofdbupdate=datetimeofdbinsert")
                .size(),
            2U);
  for (const std::string& row : rows) {
    EXPECT_EQ(row.substr(0, 20), "1999-12-31 23:59:59|");
    EXPECT_GE(row.substr(20), before);
    EXPECT_LE(row.substr(20), Now());
  }
}

TEST_F(ImportedRows, FollowTheSettingsOfTheReaders) {
  music_.Write("a.mp3", Mp3File()
                            .Id3v2({{"TIT2", "two"}}, {.version = 5})
                            .Frames(1)
                            .Lyrics3({{"ETT", "three"}})
                            .Id3v1({.title = "one"}));
  const auto title = [&](bool v1, bool v2, bool any_version, bool lyrics3) {
    Preferences& p = session_.preferences;
    p.chkID3Read = v1;
    p.chkID3v2Read = v2;
    p.optID3V2Versions = any_version;
    p.chkLyrics3 = lyrics3;
    Run("delete from mp3sTabelle");
    return Import("Songname,hasid3v1,hasid3v2").at(0);
  };
  EXPECT_EQ(title(true, true, true, true), "three|1|1");
  EXPECT_EQ(title(true, true, true, false), "two|1|1");
  EXPECT_EQ(title(true, true, false, false), "one|1|1");
  EXPECT_EQ(title(true, false, true, false), "one|1|1");
  EXPECT_EQ(title(false, false, true, false), "|1|1");
}

TEST_F(ImportedRows, ExistForFilesThatCannotBeRead) {
  bench_.ImportList = {music_.Write("good.mp3", FullFile()), music_.Path("gone.mp3"), music_.Path(),
                       music_.Path("gone.ogg"), music_.Path("gone.mp2")};
  bench_.ImportGivenFiles = true;
  EXPECT_THAT(
      Import("Songname,composer,quality,Filesize,filesizereal,hasid3v2"),
      ElementsAre("Blue|Bo|128 kbps / 44.1 khz / Joint Stereo|0.16 MB|" +
                      std::to_string(FullFile().Build().size()) + "|1",
                  "||128 kbps / 44.1 khz / Joint Stereo|||0", "|||||", "||0 kbps|||0", "|||||"));
}

}  // namespace
}  // namespace tunemeadow
