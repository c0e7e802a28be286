// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/save_group.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "audio/id3v1_writer.h"
#include "audio/tag_writing.h"
#include "run/session.h"
#include "support/mp3_builder.h"
#include "support/scripted_interaction.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

class SaveGroups : public testing::Test {
 protected:
  std::vector<std::string> Files(std::size_t count) {
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < count; ++i) {
      paths.push_back(folder_.Write("music/" + std::to_string(i) + ".mp3",
                                    Mp3File().Frames(1).Id3v1({.title = "old"}).Build()));
    }
    return paths;
  }

  TempFolder folder_;
  Session session_{folder_.Path(), "tunemeadow"};
  ScriptedInteraction interaction_;
  Batch batch_{session_, interaction_, "", 0};
  TagWriting writing_{session_.journal};
};

TEST_F(SaveGroups, AGroupHoldsSoManyFilesAndIsPreparedBeforeTheFirst) {
  const std::vector<std::string> paths = Files(kFilesPerGroup + 2);
  SaveGroup group(session_.journal, batch_, paths, {.ranges = TagRanges});
  for (std::size_t i = 0; i < paths.size(); ++i) {
    group.BeginFile(i);
    const std::int64_t before = session_.journal.GroupBytes();
    const bool of_many = before >= static_cast<std::int64_t>(kFilesPerGroup * 128);
    ASSERT_EQ(of_many, i < kFilesPerGroup) << i;
    ASSERT_EQ(RemoveID3v1Tag(writing_, paths[i]), "OK");
    const auto two_notes = static_cast<std::int64_t>(2 * (128 + paths[i].size()));
    ASSERT_LT(session_.journal.GroupBytes(), before + two_notes) << "the journal had the record";
    group.FileDone(i);
  }
  EXPECT_TRUE(session_.journal.InGroup());
  group.Close();
  EXPECT_FALSE(session_.journal.InGroup());
  EXPECT_EQ(std::filesystem::file_size(paths.back()), kTestFrameBytes);
}

TEST_F(SaveGroups, WhatIsNotPreparedIsJournaledByItselfInOneGroup) {
  const std::vector<std::string> paths = Files(3);
  SaveGroup group(session_.journal, batch_, paths, {});
  std::int64_t last = -1;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    group.BeginFile(i);
    ASSERT_EQ(RemoveID3v1Tag(writing_, paths[i]), "OK");
    group.FileDone(i);
    EXPECT_GT(session_.journal.GroupBytes(), last);
    last = session_.journal.GroupBytes();
  }
}

TEST_F(SaveGroups, AGroupEndsOnceSoManyBytesHaveComeOnTopOfWhatWasPrepared) {
  const std::vector<std::string> paths = Files(6);
  static std::size_t prepared;
  const auto ranges = [](FileBytes& file) {
    ++prepared;
    return TagRanges(file);
  };
  const std::int64_t note = [&] {
    SaveGroup group(session_.journal, batch_, paths, {.ranges = ranges});
    group.BeginFile(0);
    const std::int64_t before = session_.journal.GroupBytes();
    EXPECT_EQ(RemoveID3v1Tag(writing_, paths[0]), "OK");
    group.FileDone(0);
    return session_.journal.GroupBytes() - before;
  }();
  Files(6);
  const struct {
    decltype(SavePlan::ranges) ranges;
    std::int64_t bytes;
    std::string first_of_group;  // a digit for each file
  } cases[] = {{ranges, 1, "111111"}, {ranges, note * 3 / 2, "101010"}, {nullptr, 1, "111111"}};
  for (const auto& each : cases) {
    SaveGroup group(session_.journal, batch_, paths,
                    {.ranges = each.ranges, .bytes_per_group = each.bytes});
    std::string groups;
    prepared = 0;
    std::int64_t before = -1;
    for (std::size_t i = 0; i < paths.size(); ++i) {
      group.BeginFile(i);
      groups += session_.journal.GroupBytes() == before ? '0' : '1';
      ASSERT_EQ(RemoveID3v1Tag(writing_, paths[i]), "OK");
      group.FileDone(i);
      before = session_.journal.GroupBytes();
    }
    EXPECT_EQ(groups, each.first_of_group) << each.bytes;
    EXPECT_EQ(prepared, each.ranges == nullptr ? 0 : paths.size()) << "each file once";
    Files(6);
  }
}

TEST_F(SaveGroups, EveryWayOutClosesTheGroup) {
  const std::vector<std::string> paths = Files(1);
  try {
    SaveGroup group(session_.journal, batch_, paths, {.ranges = TagRanges});
    group.BeginFile(0);
    throw std::runtime_error("out");
  } catch (const std::runtime_error&) {
    EXPECT_FALSE(session_.journal.InGroup());
  }
}

}  // namespace
}  // namespace tunemeadow
