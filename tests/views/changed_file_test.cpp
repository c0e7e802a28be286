// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/changed_file.h"

#include <gtest/gtest.h>

#include "files/file_facts.h"
#include "views/catalogue_test.h"
#include "views/detail_editor.h"
#include "views/quick_search.h"

namespace tunemeadow {
namespace {

class ChangedFile : public CatalogueTest {};

TEST_F(ChangedFile, ALoadedRowTellsThatItsFileHasAnotherTimeThanTheCatalogueKnows) {
  const std::string path = folder_.Write("a.mp3", "sound");
  const std::string told =
      "a.mp3 was changed by another program since it was read. A save puts the "
      "catalogue's texts over it.";
  const struct {
    std::string location, time;
    bool changed;
  } rows[] = {
      {path, "2001-02-03 04:05:06", true},
      {path + " ", "2001-02-03 04:05:06", false},  // no such file
      {path, "2001-02-03 04:05:06", true},
      {path, FileTimeText(path), false},
      {path, "", false},
      {path, "unknown", false},
  };
  interaction_.SetStatus("Ready.");
  for (const auto& row : rows) {
    Run("delete from mp3sTabelle");
    Run("insert into mp3sTabelle (location,datetimeoffile) values ('" + row.location + "','" +
        row.time + "')");
    cmdSuchen(bench_);
    bench_.ListView1.SelectOnly(0);
    ListView1_ItemClick(bench_, 0);
    EXPECT_EQ(interaction_.Status(), row.changed ? told : "Ready.") << row.time;
  }
}

}  // namespace
}  // namespace tunemeadow
