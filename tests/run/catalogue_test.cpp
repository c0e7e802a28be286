// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/catalogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "core/dates.h"
#include "files/file_facts.h"
#include "store/backup.h"
#include "store/compact_copy.h"
#include "support/catalogue.h"
#include "support/scripted_interaction.h"

namespace tunemeadow {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class CheckDatabaseTest : public testing::Test {
 protected:
  /// The boxes of a check after the statement.
  std::vector<std::string> BoxesAfter(const std::string& statement) {
    TestCatalogue catalogue;
    catalogue.connection.Execute(statement);
    ScriptedInteraction interaction{Answer::kOk};
    CheckDatabase(catalogue.connection, interaction);
    return interaction.BoxTexts();
  }

  const std::string box_ =
      "Error loading database!: Warning: Your database seems to be corrupt!\n\n";
};

TEST_F(CheckDatabaseTest, AMissingTableOrColumnIsOneWarning) {
  EXPECT_THAT(BoxesAfter("drop table playlists"), ElementsAre(box_ + "no such table: Playlists"));
  EXPECT_THAT(BoxesAfter("alter table cdarchives drop column CDArchive"),
              ElementsAre(box_ + "no such column: CDArchive"));
  EXPECT_THAT(BoxesAfter("alter table mp3sTabelle drop column Mood"),
              ElementsAre(box_ + "no such column: Mood"));
  EXPECT_THAT(BoxesAfter("alter table playlists drop column position"),
              ElementsAre(box_ + "no such column: position"));
}

TEST_F(CheckDatabaseTest, AClosedConnectionIsThreeWarningsAndASoundOneNone) {
  TestCatalogue catalogue;
  {
    ScriptedInteraction interaction;
    CheckDatabase(catalogue.connection, interaction);
  }
  catalogue.connection.Close();
  ScriptedInteraction interaction{Answer::kOk, Answer::kOk, Answer::kOk};
  CheckDatabase(catalogue.connection, interaction);
  ASSERT_EQ(interaction.boxes.size(), 3U);
  EXPECT_EQ(interaction.boxes[2].icon, Icon::kExclamation);
}

TEST(DetermineConnection, NamesTheCatalogueAndTheQuote) {
  Session session("/home/x", "tunemeadow");
  DetermineConnection(session);
  EXPECT_EQ(session.preferences.lblConfigDB, "/home/x/mp3s.mdb");
  EXPECT_EQ(session.connection_string,
            "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/home/x/mp3s.mdb");
  EXPECT_EQ(session.quote, '"');
  session.preferences.sConnString = "Data Source=/other.db;Mode=1";
  DetermineConnection(session);
  EXPECT_EQ(session.preferences.lblConfigDB, "andere");
  EXPECT_EQ(session.connection_string, "Data Source=/other.db;Mode=1");
  EXPECT_EQ(session.quote, '\'');
}

TEST(RefreshDemonstrationRow, PointsTheRowToItsFileOnlyIfThatIsThere) {
  const TempFolder parent;
  const std::string folder = parent.Path("it's \"here\"");
  fs::create_directory(folder);
  fs::copy_file(TM_BINARY_DIR "/data/mp3s.mdb", folder + "/mp3s.mdb");
  Session session(folder, "tunemeadow");
  session.connection.Open(folder + "/mp3s.mdb");
  const std::string monster = folder + "/monster.mp3";
  EXPECT_FALSE(RefreshDemonstrationRow(session, monster));
  EXPECT_EQ(session.connection.WriteCount(), 0);
  parent.Write("it's \"here\"/monster.mp3", "x");
  EXPECT_TRUE(RefreshDemonstrationRow(session, monster));
  const CellTable row =
      session.connection
          .Execute("select location,datetimeoffile,datetimeofdbupdate from mp3sTabelle")
          .GetRows();
  EXPECT_EQ(row.Cell(0, 0), monster);
  EXPECT_EQ(row.Cell(0, 1), FileTimeText(monster));
  EXPECT_TRUE(ParseDateTime(row.Cell(0, 2)).has_value());
  // A track of the person's own stays where it is; a row whose old folder has gone follows.
  const std::string own = parent.Write("own/monster.mp3", "y");
  const std::pair<std::string, std::string> cases[] = {
      {own, own}, {"/music/Abba.mp3", "/music/Abba.mp3"}, {"/gone/monster.mp3", monster}};
  for (const auto& [before, after] : cases) {
    session.connection.Execute("update mp3sTabelle set location='" + before + "'");
    EXPECT_EQ(RefreshDemonstrationRow(session, monster), after == monster) << before;
    EXPECT_EQ(session.connection.Execute("select location from mp3sTabelle").Fields("location"),
              after);
  }
  CountAllTracks(session);
  EXPECT_EQ(session.track_count, 1);
  session.connection.Close();
  EXPECT_FALSE(RefreshDemonstrationRow(session, monster));
}

}  // namespace
}  // namespace tunemeadow
