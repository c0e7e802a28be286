// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/file_run.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "editing/tag_files_test.h"

namespace tunemeadow {
namespace {

class FileRuns : public TagFilesTest {
 protected:
  FileRuns() {
    for (const char* name : {"a.mp3", "b.mp3", "c.mp3"}) Add(name, audio_ + v1_);
    ShowAll();
    interaction_.on_box = [this](const MessageBox&) {
      EXPECT_FALSE(session_.journal.InGroup()) << "nothing is left open behind a box";
    };
  }

  std::vector<SelectedFile> Files() { return TakeSelectedFiles(bench_).files; }

  static FileRunPlan Plan(bool ignores_all = true) {
    return {.line = "at it...",
            .first_step = 1,
            .shows_path = true,
            .ignores_all = ignores_all,
            .save = SavePlan{.ranges = TagRanges}};
  }
};

struct FailureCase {
  bool ignores_all;
  std::vector<Answer> answers;
  std::string tries;  ///< files that were tried, in their order
  bool complete;
};

TEST_F(FileRuns, AFailureIsTriedAgainPassedOverOrTheEnd) {
  constexpr Answer kIgnore = Answer::kIgnore, kRetry = Answer::kRetry, kAbort = Answer::kAbort;
  const FailureCase cases[] = {
      {true, {kIgnore}, "abc", true},
      {false, {kIgnore, kIgnore, kIgnore}, "abc", true},
      {true, {kRetry, kRetry, kIgnore}, "aaabc", true},
      {false, {kIgnore, kRetry, kAbort}, "abb", false},
      {true, {kAbort}, "a", false},
  };
  for (const FailureCase& one : cases) {
    for (const Answer answer : one.answers) interaction_.WillAnswer(answer);
    std::string tries;
    FileRun run(bench_, Plan(one.ignores_all), Files());
    EXPECT_EQ(run.Run([&](const SelectedFile& file) {
      EXPECT_FALSE(run.Try([&]() -> std::optional<MessageBox> {
        EXPECT_TRUE(session_.journal.InGroup());
        tries += file.path.at(file.path.size() - 5);
        return MessageBox{.text = "no", .buttons = Buttons::kAbortRetryIgnore};
      }));
      EXPECT_EQ(run.Stopped(), !one.complete && tries == one.tries);
    }),
              one.complete);
    EXPECT_EQ(tries, one.tries);
  }
}

TEST_F(FileRuns, EachFileIsAStepAndItsRowAndCellsFollow) {
  const FieldText cells[] = {{TrackField::Mood, "well"}};
  {
    FileRun run(bench_, Plan(), Files());
    EXPECT_FALSE(session_.journal.InGroup()) << "before the first write";
    EXPECT_FALSE(run.Run([&](const SelectedFile& file) {
      run.SetCells(cells);
      EXPECT_TRUE(run.Try([&] { return std::nullopt; }));
      run.FileDone();
      run.UpdateRow(kPictureRemoved);
      if (file.row == 1) run.Stop();
    }));
  }
  EXPECT_EQ(Flags(), (Texts{"110 new", "110 new", "111 old"}));
  EXPECT_EQ(Cells(), (Texts{"110", "110", "111"}));
  EXPECT_EQ(bench_.ListView1.Cell(1, TrackField::Mood), "well");
  EXPECT_EQ(interaction_.progress, (std::vector<std::int64_t>{1, 2}));
  EXPECT_EQ(interaction_.loading_lines, Texts{"at it..."});
  EXPECT_TRUE(interaction_.SawStatus(folder_.Path("music/b.mp3")));
  EXPECT_FALSE(session_.journal.InGroup());
}

TEST_F(FileRuns, AJobHasItsOwnWindowWhichEndsOnEveryWayOut) {
  const FileRunPlan plan{.job = FileRunJob{.title = "Job", .cancelled = "ended"}};
  interaction_.on_yield = [&](std::size_t yield) { session_.CancelRequested = yield == 2; };
  const auto nothing = [](const SelectedFile&) {};
  EXPECT_FALSE(FileRun(bench_, plan, Files()).Run(nothing));
  EXPECT_EQ(interaction_.job_lines, Texts{"ended"});
  EXPECT_TRUE(FileRun(bench_, plan, Files()).Run(nothing));
  EXPECT_TRUE(interaction_.job_lines.empty());
  EXPECT_TRUE(interaction_.progress.empty() && interaction_.loading_lines.empty());
  const auto fails = [](const SelectedFile&) { throw std::runtime_error("x"); };
  EXPECT_THROW((void)FileRun(bench_, plan, Files()).Run(fails), std::runtime_error);
  interaction_.ExpectPutBack();
  EXPECT_EQ(interaction_.job_titles, Texts(3, "Job"));
}

}  // namespace
}  // namespace tunemeadow
