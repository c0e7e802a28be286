// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/start_up.h"

#include <gtest/gtest.h>

#include "support/scripted_world.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

TEST(StartRepairTool, PassesBothPathsWithBlanksEncoded) {
  const TempFolder folder;
  const std::string tool = folder.Write("RepairDB.exe");
  Session session(folder.Path(), "tunemeadow");
  session.preferences.lblConfigDB = "/my music/mp3s.mdb";
  ScriptedWorld world;
  world.starts = false;
  EXPECT_TRUE(StartRepairTool(session, world, "/nowhere/"));
  EXPECT_EQ(world.log,
            (std::vector<std::string>{"start " + tool + " [-i] [/my%20music/mp3s.mdb] [-o] [" +
                                      folder.Path("compact.mdb") + "]"}));
}

TEST(StartRepairTool, TakesTheShippedToolWhereTheProgramFolderHasNoneAndTellsOfNeither) {
  const TempFolder folder;
  const TempFolder shipped;
  Session session(folder.Path(), "tunemeadow");
  ScriptedWorld world;
  EXPECT_FALSE(StartRepairTool(session, world, shipped.Path()));
  EXPECT_TRUE(world.log.empty());
  const std::string tool = shipped.Write("RepairDB.exe");
  EXPECT_TRUE(StartRepairTool(session, world, shipped.Path()));
  ASSERT_EQ(world.log.size(), 1U);
  EXPECT_TRUE(world.log[0].starts_with("start " + tool + " ")) << world.log[0];
}

}  // namespace
}  // namespace tunemeadow
