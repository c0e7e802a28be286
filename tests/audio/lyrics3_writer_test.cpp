// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/lyrics3_writer.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/plain_user.h"
#include "support/writer_bench.h"

namespace tunemeadow {
namespace {

bool Write(WriterBench& bench, const Lyrics3Texts& texts, Lyrics3 block = {}) {
  bool ok = false;
  WriteTag(bench.writing, bench.path, texts, block, ok);
  return ok;
}

TEST(WriteTag, EveryFieldHasItsPlaceBeforeTheRecord) {
  WriterBench bench;
  bench.File(Audio() + Id3v1Record({.title = "Blue"}));
  const std::string name(31, 'n');
  Lyrics3 block = {.Lyrics3Inf = "info",
                   .Lyrics3Aut = "Bob",
                   .Lyrics3Eal = name,
                   .Lyrics3Ear = name.substr(1),
                   .Lyrics3Ett = name,
                   .Lyrics3Img = "a.jpg",
                   .Lyrics3Qua = "good",
                   .Lyrics3Other = "XYZ00003 x CRC00000"};
  bool ok = false;
  WriteTag(bench.writing, bench.path, {.lyrics = "[00:01]la", .mood = "calm", .situation = "bar"},
           block, ok);
  EXPECT_TRUE(ok);
  EXPECT_EQ(bench.File(), Audio() +
                              "LYRICSBEGIN"
                              "IND0000211"
                              "LYR00009[00:01]la"
                              "INF00004info"
                              "AUT00003Bob"
                              "EAL00031" +
                              name + "ETT00031" + name +
                              "IMG00005a.jpg"
                              "QUA00004good"
                              "SIT00003bar"
                              "MOO00004calm"
                              "XYZ00003 x CRC00000"
                              "000206LYRICS200" +
                              Id3v1Record({.title = "Blue"}));
  EXPECT_EQ(block.Lyrics3Moo, "calm");
}

TEST(WriteTag, FlagsTellOfLyricsAndTimeStamps) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "00"},     {"la", "10"},      {"la:", "10"}, {"la]", "10"}, {"]:", "10"},  // 1 and 2
      {"ab:]", "10"},                                                                 // 4 and 3
      {"]a:", "11"},                                                                  // 1 and 3
      {"a:]", "11"},  {"[00:01]", "11"},  // 2 and 3, 4 and 7
  };
  for (const auto& [lyrics, flags] : cases) {
    WriterBench bench;
    bench.File(Audio() + Id3v1Record({}));
    EXPECT_TRUE(Write(bench, {.lyrics = lyrics, .title = std::string(31, 't')}));
    EXPECT_EQ(bench.File().substr(Audio().size(), 21), "LYRICSBEGININD00002" + flags) << lyrics;
  }
}

TEST(WriteTag, WithoutNeedTheFileStays) {
  WriterBench bench;
  const std::string old = Audio() + Lyrics3Bytes({{"LYR", "la"}}) + Id3v1Record({});
  bench.File(old);
  const std::string name(30, 'n');
  EXPECT_TRUE(Write(bench, {.title = name, .artist = name, .album = name},
                    {.Lyrics3Ett = name + "n", .Lyrics3Other = "XYZ00000"}));
  EXPECT_EQ(bench.File(), old);
  bench.path = bench.folder.Path("none.mp3");
  EXPECT_TRUE(Write(bench, {})) << "not even a file is needed";
}

TEST(WriteTag, WritesWhereABlockBeforeARecordBegins) {
  const std::string record = Id3v1Record({});
  const std::string old_block = Lyrics3Bytes({{"LYR", "something longer than what comes"}});
  const std::string block = Lyrics3Bytes({{"IND", "10"}, {"LYR", "la"}});
  const std::pair<std::string, std::string> cases[] = {
      {Audio() + record, Audio() + block + record},
      {Audio() + old_block + record, Audio() + block + record},
      {Audio(), Audio().substr(0, Audio().size() - 128) + block},
      {Audio() + old_block, Audio().substr(0, Audio().size() - 128) + block},
      {std::string(128, 'x'), block},
      {record, block + record},
  };
  for (const auto& [old, expected] : cases) {
    WriterBench bench;
    bench.File(old);
    EXPECT_TRUE(Write(bench, {.lyrics = "la"}));
    EXPECT_EQ(bench.File(), expected);
    EXPECT_EQ(bench.writing.losses.sounds, expected.ends_with(record) ? 0 : 1);
    if (!expected.ends_with(record)) continue;
    EXPECT_TRUE(Write(bench, {.lyrics = "la"}));
    EXPECT_EQ(bench.File(), expected) << "written a second time";
  }
}

TEST(WriteTag, UnknownFieldsSurviveAsTheyStand) {
  WriterBench bench;
  bench.File(Audio() + Lyrics3Bytes({{"XYZ", " raw "}, {"AUT", " Bob "}}) + Id3v1Record({}));
  Lyrics3 block;
  ASSERT_TRUE(ReadLyrics3Tag(bench.path, block));
  EXPECT_TRUE(Write(bench, {.mood = "calm"}, block));
  EXPECT_EQ(bench.File(),
            Audio() +
                Lyrics3Bytes({{"IND", "00"}, {"AUT", "Bob"}, {"MOO", "calm"}, {"XYZ", " raw "}}) +
                Id3v1Record({}));
}

TEST(WriteTag, WhatDoesNotFitFailsWithTheFileUntouched) {
  WriterBench bench;
  const std::string file = Audio() + Id3v1Record({});
  bench.File(file);
  EXPECT_FALSE(Write(bench, {.lyrics = std::string(100'000, 'l')}));
  EXPECT_FALSE(Write(bench, {.lyrics = std::string(32'768, 'l')})) << "it could not be read back";
  EXPECT_FALSE(Write(bench, {.lyrics = "la"}, {.Lyrics3Other = std::string(999'969, 'o')}));
  EXPECT_EQ(bench.File(), file);
  EXPECT_TRUE(Write(bench, {.lyrics = "la"}, {.Lyrics3Other = std::string(999'968, 'o')}));
  EXPECT_EQ(bench.File().size(), file.size() + 999'999 + 15);
  bench.File(std::string(127, 'x'));
  EXPECT_FALSE(Write(bench, {.lyrics = "la"})) << "no place 127 bytes before the end";
  bench.File("x" + Lyrics3Bytes({{"LYR", std::string(120, 'l')}}));
  EXPECT_FALSE(Write(bench, {.lyrics = "la"})) << "a place before the file's first byte";
  EXPECT_EQ(bench.File().size(), 155U);
}

TEST(KillLyrics3Tag, TakesTheBlockAndLeavesTheRecord) {
  const std::string block = Lyrics3Bytes({{"LYR", "la"}});
  for (const std::string& record : {Id3v1Record({.title = "Blue"}), std::string()}) {
    WriterBench bench;
    bench.File(Audio() + block + record);
    EXPECT_EQ(KillLyrics3Tag(bench.writing, bench.path), "OK");
    EXPECT_EQ(bench.File(), Audio() + record);
    EXPECT_EQ(KillLyrics3Tag(bench.writing, bench.path), "No LYRICS3 Tag available to remove!");
  }
}

TEST(Lyrics3Writers, MissingAndProtectedFilesStayAsTheyAre) {
  WriterBench bench;
  EXPECT_FALSE(Write(bench, {.lyrics = "la"}));
  EXPECT_EQ(KillLyrics3Tag(bench.writing, bench.path), "LYRICS3 Tag can't be removeed!");
  EXPECT_FALSE(std::filesystem::exists(bench.path));
  const std::string file = Audio() + Lyrics3Bytes({{"LYR", "la"}});
  bench.File(file);
  const std::string without = bench.folder.Write("without.mp3", Audio());
  std::filesystem::permissions(bench.path, std::filesystem::perms(0444));
  std::filesystem::permissions(without, std::filesystem::perms(0444));
  const ScopedPlainUser plain_user(bench.folder.Path());
  EXPECT_FALSE(Write(bench, {.lyrics = "la"}));
  EXPECT_EQ(KillLyrics3Tag(bench.writing, bench.path), "LYRICS3 Tag can't be removeed!");
  EXPECT_EQ(KillLyrics3Tag(bench.writing, without), "No LYRICS3 Tag available to remove!");
  EXPECT_EQ(bench.File(), file);
}

}  // namespace
}  // namespace tunemeadow
