// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "files/file_facts.h"
#include "files/journaled_file.h"
#include "store/compact_copy.h"
#include "support/catalogue.h"
#include "support/scripted_interaction.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using Steps = std::vector<std::string>;

/// A start without a window. Every step that a person or the window would notice is one line.
class StartUpTest : public testing::Test, public StartWindow {
 protected:
  struct Person : ScriptedInteraction {
    explicit Person(Steps& steps_in) : steps(steps_in) {}
    void ShowLoading(const std::string& line) override {
      steps.push_back(line);
      ScriptedInteraction::ShowLoading(line);
    }
    void HideLoading() override {
      steps.push_back("loaded");
      ScriptedInteraction::HideLoading();
    }
    Steps& steps;
  };

  StartUpTest() {
    world_.before_start = [this] { steps_.push_back("repair tool" + Seen()); };
    folder_.Write("RepairDB.exe");
    Set({{"firstrun", "1"}, {"lblConfigWinamp", "/opt/mpv"}});
  }

  void Set(const StoredValues& values) { session_.ini.SaveStrings(kConfigSection, values); }
  bool Start() { return StartUp(bench_, *this, folder_.Path("no/such/")); }
  std::string Stored(const char* key) { return session_.ini.GetString(kConfigSection, key, "", 0); }
  bool Took(const std::string& step) {
    return std::any_of(steps_.begin(), steps_.end(),
                       [&](const std::string& taken) { return taken.starts_with(step); });
  }

  void RunOn(const char* name, const std::string& statement) {
    Connection connection;
    connection.Open(folder_.Path(name));
    connection.Execute(statement);
  }

  void WriteARow(const char* name = "mp3s.mdb") {
    RunOn(name, "update mp3sTabelle set Comment=Comment & 'x'");
  }

  /// What the program's folder and the connection are like by now.
  std::string Seen() {
    std::string seen;
    if (MyFileExists(folder_.Path("compact.mdb"))) seen += ", copy";
    if (MyFileExists(folder_.Path("mp3s.bak"))) seen += ", backup";
    if (session_.connection.IsOpen()) seen += ", open";
    return seen;
  }

  void ApplyProperties(const StoredValues& stored) override {
    steps_.push_back("properties" + Seen());
    EXPECT_EQ(StoredValue(stored, "lblConfigWinamp"), Stored("lblConfigWinamp"));
  }
  void BuildLists() override {
    steps_.push_back("lists");
    EXPECT_NE(session_.connection_string, "");
  }
  void DisableRepair() override {
    steps_.push_back("no repair tool");
    EXPECT_FALSE(session_.preferences.chkRepair);
  }
  bool ChooseDatabase() override {
    EXPECT_EQ(session_.preferences.lblConfigDB, "");
    if (picks_.empty()) return false;
    session_.preferences.lblConfigDB = picks_.front();
    picks_.erase(picks_.begin());
    return true;
  }
  void LoadGenresNEU() override { steps_.push_back("genres" + Seen()); }
  void ShowWindow() override { steps_.push_back("window"); }
  std::string FolderOfMusic() override { return "/home/me/Music/"; }
  void ShowWelcome() override {
    steps_.push_back("welcome");
    EXPECT_EQ(bench_.details.uid, 1) << "the demonstration track stands in the details";
    EXPECT_EQ(session_.preferences.lblScan, "/home/me/Music/");
  }

  Steps steps_;
  TempFolder folder_;
  std::string catalogue_ = ProvideCatalogue(folder_);
  Session session_{folder_.Path(), "tunemeadow"};
  Person person_{steps_};
  ScriptedWorld world_;
  Workbench bench_{session_, person_, world_};
  Steps picks_;  ///< what the person chooses after a catalogue that cannot be opened
};

TEST_F(StartUpTest, TheOldCopyIsRemovedBeforeTheToolStartsAndTheBackupIsMadeBeforeTheOpening) {
  ASSERT_EQ(MakeCompactCopy(catalogue_, folder_.Path("compact.mdb")), "");
  WriteARow();
  ASSERT_TRUE(Start());
  EXPECT_THAT(steps_,
              ElementsAre("Loading Properties...", "properties, copy", "lists",
                          "Loading Database...", "Compacting the database...", "repair tool",
                          "Backing up the database...", "Loading Database...", "Loading Genres...",
                          "genres, backup, open", "Loading Data...", "loaded", "window"));
  EXPECT_EQ(bench_.ListView1.RowCount(), 1U);
  EXPECT_EQ(session_.track_count, 1);
  EXPECT_EQ(person_.Status(), "Ready.");
}

TEST_F(StartUpTest, WhatNobodyHasWrittenToIsNeitherCompactedNorBackedUpAgain) {
  const auto flip_a_byte = [this](const char* name) {
    std::string bytes = folder_.Read(name);
    bytes[bytes.size() / 2] ^= 1;
    folder_.Write(name, bytes);
  };
  const auto make_copy = [this] {
    ASSERT_EQ(MakeCompactCopy(catalogue_, folder_.Path("compact.mdb")), "");
  };
  const auto grow_and_shrink = [this] {
    RunOn("mp3s.mdb",
          "insert into playlists (Playlist) values ('" + std::string(90000, 'x') + "')");
    RunOn("mp3s.mdb", "delete from playlists");
  };
  const struct {
    const char* what;
    std::function<void()> before;
    bool tool, backup;
  } starts[] = {
      {"the first start", [] {}, true, true},
      {"the tool left nothing", [] {}, true, false},
      {"its copy would save nothing and goes", make_copy, false, false},
      {"nothing written", [] {}, false, false},
      {"much written and deleted", grow_and_shrink, true, true},
      {"its copy is taken over; the backup holds the same rows", make_copy, false, false},
      {"nothing written", [] {}, false, false},
      {"a row written", [this] { WriteARow(); }, true, true},
      {"the backup has gone", [this] { fs::remove(folder_.Path("mp3s.bak")); }, true, true},
      {"the backup is damaged", [&] { flip_a_byte("mp3s.bak"); }, true, true},
      {"the settings have gone",
       [this] {
         fs::remove(folder_.Path("tunemeadow.INI"));
         Set({{"firstrun", "1"}, {"lblConfigWinamp", "/opt/mpv"}});
       },
       true, true},
      {"a copy of other rows is taken over",
       [this] {
         fs::copy_file(catalogue_, folder_.Path("compact.mdb"));
         WriteARow("compact.mdb");
       },
       true, true},
  };
  for (const auto& start : starts) {
    SCOPED_TRACE(start.what);
    session_.connection.Close();
    start.before();
    steps_.clear();
    ASSERT_TRUE(Start());
    EXPECT_EQ(Took("repair tool"), start.tool);
    EXPECT_EQ(Took("Backing up"), start.backup);
    EXPECT_FALSE(MyFileExists(folder_.Path("compact.mdb")));
    EXPECT_TRUE(MyFileExists(folder_.Path("mp3s.bak")));
  }
}

TEST_F(StartUpTest, RepairAndBackupAreForACatalogueOfItsOwnWhereTheyAreWanted) {
  const struct {
    StoredValues settings;
    bool tool, repaired, disabled, backed_up;
  } cases[] = {
      {{{"chkRepair", "1"}, {"chkBackup", "0"}}, true, true, false, false},
      {{{"chkRepair", "0"}, {"chkBackup", "1"}}, true, false, false, true},
      {{{"chkRepair", "1"}}, false, false, true, true},
      {{{"sConnString", "Data Source=" + catalogue_}}, true, false, false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.settings[0].first + "=" + c.settings[0].second);
    session_.connection.Close();
    steps_.clear();
    fs::remove(folder_.Path("mp3s.bak"));
    if (!c.tool) fs::remove(folder_.Path("RepairDB.exe"));
    Set(c.settings);
    ASSERT_TRUE(Start());
    EXPECT_EQ(Took("repair tool"), c.repaired);
    EXPECT_EQ(Took("no repair tool"), c.disabled);
    EXPECT_EQ(MyFileExists(folder_.Path("mp3s.bak")), c.backed_up);
  }
}

TEST_F(StartUpTest, ACatalogueThatCannotBeOpenedLeadsToAnotherOneOrToTheEnd) {
  const std::string broken = folder_.Write("broken.mdb", std::string(5000, 'x'));
  const std::string wrong = folder_.Write("wrong.mdb", std::string(5000, 'y'));
  Set({{"sConnString", "Data Source=" + broken}, {"chkBackup", "0"}});
  for (int i = 0; i < 3; ++i) person_.WillAnswer(Answer::kOk);
  EXPECT_FALSE(Start());
  EXPECT_FALSE(Took("genres") || Took("window"));
  EXPECT_EQ(steps_.back(), "loaded");
  EXPECT_EQ(Stored("lblConfigDB"), "");

  const std::string mine = ProvideCatalogue(folder_, "mine.mdb");
  picks_ = {wrong, mine};
  ASSERT_TRUE(Start());
  const std::vector<std::string> boxes = person_.BoxTexts();
  ASSERT_EQ(boxes.size(), 3U);
  EXPECT_TRUE(boxes[1].starts_with("Error: The database can't be opened: andere\n\n")) << boxes[1];
  EXPECT_TRUE(boxes[2].starts_with("Error: The database can't be opened: " + wrong)) << boxes[2];
  EXPECT_EQ(Stored("lblConfigDB"), mine);
  EXPECT_EQ(session_.preferences.sConnString, "");
  EXPECT_EQ(session_.quote, '"');
  EXPECT_EQ(bench_.ListView1.RowCount(), 1U);
}

TEST_F(StartUpTest, ForACatalogueThatHasGoneTheOneOfTheProgramFolderIsOffered) {
  Set({{"lblConfigDB", "/moved/away.mdb"}});
  person_.WillAnswer(Answer::kNo);
  person_.WillAnswer(Answer::kOk);
  EXPECT_FALSE(Start());
  EXPECT_EQ(Stored("lblConfigDB"), "/moved/away.mdb");
  person_.WillAnswer(Answer::kYes);
  ASSERT_TRUE(Start());
  EXPECT_EQ(person_.BoxTexts().back(),
            "Question: The database is not there any more: /moved/away.mdb\n\nThere is one in the "
            "program's folder: " +
                catalogue_ + "\n\nShall that one be opened, from now on?");
  EXPECT_EQ(session_.preferences.lblConfigDB, catalogue_);
  EXPECT_EQ(Stored("lblConfigDB"), "") << "wherever the folder will lie";
  EXPECT_EQ(bench_.ListView1.RowCount(), 1U);
}

TEST_F(StartUpTest, TheFirstStartDetectsWhatIsThereAndEndsWithTheWelcome) {
  Set({{"firstrun", ""}, {"lblConfigWinamp", ""}});
  folder_.Write("monster.mp3", "a track");
  world_.optical = "/media/cdrom0/";
  person_.WillAnswer(Answer::kOk);
  ASSERT_TRUE(Start());
  EXPECT_THAT(person_.BoxTexts(),
              ElementsAre(testing::StartsWith("Warning: No MP3-Player found.")));
  EXPECT_EQ(session_.preferences.lblConfigWinamp, kNoPlayer);
  EXPECT_EQ(session_.preferences.lblConfigCDROM, "/media/cdrom0");
  EXPECT_EQ(bench_.ListView1.Cell(0, TrackField::location), folder_.Path("monster.mp3"));
  EXPECT_EQ(steps_.back(), "welcome");
  EXPECT_EQ(person_.Status(), "Now it's recommended to scan your disk for mp3 files");
}

TEST_F(StartUpTest, WhatIsStoredIsNotDetectedAgainAndThePlayerThatIsAssociatedIsTaken) {
  world_.optical = "/media/cdrom0/";
  Set({{"lblConfigCDROM", "/burnt"}, {"lblScan", "/m/"}});
  ASSERT_TRUE(Start());
  EXPECT_EQ(session_.preferences.lblConfigCDROM, "/burnt");
  EXPECT_EQ(session_.preferences.lblScan, "/m/");
  EXPECT_EQ(world_.associations_asked, 0);
  session_.connection.Close();
  Set({{"lblConfigWinamp", ""}});
  world_.associated = "/usr/bin/qmmp";
  ASSERT_TRUE(Start());
  EXPECT_EQ(session_.PlayerKind, "Winamp");
}

TEST_F(StartUpTest, TheViewComesBackAsItWas) {
  const struct {
    StoredValues settings;
    bool picture, preview, selection;
    TreeKind kind;
  } cases[] = {
      {{{"chkPicShow", ""}}, true, false, true, TreeKind::kLocation},
      {{{"chkPicShow", "0"},
        {"chkPlayPreview", "1"},
        {"chkTrackSelection", "0"},
        {"cboTreeSelector", "4"}},
       false,
       true,
       false,
       TreeKind::kYear},
      {{{"cboTreeSelector", "5"}}, false, true, false, TreeKind::kLocation},
      {{{"cboTreeSelector", "-1"}}, false, true, false, TreeKind::kLocation},
  };
  for (const auto& c : cases) {
    session_.connection.Close();
    Set(c.settings);
    ASSERT_TRUE(Start());
    EXPECT_EQ(bench_.show_picture, c.picture);
    EXPECT_EQ(bench_.try_preview, c.preview);
    EXPECT_EQ(bench_.track_selection, c.selection);
    EXPECT_EQ(bench_.tree.kind, c.kind);
  }
}

TEST_F(StartUpTest, WithoutTheFirstSearchTheListIsEmptyAndTheTracksAreCounted) {
  Set({{"chkAlleEinlesen", "0"}});
  ASSERT_TRUE(Start());
  EXPECT_FALSE(bench_.search_ran);
  EXPECT_EQ(bench_.current_view, "Database");
  EXPECT_EQ(bench_.tree.selected.key, "MYMP3S");
  EXPECT_EQ(session_.track_count, 1);
}

TEST_F(StartUpTest, ASaveThatWasKilledIsUndoneAndToldLast) {
  const std::string path = folder_.Write("music/a.mp3", "as it was before");
  UndoJournal killed(folder_.Path());
  killed.BeginGroup();
  JournaledFile file(killed);
  ASSERT_EQ(file.Open(path), "");
  ASSERT_EQ(file.Rewrite(std::vector<FilePiece>{{0, "TORN"}}, 8), "");
  ASSERT_TRUE(Start());
  EXPECT_EQ(folder_.Read("music/a.mp3"), "as it was before");
  EXPECT_EQ(person_.Status(), path + ": a save was cut short; the file is as it was before.");
}

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
