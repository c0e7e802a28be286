// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/batch.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "support/catalogue.h"
#include "support/scripted_interaction.h"

namespace tunemeadow {
namespace {

class BatchTest : public testing::Test {
 protected:
  BatchTest() { session_.connection.Open(ProvideCatalogue(folder_)); }

  /// What a scope changes: b(usy), the depth of the pointer, w(indow disabled), n(ot synced).
  std::string State() {
    const bool batch = session_.connection.CurrentDurability() == Durability::kBatch;
    return std::string(session_.busy ? "b" : "-") + std::to_string(interaction_.busy_depth) +
           (interaction_.main_window_enabled ? "-" : "w") + (batch ? "n" : "-");
  }

  /// The rule of the store itself: 1 while rows are not synced one by one, 2 else.
  std::string Synchronous() {
    return session_.connection.Execute("pragma synchronous").Fields("synchronous");
  }

  TempFolder folder_;
  Session session_{folder_.Path(), "tunemeadow"};
  ScriptedInteraction interaction_;
};

TEST_F(BatchTest, AScopeChangesWhatItIsAskedToAndPutsBackWhatItFound) {
  bool flag = false;
  const std::pair<BusyWith, std::string> cases[] = {{{}, "b1--"},
                                                    {{.pointer = false}, "b0--"},
                                                    {{.batch = true}, "b1-n"},
                                                    {{.closed_window = true}, "b1w-"},
                                                    {{.flag = &flag}, "b1--"}};
  for (const auto& [with, state] : cases) {
    try {
      const Busy busy(session_, interaction_, with);
      EXPECT_EQ(State(), state);
      EXPECT_EQ(flag, with.flag != nullptr);
      {
        const Busy within(session_, interaction_,
                          {.pointer = false, .batch = true, .closed_window = true, .flag = &flag});
        EXPECT_EQ(State(), state.substr(0, 2) + "wn");
        EXPECT_EQ(Synchronous(), "1");
      }
      EXPECT_EQ(State(), state);
      EXPECT_EQ(flag, with.flag != nullptr);
      throw std::runtime_error("on every way out");
    } catch (const std::runtime_error&) {
      EXPECT_EQ(State(), "-0--");
      EXPECT_EQ(Synchronous(), "2");
      EXPECT_FALSE(flag);
    }
  }
}

TEST_F(BatchTest, ShowsItsWorkAndEndsAtACancel) {
  session_.CancelRequested = true;  // of the work before
  interaction_.on_yield = [&](std::size_t yield) {
    EXPECT_EQ(State(), "b1wn");
    EXPECT_EQ(interaction_.panel_width, kPanelWidthBatch);
    session_.CancelRequested = yield == 2;
  };
  {
    Batch batch(session_, interaction_, "working...", 3);
    EXPECT_EQ(interaction_.progress_maximum, 3);
    EXPECT_TRUE(batch.Step(1));
    batch.SetLine("still working...");
    interaction_.WillAnswer(Answer::kOk);
    interaction_.on_box = [&](const MessageBox&) { EXPECT_FALSE(interaction_.loading_shown); };
    EXPECT_EQ(batch.ShowMessage({.text = "x"}), Answer::kOk);
    EXPECT_TRUE(interaction_.loading_shown);
    EXPECT_FALSE(batch.Step(2));
  }
  EXPECT_EQ(interaction_.loading_lines,
            (std::vector<std::string>{"working...", "still working...", "still working..."}));
  EXPECT_EQ(interaction_.progress, (std::vector<std::int64_t>{1, 2}));
  EXPECT_EQ(interaction_.statuses, std::vector<std::string>{"Ready."});
  EXPECT_EQ(interaction_.layouts, 1U);
  EXPECT_EQ(State(), "-0--");
  { const Batch quiet(session_, interaction_, "", 0); }
  EXPECT_EQ(interaction_.loading_lines.size(), 3U) << "a job has a window of its own";
}

TEST_F(BatchTest, ABatchWithinABatchLeavesTheRestToIt) {
  Batch batch(session_, interaction_, "outer...", 10);
  EXPECT_TRUE(batch.Step(4));
  {
    Batch within(session_, interaction_, "inner...", 2);
    EXPECT_TRUE(within.Step(1));
    session_.CancelRequested = true;
  }
  EXPECT_EQ(State(), "b1wn");
  EXPECT_EQ(interaction_.panel_width, kPanelWidthBatch);
  EXPECT_FALSE(interaction_.progress_maximum);
  EXPECT_EQ(interaction_.loading_lines,
            (std::vector<std::string>{"outer...", "inner...", "outer..."}));
  EXPECT_TRUE(interaction_.statuses.empty());
  { const Batch next(session_, interaction_, "", 0); }
  EXPECT_TRUE(interaction_.loading_shown) << "though the batch within had no line";
  EXPECT_FALSE(batch.Step(5)) << "the cancel was meant for both";
  EXPECT_EQ(interaction_.progress, (std::vector<std::int64_t>{4, 1}))
      << "the bar does not come back";
}

}  // namespace
}  // namespace tunemeadow
