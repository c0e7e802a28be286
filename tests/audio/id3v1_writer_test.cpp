// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v1_writer.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/plain_user.h"
#include "support/writer_bench.h"

namespace tunemeadow {
namespace {

using std::string_literals::operator""s;

const ID3v1Texts kTexts = {.artist = "Ann",
                           .genre = "Rock",
                           .title = "A title of more than 30 characters",
                           .year = "19999",
                           .album = "Sea",
                           .comment = "123456789012345678901234567890",
                           .track = "7"};

TEST(WriteID3v1Tag, EveryFieldHasItsPlace) {
  WriterBench bench;
  bench.File(Audio());
  EXPECT_TRUE(WriteID3v1Tag(bench.writing, bench.path, FillID3v1Tag(kTexts), false));
  EXPECT_EQ(bench.File(), Audio() +
                              "TAG"
                              "A title of more than 30 charac"
                              "Ann                           "
                              "Sea                           "
                              "1999"
                              "1234567890123456789012345678\0\7\x11"s);
}

TEST(FillID3v1Tag, TrackGenreAndComment) {
  const struct {
    std::string comment, track, genre, expected;
    int number;
  } cases[] = {
      {std::string(31, 'c'), "", "", std::string(30, 'c'), 255},
      {"hi", "3/12", "rock", Fixed("hi", 28, ' ') + "\0\3"s, 255},
      {"", "255", "Blues", std::string(28, ' ') + "\0\xFF"s, 0},
      {"", "x", "My own", std::string(28, ' ') + "\0\0"s, 255},
      {"", "", "SynthPop", std::string(30, ' '), 147},
  };
  for (const auto& each : cases) {
    const ID3v1Tag tag =
        FillID3v1Tag({.genre = each.genre, .comment = each.comment, .track = each.track});
    EXPECT_EQ(std::string(tag.Comment.begin(), tag.Comment.end()), each.expected);
    EXPECT_EQ(tag.Genre, each.number) << each.genre;
  }
}

TEST(WriteID3v1Tag, GoesOverAnOldRecordAndElseBehindTheEnd) {
  const std::string record = Id3v1Record({.title = "New"});
  const std::string lower = Id3v1Record({.title = "Old", .mark = "tag"});
  const std::pair<std::string, std::string> cases[] = {
      {Audio() + Id3v1Record({.title = "Old"}), Audio() + record},
      {Audio() + lower, Audio() + lower + record},
      {"", record},
      {"short", "short" + record},
      {Id3v1Record({.title = "Old"}), record},
  };
  for (const auto& [old, expected] : cases) {
    WriterBench bench;
    bench.File(old);
    EXPECT_TRUE(WriteID3v1Tag(bench.writing, bench.path, FillID3v1Tag({.title = "New"}), false));
    EXPECT_EQ(bench.File(), expected);
  }
  WriterBench bench;
  bench.File(Audio());
  EXPECT_TRUE(WriteID3v1Tag(bench.writing, bench.path, FillID3v1Tag({.title = "New"}), true));
  EXPECT_EQ(bench.File(), Audio() + Id3v1Record({.title = "New", .mark = "   "}));
}

TEST(RemoveID3v1Tag, CutsTheRecordOffOnce) {
  WriterBench bench;
  bench.File(Audio() + Id3v1Record({}));
  EXPECT_EQ(RemoveID3v1Tag(bench.writing, bench.path), "OK");
  EXPECT_EQ(bench.File(), Audio());
  EXPECT_EQ(RemoveID3v1Tag(bench.writing, bench.path), "No ID3v1 Tag available to remove!");
}

TEST(ID3v1Writers, MissingFilesFoldersAndProtectedFilesStayAsTheyAre) {
  WriterBench bench;
  EXPECT_EQ(RemoveID3v1Tag(bench.writing, bench.path), "");
  EXPECT_FALSE(WriteID3v1Tag(bench.writing, bench.path, {}, false));
  EXPECT_FALSE(std::filesystem::exists(bench.path));
  EXPECT_EQ(RemoveID3v1Tag(bench.writing, bench.folder.Path()), "error opening file for writing");
  const std::string with_tag = Audio() + Id3v1Record({});
  bench.File(with_tag);
  const std::string without = bench.folder.Write("without.mp3", Audio());
  std::filesystem::permissions(bench.path, std::filesystem::perms(0444));
  std::filesystem::permissions(without, std::filesystem::perms(0444));
  const ScopedPlainUser plain_user(bench.folder.Path());
  EXPECT_EQ(RemoveID3v1Tag(bench.writing, bench.path), "error opening file for writing");
  EXPECT_EQ(RemoveID3v1Tag(bench.writing, without), "No ID3v1 Tag available to remove!");
  EXPECT_FALSE(WriteID3v1Tag(bench.writing, bench.path, {}, false));
  EXPECT_EQ(bench.File(), with_tag);
}

}  // namespace
}  // namespace tunemeadow
