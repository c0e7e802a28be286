// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/drag_out.h"

#include "core/dates.h"
#include "views/catalogue_test.h"

namespace tunemeadow {
namespace {

class DragOut : public CatalogueTest {
 protected:
  DragOut() {
    for (const char* name : {"a", "b", "c"}) {
      Run(std::string("insert into mp3sTabelle (location) values ('/m/") + name + ".mp3')");
    }
    cmdSuchen(bench_);
  }
};

TEST_F(DragOut, TheDraggedRowsAreStampedInTheCatalogueAndInTheList) {
  bench_.ListView1.ClearSelection();
  bench_.ListView1.SetSelected(1, 2, true);
  ListView1_OLECompleteDrag(bench_);
  const std::string stamp(bench_.ListView1.Cell(1, TrackField::lasttimeplayed));
  EXPECT_TRUE(ParseDateTime(stamp));
  EXPECT_EQ(Rows("select lasttimeplayed from mp3sTabelle order by location"),
            (Texts{"", stamp, stamp}));
  EXPECT_EQ(bench_.ListView1.Cell(0, TrackField::lasttimeplayed), "");
}

TEST_F(DragOut, AFailedStampIsToldAndTheCellsStay) {
  Run("update mp3sTabelle set lasttimeplayed='1999-01-01 00:00:00'");
  cmdSuchen(bench_);
  bench_.ListView1.SelectOnly(0);
  session_.connection.Close();
  interaction_.WillAnswer(Answer::kOk);
  RunAndTell(interaction_, [this] { ListView1_OLECompleteDrag(bench_); });
  EXPECT_EQ(bench_.ListView1.Cell(0, TrackField::lasttimeplayed), "1999-01-01 00:00:00");
}

}  // namespace
}  // namespace tunemeadow
