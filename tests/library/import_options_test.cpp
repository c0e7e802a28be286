// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/import_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scripted_interaction.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

TEST(ImportOptions, AreKeptAndStoredWithoutTheOtherSettings) {
  const TempFolder folder;
  Session session(folder.Path(), "tunemeadow");
  ScriptedInteraction interaction;
  Preferences controls;
  controls.lblScan = "d:\\Music\\";
  controls.optID3V2Versions = true;
  controls.txtReplaceevery = "";
  controls.chkWarn = false;  // no control of the dialog
  EXPECT_TRUE(SaveImportOptions(session, interaction, controls));
  EXPECT_EQ(session.preferences.txtReplaceevery, "") << "for this run an empty text holds";
  EXPECT_TRUE(session.preferences.chkWarn);
  const Preferences stored = ReadPreferences(session.ini);
  EXPECT_EQ(stored.lblScan, "D:\\Music\\");
  EXPECT_TRUE(stored.optID3V2Versions);
  EXPECT_EQ(session.ini.ReadSection(kConfigSection).size(), kImportKeys.size());
}

TEST(ImportOptions, AreRefusedWithPreviewsThatHaveNoPlaceOrSize) {
  const TempFolder folder;
  Session session(folder.Path(), "tunemeadow");
  ScriptedInteraction interaction{Answer::kOk, Answer::kOk};
  Preferences controls;
  controls.chkPreview = true;
  controls.lblPreviewPath = "/previews/";
  EXPECT_FALSE(SaveImportOptions(session, interaction, controls));
  controls.lblPreviewPath.swap(controls.txtPreviewSize);
  EXPECT_FALSE(SaveImportOptions(session, interaction, controls));
  EXPECT_EQ(interaction.boxes[0].text,
            "If Preview is selected you have to choose the Destination Path and the Preview size!");
  EXPECT_EQ(session.preferences, Preferences());
  EXPECT_EQ(folder.Count(), 0) << "no settings file";
}

}  // namespace
}  // namespace tunemeadow
