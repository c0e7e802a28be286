// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/start_up.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

class ListedStarts : public ProcessStarter {
 public:
  bool Start(const std::string& program, const std::vector<std::string>& arguments) override {
    started = arguments;
    started.insert(started.begin(), program);
    return false;
  }
  std::vector<std::string> started;
};

TEST(StartRepairTool, PassesBothPathsWithBlanksEncoded) {
  const TempFolder folder;
  const std::string tool = folder.Write("RepairDB.exe");
  Session session(folder.Path(), "tunemeadow");
  session.preferences.lblConfigDB = "/my music/mp3s.mdb";
  ListedStarts starter;
  EXPECT_TRUE(StartRepairTool(session, starter, "/nowhere/"));
  EXPECT_EQ(starter.started, (std::vector<std::string>{tool, "-i", "/my%20music/mp3s.mdb", "-o",
                                                       folder.Path("compact.mdb")}));
}

TEST(StartRepairTool, TakesTheShippedToolWhereTheProgramFolderHasNoneAndTellsOfNeither) {
  const TempFolder folder;
  const TempFolder shipped;
  Session session(folder.Path(), "tunemeadow");
  ListedStarts starter;
  EXPECT_FALSE(StartRepairTool(session, starter, shipped.Path()));
  EXPECT_TRUE(starter.started.empty());
  const std::string tool = shipped.Write("RepairDB.exe");
  EXPECT_TRUE(StartRepairTool(session, starter, shipped.Path()));
  ASSERT_FALSE(starter.started.empty());
  EXPECT_EQ(starter.started.front(), tool);
}

}  // namespace
}  // namespace tunemeadow
