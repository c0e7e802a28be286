// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/quick_search.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/list_rows.h"
#include "views/catalogue_test.h"

namespace tunemeadow {
namespace {

struct SearchWatcher : WorkbenchWatcher {
  std::vector<std::string> told;
  void ListCleared() override { told.emplace_back("cleared"); }
  void ListFilled() override { told.emplace_back("filled"); }
  void SelectionSet() override { told.emplace_back("selected"); }
  void SearchFieldsChanged() override { told.emplace_back("fields"); }
  void HistoryChanged() override { told.emplace_back("history"); }
  void TotalsChanged() override { told.emplace_back("totals"); }
  void TreeChanged() override { told.emplace_back("tree"); }
  void ListInViewChanged() override { told.emplace_back("in view"); }
};

class Search : public CatalogueTest {
 protected:
  Search() { bench_.watcher = &watcher_; }

  void AddTrack(const std::string& artist, const std::string& location,
                const std::string& playtime = "1:00", const std::string& size = "1.00 MB") {
    Run("insert into mp3sTabelle (Artist,location,Playtime,Filesize) values ('" + artist + "','" +
        location + "','" + playtime + "','" + size + "')");
  }

  /// `count` tracks at /t/<number>.mp3.
  void AddTracks(int count) {
    Run("insert into mp3sTabelle (Artist,location) with recursive n(i) as (select 1 union all "
        "select i+1 from n where i<" +
        std::to_string(count) + ") select 'A','/t/' || i || '.mp3' from n");
  }

  Texts Locations() { return ColumnOf(bench_.ListInView(), TrackField::location); }

  SearchWatcher watcher_;
};

TEST_F(Search, TellsItsStepsAndFillsTheList) {
  AddTrack("Anna", "/m/b.mp3", "1:30", "2.50 MB");
  AddTrack("anna", "/m/a.OGG", "0:45", "3.00 MB");
  AddTrack("Berta", "/m/c.mp3");
  UpdateTrackCount(bench_);
  watcher_.told.clear();
  interaction_.on_yield = [&](std::size_t) {
    EXPECT_TRUE(session_.busy);
    EXPECT_EQ(interaction_.busy_depth, 1);
    EXPECT_EQ(interaction_.progress_maximum, 2);
  };
  bench_.search.texts[TrackField::Artist] = "ANN";
  cmdSuchen(bench_);
  EXPECT_EQ(interaction_.statuses,
            (Texts{"Clearing View...", "Searching...", "Visualization...", "Entry 0/2", "Ready."}));
  EXPECT_EQ(watcher_.told, (Texts{"cleared", "filled", "history", "cleared", "filled", "totals",
                                  "tree", "selected"}));
  EXPECT_EQ(Locations(), (Texts{"/m/a.OGG", "/m/b.mp3"}));
  EXPECT_EQ(bench_.total_time, " 2min;15sec");
  EXPECT_EQ(bench_.total_size, " 6 MB");  // 3, then 5.5, to the even neighbour
  EXPECT_EQ(bench_.row_icons.Keys(), (Texts{"OGG", "MP3O"}));
  EXPECT_EQ(bench_.tree.database_text, "Database [2/3 Files]");
  EXPECT_EQ(bench_.current_view, "Database");
  EXPECT_EQ(bench_.ListView1.SelectedRows(), (std::vector<std::size_t>{0}));
  EXPECT_FALSE(session_.busy);

  cmdReset_Click(bench_);
  EXPECT_EQ(bench_.search, SearchFields());
  EXPECT_EQ(bench_.ListView1.RowCount(), 2U) << "it runs no search";
  bench_.search.texts[TrackField::location] = "/nowhere";
  cmdSuchen(bench_);
  EXPECT_EQ(bench_.ListView1.RowCount(), 0U);
  EXPECT_EQ(bench_.total_time, " ");
  EXPECT_EQ(bench_.total_size, " 0 MB");
  EXPECT_EQ(bench_.tree.database_text, "Database [0/3 Files]");
  EXPECT_EQ(interaction_.Status(), "Ready.");
}

TEST_F(Search, AFailingStatementShowsItselfAndLeavesAnEmptyList) {
  AddTrack("Anna", "/m/a.mp3");
  interaction_.WillAnswer(Answer::kOk);
  interaction_.on_box = [&](const MessageBox&) {
    EXPECT_EQ(interaction_.busy_depth, 0);
    EXPECT_FALSE(session_.busy);
  };
  cmdSuchen(bench_);
  bench_.search.texts[TrackField::genrereal] = "R\"B";  // this field is not escaped
  cmdSuchen(bench_);
  EXPECT_EQ(bench_.ListView1.RowCount(), 0U);
  EXPECT_EQ(bench_.total_size, " 0 MB");
  EXPECT_EQ(interaction_.Status(), "Ready.");
  ASSERT_EQ(interaction_.boxes.size(), 1U);
  EXPECT_EQ(interaction_.boxes[0].title, kProgramTitle);
  EXPECT_TRUE(
      interaction_.boxes[0].text.ends_with("\n" + bench_.history.Entries().back().statement.text));
  EXPECT_EQ(bench_.history.Entries().size(), 2U);

  for (const char* prepared : {"select nothing from nowhere", "select uid from mp3sTabelle"}) {
    interaction_.WillAnswer(Answer::kOk);
    SearchPrepared(bench_, {.text = prepared});
    EXPECT_TRUE(interaction_.boxes.back().text.ends_with(std::string("\n") + prepared));
  }
  cmdReset_Click(bench_);
  cmdSuchen(bench_);
  EXPECT_EQ(bench_.ListView1.RowCount(), 1U) << "the next search is that of the fields";
}

TEST_F(Search, TheSelectedRowIsTheOneInTheDetailsAndTheTreeKeepsItsNode) {
  AddTracks(3);
  bench_.tree.selected = {NodeKind::kDatabase, "Database", ""};
  cmdSuchen(bench_);
  const ResultList& list = bench_.ListView1;
  EXPECT_TRUE(list.IsSelected(0) && bench_.details.enabled);
  EXPECT_EQ(bench_.details.uid, list.Uid(0));
  EXPECT_EQ(bench_.tree.selected.kind, NodeKind::kDatabase);
  // What was typed is asked for as at a click on that row; the row's own changes stay.
  bench_.save_details = [](Workbench&) { FAIL(); };
  DetailEditor& details = bench_.details;
  details.texts[TrackField::Artist] = "typed";
  details.DetailsKeyed = details.DetailsChanged = true;
  cmdSuchen(bench_);
  EXPECT_EQ(details.texts[TrackField::Artist], "typed");
  interaction_.WillAnswer(Answer::kNo);
  bench_.search.texts[TrackField::location] = "/t/3.mp3";
  cmdSuchen(bench_);
  EXPECT_EQ(interaction_.BoxTexts(), Texts{"Save: Save your changes?"});
  EXPECT_EQ(details.uid, list.Uid(0));
  EXPECT_FALSE(details.DetailsChanged);
}

TEST_F(Search, EndsTheModeForManyAndKeepsTheRecordOfTheEditor) {
  AddTracks(2);
  cmdSuchen(bench_);
  ListView1_ItemClick(bench_, 0);
  bench_.ListView1.SetSelected(0, 1, true);
  ListView1_ItemClick(bench_, 1);
  bench_.details.texts[TrackField::Artist] = "for many";
  cmdSuchen(bench_);
  EXPECT_FALSE(bench_.details.save_all);
  EXPECT_EQ(bench_.details.texts[TrackField::Artist], "A");
}

TEST_F(Search, AReplayRunsTheStoredStatementAndIsNoNewEntry) {
  AddTrack("Anna", "/m/a.mp3");
  AddTrack("Berta", "/m/b.mp3");
  bench_.search.texts[TrackField::Artist] = "Anna";
  cmdSuchen(bench_);
  bench_.search.texts[TrackField::Artist] = "Berta";
  cmdSuchen(bench_);
  mnuSuche_Click(bench_, 1);
  EXPECT_EQ(Locations(), (Texts{"/m/a.mp3"}));
  EXPECT_EQ(bench_.history.Entries().size(), 2U);
  EXPECT_EQ(bench_.search.texts[TrackField::Artist], "Berta");
  mnuSuche_Click(bench_, 3);
  mnuSuche_Click(bench_, 0);
  EXPECT_EQ(Locations(), (Texts{"/m/a.mp3"})) << "an empty entry does nothing";
}

TEST_F(Search, ThePlaylistViewKeepsItsOrderAndNoForeignRows) {
  AddTrack("Anna", "/m/a.mp3");
  AddTrack("Berta", "/m/b.mp3");
  AddTrack("Carla", "/m/c.mp3");
  Run("insert into playlists (Playlist,uid,[position]) select 'Mine', uid, 10-uid from mp3sTabelle "
      "where Artist<>'Berta'");
  Run("insert into playlists (Playlist,uid,[position]) select 'Other', uid, uid from mp3sTabelle");
  cmdSuchen(bench_);
  bench_.playlist_in_view = true;
  bench_.current_playlist = "Other";
  cmdSuchen(bench_);
  bench_.current_playlist = "Mine";
  bench_.search.cboPlaylists = "Other";  // hidden while a playlist is open
  cmdSuchen(bench_);
  EXPECT_EQ(Locations(), (Texts{"/m/c.mp3", "/m/a.mp3"}));
  EXPECT_EQ(bench_.ListView3.Cell(1, TrackField::position),
            std::to_string(10 - bench_.ListView3.Uid(1)));
  EXPECT_EQ(bench_.ListView1.RowCount(), 3U) << "the other list is left alone";
  mnuSuche_Click(bench_, 3);
  EXPECT_TRUE(bench_.playlist_in_view) << "its own statement stays in it";

  for (const std::size_t foreign : {2U, 1U}) {  // another playlist, then the whole catalogue
    bench_.playlist_in_view = true;
    bench_.current_view = "CDArchive";
    watcher_.told.clear();
    mnuSuche_Click(bench_, foreign);
    EXPECT_EQ(watcher_.told.front(), "in view");
    EXPECT_FALSE(bench_.playlist_in_view);
    EXPECT_EQ(bench_.current_view, "Database");
    EXPECT_EQ(Locations(), (Texts{"/m/a.mp3", "/m/b.mp3", "/m/c.mp3"}));
    EXPECT_EQ(bench_.ListView3.RowCount(), 2U);
  }
}

TEST_F(Search, AnEmptyListSaysWhy) {
  const auto begins = [this] { return std::string(EmptyListHint(bench_).substr(0, 22)); };
  EXPECT_EQ(begins(), "No tracks here. Import");
  AddTrack("Anna", "/m/a.mp3");
  UpdateTrackCount(bench_);
  EXPECT_EQ(begins(), "Nothing searched yet. ");
  bench_.search.texts[TrackField::Artist] = "nobody";
  cmdSuchen(bench_);
  EXPECT_EQ(begins(), "No track fits this sea");
  bench_.playlist_in_view = true;
  EXPECT_EQ(begins(), "No track of this playl");
  cmdReset_Click(bench_);
  EXPECT_EQ(begins(), "No tracks in this play");
}

TEST_F(Search, ASearchWithoutItsArchiveLeavesTheViewOfArchives) {
  const auto view_after = [this](const std::string& archive, std::size_t replayed) {
    bench_.current_view = "CDArchive";
    bench_.search.cboCDArchive = archive;
    watcher_.told.clear();
    replayed > 0 ? mnuSuche_Click(bench_, replayed) : cmdSuchen(bench_);
    return bench_.current_view + (watcher_.told.front() == "in view" ? ", told" : "");
  };
  EXPECT_EQ(view_after("CD", 0), "CDArchive");
  EXPECT_EQ(view_after("", 0), "Database, told");
  EXPECT_EQ(view_after("", 1), "CDArchive");
  EXPECT_EQ(view_after("CD", 2), "Database, told");
  EXPECT_EQ(bench_.search.cboCDArchive, "") << "nobody has chosen it";
  bench_.search.texts[TrackField::Comment] =
      " cdarchives.cdarchive='CD' and cdarchives.uid=cdarchives.uid";
  EXPECT_EQ(view_after("", 0), "Database, told") << "the text of a field is no archive";
}

TEST_F(Search, AnArchiveBesideAFieldIsAProductWithinBounds) {
  AddTracks(1001);
  Run("insert into cdarchives (CDArchive,uid) select 'CD', uid from mp3sTabelle where uid<=3");
  bench_.search.cboCDArchive = "CD";
  bench_.search.texts[TrackField::location] = "/t/7.mp3";
  cmdSuchen(bench_);
  EXPECT_EQ(Locations(), Texts(bench_.ListView1.RowCount(), "/t/7.mp3"));
  EXPECT_GT(bench_.ListView1.RowCount(), 1U);

  Run("delete from cdarchives");
  Run("insert into cdarchives (CDArchive,uid) select 'CD', uid from mp3sTabelle limit 1000");
  bench_.search.texts[TrackField::location] = "/t/";
  for (const bool replay : {false, true}) {
    interaction_.WillAnswer(Answer::kOk);
    replay ? mnuSuche_Click(bench_, 2) : cmdSuchen(bench_);
    EXPECT_TRUE(interaction_.boxes.back().text.starts_with("The search yields more than 1000000"));
    EXPECT_EQ(bench_.ListView1.RowCount(), 0U);
  }
}

TEST_F(Search, ALongResultIsWholeAndASearchInsideItDoesNothing) {
  AddTracks(40000);
  interaction_.on_yield = [&](std::size_t yield) {
    if (yield != 3) return;
    bench_.search.texts[TrackField::Artist] = "nobody";
    cmdSuchen(bench_);
    mnuSuche_Click(bench_, 1);
  };
  cmdSuchen(bench_);
  EXPECT_EQ(bench_.ListView1.RowCount(), 40000U);
  EXPECT_TRUE(interaction_.SawStatus("Entry 39000/40000"));
  EXPECT_EQ(bench_.history.Entries().size(), 1U);
}

TEST_F(Search, TheTreeShowsCountsAndNamesAndReadsThemAfterAWriteOnly) {
  AddTrack("Anna", "/m/a.mp3");
  UpdateTrackCount(bench_);
  EXPECT_EQ(bench_.tree.database_text, "Database [1 Files]") << "no search has run";
  Run("insert into playlists (Playlist,uid) values ('b',1)");
  Run("insert into playlists (Playlist,uid) values ('A',1)");
  Run("insert into cdarchives (CDArchive,uid) values ('CD',1)");
  updatetreeview(bench_);
  EXPECT_EQ(bench_.tree.playlists, (Texts{"A", "b"}));
  EXPECT_EQ(bench_.tree.archives, (Texts{"CD"}));
  watcher_.told.clear();
  bench_.tree.archives = {"kept"};
  updatetreeview(bench_);
  EXPECT_EQ(bench_.tree.archives, (Texts{"kept"}));
  EXPECT_TRUE(watcher_.told.empty());
  Run("delete from cdarchives");
  Run("drop table playlists");
  updatetreeview(bench_);
  EXPECT_TRUE(bench_.tree.playlists.empty()) << "a missing table is no message here";
  EXPECT_TRUE(bench_.tree.archives.empty());
}

}  // namespace
}  // namespace tunemeadow
