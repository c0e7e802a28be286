// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/mass_save.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "editing/edited_tracks_test.h"
#include "support/plain_user.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;
using testing::MatchesRegex;

const std::string kAskAll = "Mass-saving: Are you sure to update ";
const std::string kFailed = "Error: ID3-Tag can't be written!\n\nClick Ignore to ignore all";

class MassSaving : public EditedTracksTest {
 protected:
  /// Three tracks whose texts are "<column><n>", the first of them in the editor, all selected.
  DetailEditor& EditThree() {
    for (const std::string n : {"1", "2", "3"}) AddTrack(n + ".mp3", audio_, {{"trackno", n}});
    Run("update mp3sTabelle set Songname='title' & trackno,Artist='artist' & trackno,"
        "album='album' & trackno,[year]='200' & trackno,BPM='9' & trackno,genrereal='Rock',"
        "Comment='comment' & trackno,Lyrics='lyrics' & trackno,bios='bio' & trackno,"
        "Mood='mood' & trackno,composer='composer' & trackno,datetimeoffile='then' & trackno");
    return EditAll();
  }

  DetailEditor& EditAll() {
    DetailEditor& details = Edit(0);
    bench_.ListView1.SetSelected(0, bench_.ListView1.RowCount() - 1, true);
    ListView1_ItemClick(bench_, 1);
    return details;
  }

  static void Tick(DetailEditor& details, std::initializer_list<TrackField> fields) {
    for (const TrackField field : fields) details.chosen[IndexOf(field)] = true;
  }

  static void TickAlbum(DetailEditor& details, const std::string& album) {
    details.texts[TrackField::album] = album;
    Tick(details, {TrackField::album});
  }

  /// A save with Yes to the question and these answers to what follows.
  void SaveAll(std::initializer_list<Answer> answers = {}) {
    interaction_.WillAnswer(Answer::kYes);
    for (const Answer answer : answers) interaction_.WillAnswer(answer);
    cmdSpeichern_Click(bench_);
    interaction_.ExpectPutBack();
    EXPECT_FALSE(session_.busy);
    EXPECT_EQ(bench_.details.save_all, bench_.ListView1.SelectedCount() > 1);
  }
};

TEST_F(MassSaving, TheQuestionNamesWhatIsTicked) {
  DetailEditor& details = EditThree();
  Preferences& preferences = session_.preferences;
  const auto question = [&] {
    interaction_.boxes.clear();
    interaction_.WillAnswer(Answer::kNo);
    SpezialSpeichern(bench_);
    return interaction_.BoxTexts().back();
  };
  EXPECT_EQ(question(), kAskAll + "3 items(s)?");
  preferences.chkAutoComment = true;
  EXPECT_EQ(question(), kAskAll + "3 items(s) in the Database and in the ID3Tag?");
  preferences.chkSaveTags = false;
  EXPECT_EQ(question(), kAskAll + "3 items(s) in the Database?");
  Tick(details, {TrackField::Mood, TrackField::year});
  EXPECT_EQ(question(), kAskAll + "3 items(s) with the Year,Mood-Tag in the Database?");
  details.chosen.fill(true);
  preferences.chkSaveTags = true;
  EXPECT_EQ(question(),
            kAskAll +
                "3 items(s) with the Album,Genre,Artist,Year,Situation,Preference,Tempo,"
                "Mood,Composer,Copyright,Encoded by,Orig. Artist,URL-Tag in the Database and "
                "in the ID3Tag?");
  EXPECT_EQ(Bytes("1.mp3"), audio_);
  EXPECT_TRUE(details.save_all) << "No leaves everything as it was";
}

TEST_F(MassSaving, WithoutSelectionAndInAPlaylistNothingHappens) {
  EditThree();
  bench_.playlist_in_view = true;
  SpezialSpeichern(bench_);
  bench_.playlist_in_view = false;
  bench_.ListView1.ClearSelection();
  SpezialSpeichern(bench_);
  EXPECT_TRUE(interaction_.boxes.empty());
}

TEST_F(MassSaving, TickedFieldsTakeTheEditorsTextAllOthersKeepTheTracksOwn) {
  DetailEditor& details = EditThree();
  bench_.playlist_in_view = true;
  Show();
  bench_.playlist_in_view = false;
  details.texts[TrackField::album] = "the album";
  details.texts[TrackField::genrereal] = "Blues";
  details.texts[TrackField::url] = "the url";
  details.texts[TrackField::Artist] = details.texts[TrackField::Mood] =
      details.texts[TrackField::Comment] = "not ticked";
  Tick(details, {TrackField::album, TrackField::genrereal, TrackField::url});
  watcher_.rows.clear();
  SaveAll({Answer::kOk});
  for (const std::string n : {"1", "2", "3"}) {
    const std::string head =
        "title" + n + "|artist" + n + "|the album|200" + n + "|" + n + "|9" + n;
    const std::string tail = "Blues|lyrics" + n + "|bio" + n + "|mood" + n + "|composer" + n;
    EXPECT_EQ(
        Joined("Songname Artist album [year] trackno BPM Comment Genre GenreReal Lyrics bios Mood "
               "composer url hasid3v1 hasid3v2")[std::stoul(n) - 1],
        head + "|comment" + n + "|0|" + tail + "|the url|1|1");
    const Mp3Info tag = Tag(n + ".mp3");
    std::string texts;
    for (const TagText& text : {tag.Title, tag.Artist, tag.Album, tag.Year, tag.TrackV2, tag.Bpm,
                                tag.GenreV2, tag.Lyrics, tag.Bio, tag.Mood, tag.Composer}) {
      texts.append(texts.empty() ? "" : "|").append(StripNulls(text));
    }
    EXPECT_EQ(texts, head + "|(0)" + tail);
    EXPECT_EQ(Bytes(n + ".mp3").substr(Bytes(n + ".mp3").size() - 128, 9), "TAGtitle" + n);
  }
  std::vector<TrackTexts> shown;
  for (std::size_t row = 0; row < 3; ++row) shown.push_back(bench_.ListView1.Record(row));
  EXPECT_EQ(details.texts[TrackField::Artist], "artist1") << "the editor holds the row again";
  EXPECT_EQ(details.texts[TrackField::album], "the album");
  Show();
  for (std::size_t row = 0; row < 3; ++row) {
    EXPECT_EQ(shown[row], bench_.ListView1.Record(row));
    EXPECT_EQ(shown[row], bench_.ListView3.Record(row));
  }
  EXPECT_THAT(watcher_.rows, ElementsAre(0, 1, 2));
  EXPECT_THAT(interaction_.progress, ElementsAre(1, 2, 3));
  EXPECT_THAT(interaction_.loading_lines, ElementsAre("saving..."));
  EXPECT_TRUE(interaction_.SawStatus(folder_.Path("music/2.mp3")));
  EXPECT_EQ(interaction_.Status(), "Saved: 3 file(s).");
  EXPECT_THAT(
      interaction_.BoxTexts(),
      ElementsAre(kAskAll + "3 items(s) with the Album,Genre,URL-Tag in the Database and in "
                            "the ID3Tag?",
                  MatchesRegex("Tunemeadow: 3 file\\(s\\) successfully saved\\.\n"
                               "Elapsed Time: [0-9]+\\.[0-9][0-9] seconds")));
}

TEST_F(MassSaving, ATrackThatTheListShowsTwiceChangesInBothRows) {
  AddTrack("a.mp3", audio_, {{"album", "old"}});
  AddTrack("b.mp3", audio_, {{"album", "old"}});
  Edit(0);
  bench_.ListView1.Fill(RowsOf({0, 1, 0}));
  bench_.ListView1.SetSelected(1, 2, true);
  ListView1_ItemClick(bench_, 2);
  TickAlbum(bench_.details, "new");
  watcher_.rows.clear();
  SaveAll({Answer::kOk});
  for (std::size_t row = 0; row < 3; ++row) {
    EXPECT_EQ(bench_.ListView1.Cell(row, TrackField::album), "new");
  }
  EXPECT_THAT(watcher_.rows, ElementsAre(1, 0, 2));
}

TEST_F(MassSaving, QuotesOfTheEditorGiveWayThoseOfATrackStay) {
  for (const char quote : {'"', '\''}) {
    session_.quote = quote;
    Run("delete from mp3sTabelle");
    for (const char* name : {"a'\"1.mp3", "a'\"2.mp3"}) {
      AddTrack(name, audio_, {{"Songname", R"(O'Hara "x")"}, {"Mood", R"(o'wn "y")"}});
    }
    TickAlbum(EditAll(), R"(Al'bum "z")");
    bench_.details.texts[TrackField::genrereal] = R"(R'n"B)";
    Tick(bench_.details, {TrackField::genrereal});
    SaveAll({Answer::kOk});
    EXPECT_EQ(Column("Songname || Mood || album || genrereal"),
              Texts(2, R"(O'Hara "x"o'wn "y"Al'bum ''z''R'n"B)"))
        << "as in a single save, the genre keeps its own";
    EXPECT_EQ(bench_.ListView1.Cell(1, TrackField::album), "Al'bum ''z''");
    EXPECT_EQ(Tag("a'\"2.mp3").Album, R"(Al'bum "z")");
  }
}

TEST_F(MassSaving, WithoutATickTheRulesAndTheAutoCommentStillGoIntoTheTags) {
  session_.preferences.chkAutoComment = session_.preferences.chkCapitalizeSave = true;
  session_.preferences.txtautocomment = "auto";
  session_.success_messages = false;
  EditThree();
  SaveAll();
  EXPECT_EQ(Column("Songname || comment || Artist || album").back(), "Title3autoArtist3Album3");
  EXPECT_EQ(Tag("3.mp3").Title + Tag("3.mp3").Comment, "Title3auto");
  EXPECT_EQ(bench_.ListView1.Cell(2, TrackField::Comment), "auto");
}

TEST_F(MassSaving, AfterIgnoreNoFailureIsTold) {
  TickAlbum(EditThree(), "new");
  chmod(folder_.Path("music/1.mp3").c_str(), 0444);
  std::filesystem::remove(folder_.Path("music/2.mp3"));
  chmod(folder_.Path("music/3.mp3").c_str(), 0666);
  const ScopedPlainUser plain(folder_.Path());
  Texts told;
  interaction_.on_box = [&](const MessageBox&) { told.push_back(interaction_.Status()); };
  SaveAll({Answer::kRetry, Answer::kIgnore, Answer::kOk});
  EXPECT_THAT(interaction_.BoxTexts(), ElementsAre(testing::StartsWith(kAskAll), kFailed, kFailed,
                                                   testing::HasSubstr("3 file(s)")));
  EXPECT_EQ(Column("album || hasid3v1 || hasid3v2"), (Texts{"new00", "new00", "new11"}));
  EXPECT_THAT(told[1], testing::StartsWith("1.mp3: ")) << "while the told box stands";
  EXPECT_THAT(interaction_.job_titles, ElementsAre("Mass-saving"));
  const auto error = [&](const std::string& name, const std::string& reason) {
    return "ERROR: " + folder_.Path("music/" + name) +
           " : The file cannot be opened for writing: " + reason;
  };
  EXPECT_THAT(interaction_.job_lines, ElementsAre("2 of 3 file(s) could not be written:",
                                                  error("1.mp3", "Permission denied"),
                                                  error("2.mp3", "No such file or directory")));
  std::string written;
  for (std::size_t row = 0; row < 3; ++row) {
    written += bench_.ListView1.IsFileWritten(row) ? "x" : "-";
  }
  EXPECT_EQ(written, "--x");
  EXPECT_EQ(Column("datetimeoffile")[1], "then2");
  EXPECT_EQ(Tag("3.mp3").Album, "new");
  EXPECT_EQ(Bytes("1.mp3"), audio_);
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("music/2.mp3")));
}

TEST_F(MassSaving, AbortLeavesWhatWasSavedBefore) {
  TickAlbum(EditThree(), "new");
  std::filesystem::remove(folder_.Path("music/3.mp3"));
  SaveAll({Answer::kAbort});
  EXPECT_THAT(interaction_.BoxTexts(), ElementsAre(testing::StartsWith(kAskAll), kFailed));
  EXPECT_EQ(Column("album"), (Texts{"new", "new", "album3"}));
  EXPECT_EQ(bench_.ListView1.Cell(2, TrackField::album), "album3");
  EXPECT_EQ(Tag("2.mp3").Album, "new");
}

TEST_F(MassSaving, ACancelEndsItWithoutAWord) {
  TickAlbum(EditThree(), "new");
  interaction_.on_yield = [&](std::size_t n) { session_.CancelRequested = n == 3; };
  SaveAll();
  EXPECT_EQ(interaction_.boxes.size(), 1U);
  EXPECT_EQ(Column("album"), (Texts{"new", "album2", "album3"}));
  EXPECT_EQ(Bytes("2.mp3"), audio_);
}

TEST_F(MassSaving, WithoutTagsOnlyTheRowsChange) {
  session_.preferences.chkSaveTags = false;
  DetailEditor& details = EditThree();
  details.texts[TrackField::year] = "1999";
  Tick(details, {TrackField::year});
  SaveAll({Answer::kOk});
  EXPECT_EQ(Column("[year] || hasid3v1 || hasid3v2"), Texts(3, "199900"));
  EXPECT_EQ(Bytes("1.mp3") + Bytes("2.mp3") + Bytes("3.mp3"), audio_ + audio_ + audio_);
}

TEST_F(MassSaving, AStatementThatFailsEndsItWithItsReason) {
  EditThree();
  Run("alter table mp3sTabelle rename to gone");
  SaveAll({Answer::kOk});
  EXPECT_EQ(interaction_.boxes.size(), 2U);
  EXPECT_NE(interaction_.boxes.back().text.find("no such table"), std::string::npos);
}

TEST_F(MassSaving, WhatTheTagsLoseIsSaidOnceForAll) {
  TickAlbum(EditThree(), "\xE6\x97\xA5");
  SaveAll({Answer::kOk});
  EXPECT_EQ(interaction_.Status(), LossSentence({.characters = 3}));
}

}  // namespace
}  // namespace tunemeadow
