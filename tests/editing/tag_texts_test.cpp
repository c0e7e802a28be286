// SPDX-License-Identifier: GPL-3.0-or-later
#include "tracks/tag_texts.h"

#include "editing/edited_tracks_test.h"
#include "tracks/classic_tags.h"

namespace tunemeadow {
namespace {

/// Every field that the ID3v2 writer takes, in the order of its frames.
std::string WrittenTexts(const Mp3Info& info) {
  std::string all;
  for (const TagText& text : {info.Artist,     info.Title,     info.Album,
                              info.Url,        info.Year,      info.Track,
                              info.Bpm,        info.Original,  info.Composer,
                              info.EncodedBy,  info.Copyright, info.Comment,
                              info.Tempo,      info.Bio,       info.Mood,
                              info.Preference, info.Situation, std::to_string(info.Genre),
                              info.GenreV2,    info.Lyrics}) {
    all.append(text).append("|");
  }
  return all;
}

class FilledInfo : public EditedTracksTest {
 protected:
  Mp3Info info_;
  TagLosses losses_;
};

TEST_F(FilledInfo, IsTheSameFromTheRowAndFromTheEditor) {
  AddTrack("a.mp3", audio_);
  FillSample(Edit());
  StoreDetails(bench_.details, bench_.ListView1, 0);
  const std::string expected = "ar|ti|al|x4|2001|07|99|x3|x0|x2|x1|co|te|bi|mo|pr|si|17|Rock|ly|";
  FillInfo(bench_.details.texts, info_, losses_);
  EXPECT_EQ(WrittenTexts(info_), expected);
  Mp3Info of_row;
  FillInfo(bench_.ListView1.Record(0), of_row, losses_);
  EXPECT_EQ(WrittenTexts(of_row), expected);
  EXPECT_EQ(LossSentence(losses_), "");
}

TEST_F(FilledInfo, CountsTheTextsThatTheCodePageLacks) {
  FillInfo({{TrackField::Songname, "caf\xC3\xA9?"},
            {TrackField::Artist, "\xE6\x97\xA5\xE6\x9C\xAC?"},
            {TrackField::genrereal, "rock"},
            {TrackField::url, "\xE6\x97\xA5"}},
           info_, losses_);
  EXPECT_EQ(losses_.characters, 2);
  EXPECT_EQ(info_.Title, "caf\xE9?");
  EXPECT_EQ(info_.Artist, "???");
  EXPECT_EQ(info_.Genre, 255) << "names count in their own case";
  EXPECT_EQ(info_.GenreV2, "rock");
}

TEST_F(FilledInfo, ARecordTakesTheLeadingNumberOfATrackAndNoneThatIsTooLarge) {
  const std::pair<const char*, std::string> cases[] = {
      {"3/12", std::string(28, 'c') + std::string({'\0', '\3'})},
      {"300", std::string(30, 'c')},
      {"0", std::string(30, 'c')}};
  for (const auto& [track, comment] : cases) {
    const ID3v1Tag record = FillRecord(
        {{TrackField::Comment, std::string(40, 'c')}, {TrackField::trackno, track}}, losses_);
    EXPECT_EQ(std::string(record.Comment.begin(), record.Comment.end()), comment) << track;
  }
}

TEST_F(FilledInfo, OfAFileIsWhatItsTagsSayWhateverAnImportPassesOver) {
  const std::string long_comment(300, 'k');
  folder_.Write("v2.mp3",
                Mp3File()
                    .Id3v2({{"TPE1", "An'na"}, {"TRCK", "3/9"}, {"TCON", "(0)(17)Rock"}},
                           {.more_frames = "COMM" + BigEndian(305, 4, 7) + std::string(3, '\0') +
                                           "eng" + '\0' + long_comment +
                                           Id3v2FieldFrame({"TSRC", "not in the comment"})})
                    .Frames(5)
                    .Id3v1({.title = "old", .comment = "x", .track = 4, .genre = 8}));
  folder_.Write("v1.mp3", audio_ + Id3v1Record({.title = "Sky", .genre = 17}));
  folder_.Write("blues.mp3", Id3v2Tag({{"TCON", "(0)"}}) + audio_);
  ClassicTags tags;
  TrackTexts texts{{TrackField::BPM, "of another file"}};
  const auto take = [&](const char* name) {
    if (!tags.ReadTexts(folder_.Path(name), texts)) return false;
    FillInfo(texts, info_, losses_);
    return true;
  };
  ASSERT_TRUE(take("v2.mp3"));
  EXPECT_EQ(WrittenTexts(info_), "An'na|old||||3/9||||||" + long_comment + "||||||17|Rock||");
  ASSERT_TRUE(take("v1.mp3"));
  EXPECT_EQ(WrittenTexts(info_), "|Sky||||||||||||||||17|Rock||");
  EXPECT_FALSE(take("none.mp3"));
  EXPECT_EQ(texts[TrackField::Songname], "Sky");
  ASSERT_TRUE(take("blues.mp3"));
  EXPECT_EQ(info_.GenreV2, "Blues");
  EXPECT_EQ(LossSentence(losses_), "");
}

}  // namespace
}  // namespace tunemeadow
