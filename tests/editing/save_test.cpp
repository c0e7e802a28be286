// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/save.h"

#include <filesystem>

#include "audio/lyrics3.h"
#include "core/dates.h"
#include "editing/edited_tracks_test.h"
#include "files/file_facts.h"

namespace tunemeadow {
namespace {

class SingleSave : public EditedTracksTest {
 protected:
  /// A save of the record in the editor, with these answers to what it asks.
  void Save(std::initializer_list<Answer> answers = {}) {
    for (const Answer answer : answers) interaction_.WillAnswer(answer);
    bench_.details.DetailsKeyed = bench_.details.DetailsChanged = true;
    cmdSpeichern_Click(bench_);
    interaction_.ExpectPutBack();
    EXPECT_FALSE(session_.busy);
  }

  /// A directory in place of the file: no tag can be written.
  DetailEditor& EditBlocked() {
    AddTrack("a.mp3", "", {{"Songname", "old"}});
    std::filesystem::create_directories(folder_.Path("music/a.mp3"));
    DetailEditor& details = Edit();
    details.texts[TrackField::Songname] = "new";
    details.texts[TrackField::Lyrics] = "la";
    return details;
  }
};

TEST_F(SingleSave, WritesTheTagsThenTheRowThenTheCells) {
  const std::string other = AddTrack("other.mp3", audio_);
  const std::string path = AddTrack("a.MP3", audio_);
  DetailEditor& details = Edit(1);
  FillSample(details);
  watcher_.details = 0;
  Save();
  EXPECT_EQ(interaction_.statuses,
            (Texts{"Updating file (saving ID3v2Tag), please wait...",
                   "Updating file (saving ID3v1Tag), please wait...",
                   "Updating file (saving LYRICS3Tag), please wait...", "Ready.", "Saved: ti."}));
  const Mp3Info tag = Tag("a.MP3");
  EXPECT_EQ(
      (Texts{tag.Title, tag.Artist, tag.TrackV2, tag.GenreV2, tag.Composer, StripNulls(tag.Url)}),
      (Texts{"ti", "ar", "7", "(17)Rock", "x0", "x4"}));
  ID3v1Tag record;
  ASSERT_TRUE(ReadID3v1Tag(path, record));
  EXPECT_EQ(record.Genre, 17);
  EXPECT_EQ(std::string(record.Comment.begin(), record.Comment.end()),
            Fixed("co", 28, ' ') + std::string({'\0', '\7'}));
  Lyrics3 block;
  ASSERT_TRUE(ReadLyrics3Tag(path, block));
  EXPECT_EQ(block.Lyrics3Lyr + block.Lyrics3Moo + block.Lyrics3Sit, "lymosi");
  EXPECT_EQ(
      Joined("Songname Artist album Genre GenreReal [year] trackno BPM playtime playtimeREAL "
             "comment Situation Preference Tempo Mood Bios Lyrics Composer Copyright Encodedby "
             "originalartist url quality hasid3v1 hasid3v2 location datetimeoffile"),
      (Texts{std::string(25, '|') + other + "|",
             "ti|ar|al|17|Rock|2001|7|99|3:05|185|co|si|pr|te|mo|bi|ly|x0|x1|x2|x3|x4|qu|1|1|" +
                 path + "|" + FileTimeText(path)}));
  const TrackTexts cells = bench_.ListView1.Record(1);
  Show();
  EXPECT_EQ(cells, bench_.ListView1.Record(1)) << "the list shows what is stored";
  EXPECT_EQ(watcher_.rows, (std::vector<std::size_t>{1}));
  EXPECT_EQ(watcher_.details, 1);
  EXPECT_FALSE(details.DetailsKeyed || details.DetailsChanged);
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("undo.journal")) &&
               !folder_.Read("undo.journal").empty());
}

TEST_F(SingleSave, ATrackIsItsNumberOrStopsTheSave) {
  AddTrack("a.mp3", audio_);
  for (const auto& [text, saved] : {std::pair{"abc", ""}, {"0", ""}, {"3/12", "3"}}) {
    Edit().texts[TrackField::trackno] = text;
    Save();
    EXPECT_EQ(Tag("a.mp3").TrackV2, saved);
    EXPECT_EQ(Column("trackno"), Texts{saved});
    EXPECT_EQ(bench_.details.texts[TrackField::trackno], saved);
  }
  const std::string before = Bytes("a.mp3");
  Edit().texts[TrackField::trackno] = "256";
  Save({Answer::kOk});
  EXPECT_EQ(interaction_.BoxTexts(),
            Texts{"Error!: Tracknumber is not a valid number! (<256)\n\n"});
  EXPECT_EQ(Bytes("a.mp3"), before);
  EXPECT_EQ(Column("trackno"), Texts{"3"});
  EXPECT_TRUE(bench_.details.DetailsChanged);
}

TEST_F(SingleSave, AMissingFileEndsItAndIsNotCreated) {
  const std::string path = AddTrack("a.mp3", "", {{"Songname", "old"}, {"datetimeoffile", "then"}});
  Edit().texts[TrackField::Songname] = "new";
  Save({Answer::kOk});
  session_.preferences.chkWarn = false;
  Save();
  EXPECT_EQ(interaction_.BoxTexts(), Texts{"File not found: The file " + path + " was not found."});
  EXPECT_EQ(Column("Songname"), Texts{"old"});
  session_.preferences.chkSaveTags = false;
  Save();
  EXPECT_EQ(Column("Songname || hasid3v1 || datetimeoffile"), Texts{"new0then"});
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(SingleSave, ATrackOnABurntDiscIsSavedInItsRowAlone) {
  session_.preferences.lblConfigCDROM = folder_.Path("music");
  AddTrack("a.mp3", audio_, {{"Songname", "old"}});
  Run("update mp3sTabelle set location='MP3-CD01/a.mp3'");
  Edit().texts[TrackField::Songname] = "new";
  Save();
  EXPECT_EQ(Column("Songname || hasid3v2"), Texts{"new0"});
  EXPECT_EQ(Bytes("a.mp3"), audio_);
  session_.preferences.lblConfigCDROM = folder_.Path("no disc here");
  Edit().texts[TrackField::Songname] = "newer";
  Save();
  EXPECT_EQ(Column("Songname"), Texts{"newer"});
  session_.preferences.lblConfigCDROM.clear();
  Save({Answer::kOk});
  EXPECT_EQ(interaction_.BoxTexts(),
            Texts{"File not found: The file MP3-CD01/a.mp3 was not found."});
}

TEST_F(SingleSave, QuotesGiveWayInTheRowAndStayInTheTag) {
  for (const char quote : {'"', '\''}) {
    session_.quote = quote;
    Run("delete from mp3sTabelle");
    const std::string path = AddTrack("O'Hara \"x\".mp3", audio_);
    DetailEditor& details = Edit();
    details.texts[TrackField::Songname] = R"(O'Hara "x")";
    details.texts[TrackField::genrereal] = R"(Rock'n"Roll)";
    Save();
    EXPECT_EQ(Tag("O'Hara \"x\".mp3").Title, R"(O'Hara "x")");
    const std::string title = quote == '"' ? "O'Hara ''x''" : R"(O"Hara "x")";
    EXPECT_EQ(Column("Songname"), Texts{title});
    EXPECT_EQ(details.texts[TrackField::Songname], title);
    EXPECT_EQ(bench_.ListView1.Cell(0, TrackField::Songname), title);
    EXPECT_EQ(Joined("GenreReal Genre location"), Texts{R"(Rock'n"Roll|255|)" + path});
  }
}

TEST_F(SingleSave, IgnoreGoesOnFromTagToTagAndSavesTheRow) {
  EditBlocked();
  interaction_.on_box = [&](const MessageBox&) {
    EXPECT_EQ(interaction_.Status(),
              "a.mp3: The file cannot be opened for writing: Is a directory");
  };
  Save({Answer::kIgnore, Answer::kIgnore, Answer::kIgnore});
  EXPECT_EQ(interaction_.BoxTexts(),
            (Texts{"Error: ID3v2-Tag can't be written!", "Error: ID3v1-Tag can't be written!",
                   "Error: LYRICS3-Tag can't be written!"}));
  EXPECT_EQ(Column("Songname || hasid3v1 || hasid3v2"), Texts{"new00"});
  EXPECT_FALSE(bench_.ListView1.IsFileWritten(0));
  EXPECT_EQ(interaction_.Status(), "Saved, but for a tag that could not be written: new.");
  session_.preferences.chkWarn = false;
  bench_.details.texts[TrackField::Songname] = "newer";
  Save();
  EXPECT_EQ(Column("Songname"), Texts{"newer"}) << "without the warning it is silent";
}

TEST_F(SingleSave, AbortLeavesTheRowAndWhatWasWritten) {
  EditBlocked();
  Save({Answer::kAbort});
  EXPECT_EQ(Column("Songname"), Texts{"old"});
  EXPECT_EQ(bench_.ListView1.Cell(0, TrackField::Songname), "old");
  EXPECT_TRUE(bench_.details.DetailsChanged);
  EXPECT_EQ(interaction_.Status(), "Ready.");
  bench_.details.DetailsChanged = false;
  Run("delete from mp3sTabelle");
  AddTrack("b.mp3", audio_);
  DetailEditor& details = Edit();
  details.texts[TrackField::Songname] = "tags only";
  details.texts[TrackField::Lyrics] =
      std::string(100'000, 'l');  // more than a block has digits for
  Save({Answer::kAbort});
  EXPECT_EQ(interaction_.boxes.back().text, "LYRICS3-Tag can't be written!");
  EXPECT_EQ(Tag("b.mp3").Title, "tags only");
  EXPECT_EQ(Bytes("b.mp3").substr(Bytes("b.mp3").size() - 128, 12), "TAGtags only");
  EXPECT_EQ(Column("ifnull(Songname, 'none')"), Texts{"none"});
}

TEST_F(SingleSave, RetryWritesTheVeryTagThatTheFirstTryWouldHave) {
  const std::string path = AddTrack("whole.mp3", audio_);
  Edit().texts[TrackField::Lyrics] = "la";
  Save();
  Run("delete from mp3sTabelle");
  EditBlocked().texts[TrackField::Songname] = "";
  interaction_.on_box = [&](const MessageBox&) {
    if (interaction_.boxes.size() < 3) return;
    std::filesystem::remove(folder_.Path("music/a.mp3"));
    folder_.Write("music/a.mp3", audio_);
  };
  Save({Answer::kRetry, Answer::kRetry, Answer::kRetry});
  EXPECT_EQ(Bytes("a.mp3"), Bytes("whole.mp3"));
  EXPECT_TRUE(bench_.ListView1.IsFileWritten(0));
  EXPECT_EQ(Column("hasid3v1 || hasid3v2"), Texts{"11"});
}

TEST_F(SingleSave, NothingIsOpenInTheJournalWhileABoxStandsAndRetryBeginsAnew) {
  AddTrack("a.mp3", audio_);
  Edit().texts[TrackField::Lyrics] = std::string(100'000, 'l');
  interaction_.on_box = [&](const MessageBox&) {
    EXPECT_FALSE(session_.journal.InGroup());
    EXPECT_EQ(folder_.Read("undo.journal"), "");
    // Another program lengthens the file.
    folder_.Write("music/a.mp3", Bytes("a.mp3") + Mp3File().Id3v1({.title = "other"}).Build());
  };
  Save({Answer::kRetry, Answer::kIgnore});
  EXPECT_EQ(Column("hasid3v1 || hasid3v2"), Texts{"11"});
  EXPECT_FALSE(session_.journal.InGroup());
}

TEST_F(SingleSave, TheRulesChangeTheTextsInTheEditorWhereThereAreAny) {
  session_.preferences.chkCapitalizeSave = session_.preferences.chkReplaceSave = true;
  session_.preferences.chkAutoComment = true;
  session_.preferences.txtautocomment = "mine";
  AddTrack("a.mp3", audio_, {{"Comment", "own"}});
  Edit().texts[TrackField::Songname] = "  ";
  Save();
  EXPECT_EQ(bench_.details.texts[TrackField::Comment], "own") << "no text that would need a rule";
  EXPECT_EQ(Bytes("a.mp3").substr(Bytes("a.mp3").size() - 128, 125),
            "TAG" + std::string(122, '\0'));
  DetailEditor& details = bench_.details;
  details.texts[TrackField::Songname] = "one_two three";
  details.texts[TrackField::Comment] = "typed";
  Save();
  EXPECT_EQ(details.texts[TrackField::Songname], "One two Three");
  EXPECT_EQ(Column("Songname || comment"), Texts{"One two Threemine"});
  EXPECT_EQ(Tag("a.mp3").Title + Tag("a.mp3").Comment, "One two Threemine");
}

TEST_F(SingleSave, AFlagOfARowIsOnlyEverSet) {
  AddTrack("a.mp2", audio_);
  AddTrack("b.mp3", audio_, {{"hasid3v1", "1"}, {"hasid3v2", "0"}});
  session_.preferences.chkSaveTags11 = false;
  Edit(0);
  Save();
  Edit(1);
  Save();
  EXPECT_EQ(Column("hasid3v1 || hasid3v2"), (Texts{"00", "11"}));
  EXPECT_EQ(Bytes("a.mp2"), audio_) << "only .mp3 files get tags";
  EXPECT_EQ(bench_.ListView1.Cell(1, TrackField::hasid3v2), "1");
}

TEST_F(SingleSave, LongTextsAreCutInTheRowAndTheNoticeSaysWhatATagLoses) {
  AddTrack("a.mp3", audio_);
  DetailEditor& details = Edit();
  details.texts[TrackField::Mood] = std::string(300, 'm');
  details.texts[TrackField::url] = "\xE6\x97\xA5";
  Save();
  EXPECT_EQ(Joined("length(Mood) url"), Texts{"255|\xE6\x97\xA5"});
  EXPECT_TRUE(interaction_.SawStatus("Ready."));
  EXPECT_EQ(interaction_.Status(),
            LossSentence({.characters = 1, .long_texts = 1, .cut_texts = 1}));
  session_.preferences.chkSaveTags = false;
  details.texts[TrackField::tempo] = details.texts[TrackField::composer] = std::string(256, 'x');
  Save();
  EXPECT_EQ(interaction_.Status(), LossSentence({.cut_texts = 2})) << "the row alone loses as well";
}

TEST_F(SingleSave, WhatALyrics3BlockLosesIsToldOnce) {
  const std::string unreadable = "LYRICSBEGINLYR99999la000021LYRICS200";
  AddTrack("a.mp3", Mp3File().Frames(5).Bytes(unreadable).Id3v1({}));
  for (const bool id3v2 : {false, true}) {
    session_.preferences.chkSaveTags23 = id3v2;
    DetailEditor& details = Edit();
    details.texts[TrackField::Lyrics] = details.texts[TrackField::Mood] =
        details.texts[TrackField::Songname] = "\xE6\x97\xA5";
    Save();
    EXPECT_EQ(interaction_.Status(), LossSentence({.characters = 3, .blocks = id3v2 ? 0 : 1}));
  }
}

TEST_F(SingleSave, AStatementThatFailsLeavesCellsAndFlags) {
  AddTrack("a.mp3", audio_, {{"Songname", "old"}});
  Edit().texts[TrackField::Songname] = "new";
  Run("alter table mp3sTabelle rename to gone");
  Save({Answer::kOk});
  EXPECT_NE(interaction_.boxes.back().text.find("no such table"), std::string::npos);
  EXPECT_EQ(bench_.ListView1.Cell(0, TrackField::Songname), "old");
  EXPECT_TRUE(bench_.details.DetailsKeyed && bench_.details.DetailsChanged);
  EXPECT_EQ(Tag("a.mp3").Title, "new") << "the tags came first";
}

TEST_F(SingleSave, OfALyrics3BlockTheFilesOwnFieldsStay) {
  const std::pair<std::string, std::string> cases[] = {
      {Lyrics3Bytes({{"AUT", "someone"}, {"LYR", "a"}}), "LYR00003newAUT00007someone000047"},
      {"", "LYR00003new000032"},
      {"LYRICSBEGINAUT00003BobXYZ00001xLYR99999la000041LYRICS200",  // what was read of it
       "LYR00003newAUT00003BobXYZ00001x000052"}};
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const std::string name = std::to_string(i) + ".mp3";
    AddTrack(name, Mp3File().Frames(5).Bytes(cases[i].first).Id3v1({}));
    Edit(i).texts[TrackField::Lyrics] = "new";
    Save();
    EXPECT_NE(Bytes(name).find(cases[i].second + "LYRICS200"), std::string::npos) << i;
  }
}

TEST_F(SingleSave, WithoutARecordNothingHappens) {
  AddTrack("a.mp3", audio_);
  Show();
  cmdSpeichern_Click(bench_);
  EXPECT_TRUE(interaction_.statuses.empty());
  EXPECT_EQ(Bytes("a.mp3"), audio_);
}

}  // namespace
}  // namespace tunemeadow
