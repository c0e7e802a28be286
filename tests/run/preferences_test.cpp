// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/preferences.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>

#include "run/ini.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

TEST(Preferences, AMissingFileAndEmptyKeysGiveEveryDefault) {
  const TempFolder folder;
  EXPECT_EQ(ReadPreferences(cINI(folder.Path("x.ini"))), Preferences{});
  std::string text = "[CONFIG]\n";
  for (const PreferenceKey& key : PreferenceKeys()) text.append(key.key).append("=\n");
  EXPECT_EQ(ReadPreferences(cINI(folder.Write("x.ini", text))), Preferences{});
}

TEST(Preferences, EveryKeyReachesItsOwnMemberAndComesBack) {
  const TempFolder folder;
  cINI ini(folder.Path("x.ini"));
  Preferences changed;
  for (const PreferenceKey& key : PreferenceKeys()) {
    SCOPED_TRACE(key.key);
    Preferences one;
    if (const auto* flag = std::get_if<bool Preferences::*>(&key.member)) {
      one.*(*flag) = changed.*(*flag) = !(one.*(*flag));
    } else if (const auto* number = std::get_if<int Preferences::*>(&key.member)) {
      one.*(*number) = changed.*(*number) = 3;
    } else {
      const auto text = std::get<std::string Preferences::*>(key.member);
      one.*text = changed.*text = " text of " + std::string(key.key) + " ";
    }
    cINI single(folder.Path(std::string(key.key)));
    ASSERT_EQ(single.SaveString("config", key.key, StoredText(one, key)), 1);
    EXPECT_EQ(ReadPreferences(single), one);
  }
  ASSERT_TRUE(WritePreferences(ini, changed));
  EXPECT_EQ(ReadPreferences(ini), changed);
}

TEST(Preferences, UnusableTextsOfBoxesAndIndicesLeaveTheDefault) {
  const TempFolder folder;
  const Preferences read = ReadPreferences(cINI(
      folder.Write("x.ini",
                   "[CONFIG]\nchkBackup=perhaps\nchkRepair= 0\nchkReplace=True\nchkCapitalize=-1\n"
                   "chkWarn=FALSE\ncboEncoder=99999999999\nsConnString=Data Source=/c.db\n")));
  Preferences expected;
  expected.chkRepair = false;
  expected.chkReplace = true;
  expected.chkCapitalize = true;
  expected.chkWarn = false;
  expected.sConnString = "Data Source=/c.db";
  EXPECT_EQ(read, expected);
}

TEST(Preferences, WritingTouchesNeitherForeignKeysNorTheConnectionString) {
  const TempFolder folder;
  cINI ini(folder.Write("x.ini", "[CONFIG]\nsConnString=by hand\nWidth=926.5\nchkWarn=1\n"));
  Preferences preferences = ReadPreferences(ini);
  preferences.chkWarn = false;
  preferences.sConnString = "other";
  preferences.chkaudiogalaxy = true;
  ASSERT_TRUE(WritePreferences(ini, preferences));
  EXPECT_TRUE(folder.Read("x.ini").starts_with(
      "[CONFIG]\nsConnString=by hand\nWidth=926.5\nchkWarn=0\nlblConfigWinamp=\n"));
  EXPECT_FALSE(ReadPreferences(ini).chkaudiogalaxy) << "lasts for the run only";
}

}  // namespace
}  // namespace tunemeadow
